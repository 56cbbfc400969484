#pragma once

#include "oribund/host/notify/ChangeKind.h"

#include <memory>
#include <optional>
#include <utility>

namespace oribund
{

/**
 * Where a gesture of the user stands that makes many edits and is to be one step: a drag, a pick from a chooser. While
 * it is open the widget stays with the user, and a value that comes from elsewhere waits.
 */
template <class T>
class EditSeries
{
public:
    /** How a series has ended. */
    struct Outcome {
        T original;
        /** Whether an edit was accepted, so that there is something to tell of or to undo. */
        bool written = false;
        /** What the widget is to show now, if not what it shows already. */
        std::optional<T> shown;
    };

    void begin(const T& original) { open_ = std::make_unique<Open>(Open{original, std::nullopt, false}); }

    bool isOpen() const { return open_ != nullptr; }

    bool hasWritten() const { return open_ && open_->written; }

    /** The value when the series began; only while it is open. */
    const T& original() const { return open_->original; }

    /** The kind of the next edit: a start until one has been accepted. */
    ChangeKind nextKind() const { return hasWritten() ? ChangeKind::Continuation : ChangeKind::Start; }

    /** For an edit in a series; one that was made without a series is nothing to it. */
    void noteResult(bool accepted)
    {
        if (open_)
            open_->written = open_->written || accepted;
    }

    /** Keeps a value that comes while the series is open, for its end; false when it is not open. */
    bool defer(const T& value)
    {
        if (open_)
            open_->waiting = value;
        return isOpen();
    }

    /** Ends an open series. A cancelled one has, as far as the widget knows, nothing but its own edits waiting. */
    Outcome close(bool cancelled)
    {
        const auto closed = std::exchange(open_, nullptr);
        Outcome outcome{closed->original, closed->written, closed->waiting};
        if (cancelled && (outcome.written || !outcome.shown))
            outcome.shown = outcome.original;
        return outcome;
    }

private:
    struct Open {
        T original;
        std::optional<T> waiting;
        bool written = false;
    };

    std::unique_ptr<Open> open_; ///< one widget of a thousand is in a gesture
};

} // namespace oribund

#pragma once

#include "oribund/host/notify/ChangeKind.h"

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

    void begin(const T& original)
    {
        original_ = original;
        waiting_.reset();
        written_ = false;
    }

    bool isOpen() const { return original_.has_value(); }

    bool hasWritten() const { return isOpen() && written_; }

    /** The value when the series began; only while it is open. */
    const T& original() const { return *original_; }

    /** The kind of the next edit: a start until one has been accepted. */
    ChangeKind nextKind() const { return hasWritten() ? ChangeKind::Continuation : ChangeKind::Start; }

    void noteResult(bool accepted) { written_ = written_ || accepted; }

    /** Keeps a value that comes while the series is open, for its end; false when it is not open. */
    bool defer(const T& value)
    {
        if (isOpen())
            waiting_ = value;
        return isOpen();
    }

    /** Ends an open series. A cancelled one has, as far as the widget knows, nothing but its own edits waiting. */
    Outcome close(bool cancelled)
    {
        Outcome outcome{*std::exchange(original_, std::nullopt), written_, std::exchange(waiting_, std::nullopt)};
        if (cancelled && (outcome.written || !outcome.shown))
            outcome.shown = outcome.original;
        return outcome;
    }

private:
    std::optional<T> original_;
    std::optional<T> waiting_;
    bool written_ = false;
};

} // namespace oribund

#pragma once

#include "oribund/host/notify/ChangeKind.h"

#include <optional>

namespace oribund
{

/** Where a gesture of the user stands that makes many edits and is to be one step: a drag, a pick from a chooser. */
template <class T>
class EditSeries
{
public:
    void begin(const T& original)
    {
        original_ = original;
        written_ = false;
    }

    void end() { original_.reset(); }

    bool isOpen() const { return original_.has_value(); }

    /** Whether an edit of it has been accepted, so that there is something to undo. */
    bool hasWritten() const { return isOpen() && written_; }

    /** The value when the series began; only while it is open. */
    const T& original() const { return *original_; }

    /** The kind of the next edit: a start until one has been accepted. */
    ChangeKind nextKind() const { return written_ ? ChangeKind::Continuation : ChangeKind::Start; }

    void noteResult(bool accepted) { written_ = written_ || accepted; }

private:
    std::optional<T> original_;
    bool written_ = false;
};

} // namespace oribund

#pragma once

#include <cstdint>

namespace oribund
{

class UIString;

/**
 * Where an edit keeps the steps that a user can undo. EditGesture brackets what belongs to one step; whatever is
 * recorded between its beginning and its end, of however many parameters, is that step.
 *
 * Gestures are numbered, so that the owner of one that somebody else has ended (undo in the middle of a drag) cannot
 * end or take back what came after it. User-interface thread only.
 */
class iGestureJournal
{
public:
    using Number = std::uint64_t;

    static constexpr Number kNone = 0;

    /**
     * Opens a step. With a text, everything up to its end is one step of that text; gestures with a text nest, and the
     * outermost one counts. Without a text it is for changes of parameters, which then say themselves what was done;
     * it ends with the next thing that is none. kNone when no step can be opened now.
     */
    virtual Number beginGesture(const UIString& text) = 0;

    /** Whether it has begun and not ended, by whomever. */
    virtual bool isGestureOpen(Number gesture) const = 0;

    /** One undo step, or none where nothing has changed. */
    virtual void finishGesture(Number gesture) = 0;

    /** Puts back what was there when it began. False when it is not open, or is part of another one. */
    virtual bool abortGesture(Number gesture) = 0;

    /** Undoes a finished one as if it had not been. False when anything has been done since. */
    virtual bool takeBackGesture(Number gesture) = 0;

protected:
    ~iGestureJournal() = default;
};

} // namespace oribund

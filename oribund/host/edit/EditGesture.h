#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/Edit.h"
#include "oribund/host/edit/iGestureJournal.h"

namespace oribund
{

/**
 * One act of the user from its beginning to its end: a drag, a pick from a chooser, a command. All that it changes is
 * one undo step. With an edit that keeps no journal it brackets nothing, and says so when it is to be taken back.
 *
 * A member of who follows the act, used again for the next one. Holds the edit. User-interface thread only.
 */
class ORIBUND_API EditGesture
{
public:
    EditGesture() = default;

    /** Finishes what is open. */
    ~EditGesture();

    EditGesture(const EditGesture&) = delete;
    EditGesture& operator=(const EditGesture&) = delete;

    /**
     * Finishes what is open and begins anew; an empty edit is allowed. `text` is what a person reads of the step, see
     * iGestureJournal: without one the changes speak for themselves.
     */
    void begin(const EditPtr& edit, const UIString& text = {});

    /** From begin() to finish() or abort(). */
    bool isBegun() const { return begun_; }

    /** Whether it is being recorded: it has begun, and nobody has ended it. */
    bool isOpen() const;

    /** Whether somebody else has ended it: what was recorded of it stands, whatever its owner does now. */
    bool isLost() const;

    void finish();

    /** Puts back what was there at the beginning. False when that is not recorded, or somebody else has ended it. */
    bool abort();

    /** Undoes what was finished, as if it had not been. False when it is not recorded or anything was done since. */
    bool takeBack();

private:
    iGestureJournal* journal() const;

    EditPtr edit_;
    iGestureJournal::Number number_ = iGestureJournal::kNone;
    bool begun_ = false;
};

/** Brackets a change of an edit that begins and ends within a scope. */
class ORIBUND_API EditModifier
{
public:
    /** An empty edit makes a modifier that does nothing. The text must not be empty. */
    EditModifier(const EditPtr& edit, const UIString& text) { gesture_.begin(edit, text); }

private:
    EditGesture gesture_;
};

} // namespace oribund

#pragma once

#include "oribund/host/edit/iGestureJournal.h"
#include "oribund/host/notify/ChangeKind.h"
#include "oribund/host/notify/Notifier.h"
#include "workbench/model/undo/EditCommand.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace oribund
{
class Edit;
}

namespace workbench
{

/** The undo stack is not what it was: another step, another position, another text. */
struct UndoStackEvent {
};

/**
 * Every change of an edit passes here, and all of it can be undone.
 *
 * What belongs together is one step: a drag (a series of changes: Start, then Continuations), all that happens between
 * beginModify() and endModify(), and all changes of parameters within a gesture. A series ends with the next thing that
 * is not its continuation or with endGesture(), never by itself after a time. A step that changes nothing in the end is
 * forgotten. User-interface thread only.
 */
class UndoStack final : public oribund::iGestureJournal
{
public:
    /** `edit` is told what changed, once the whole of an operation is done. Both outlive the stack. */
    UndoStack(Timeline& timeline, oribund::Edit& edit);
    ~UndoStack();

    UndoStack(const UndoStack&) = delete;
    UndoStack& operator=(const UndoStack&) = delete;

    bool canUndo() const;
    bool canRedo() const;

    /** Undoes or redoes one step; false when there is none, or while a modification is open. */
    bool undo();
    bool redo();

    /** The text of the step that undo() or redo() would take; empty without one. */
    oribund::WString undoTitle() const;
    oribund::WString redoTitle() const;

    /** All steps, the undone ones included, and how many of them are done: for a list of the history. */
    std::size_t size() const { return steps_.size(); }

    std::size_t position() const { return done_; }

    const oribund::WString& titleAt(std::size_t step) const { return steps_[step].title(); }

    /** Everything until the matching endModify() is one step, or part of the gesture that is under way. A kind other
        than Single leaves the step open as a series; a Continuation of the same title joins the series before it. */
    void beginModify(const oribund::WString& title, oribund::ChangeKind kind = oribund::ChangeKind::Single);
    void endModify();

    /** Takes the series of that title, if it is under way, back to where it began, without ending it or telling
       anybody; false when it is not. To be followed by its Continuation, or by replay(), which makes it as it was. */
    bool rewind(const oribund::WString& title);
    void replay();

    /** Whether a change is just being made, undone or redone. What observers of single values do to the structure of
       the edit at that moment is refused. */
    bool isApplying() const { return applying_; }

    /** Whether a batch of parameter changes is open, within which the structure has to stay. */
    bool isBatchOpen() const { return batchDepth_ > 0; }

    /** Makes a change and records it. Only between beginModify() and endModify(). */
    void perform(EditChangePtr change);

    /** Where a change of a parameter is to be recorded that is being made now. Valid until the next call. */
    ParamDelta& paramChange(ObjectId effect, const oribund::IdStamp& param, oribund::ChangeKind kind);

    /** All parameter changes up to the matching end belong together; the kind of the outermost batch counts. */
    void beginParamBatch(oribund::ChangeKind kind);
    void endParamBatch();

    // The gestures of the library. One with a text is a modification of that text.
    Number beginGesture(const oribund::UIString& text) override;
    bool isGestureOpen(Number gesture) const override;
    void finishGesture(Number gesture) override;
    bool abortGesture(Number gesture) override;
    bool takeBackGesture(Number gesture) override;

    /** Ends the gesture or series under way, if any. */
    void endGesture();

    /** Takes back what the gesture or series under way has done so far, and forgets it. False when there is nothing. */
    bool cancelGesture();

    /** Remembers the present state as the one that is saved. */
    void setClean();
    bool isClean() const;

    oribund::Notifier<UndoStackEvent>& changes() { return changes_; }

private:
    enum class Open { Nothing, Series, Gesture, Modify };

    void open(Open how, const oribund::WString& title);
    void openSeries(oribund::ChangeKind kind);
    void close();
    void dropUndone();

    bool busy() const { return depth_ > 0 || batchDepth_ > 0 || applying_; }

    void tell();

    Timeline& timeline_;
    oribund::Edit& edit_;
    std::vector<EditCommand> steps_;
    std::size_t done_ = 0;
    std::ptrdiff_t clean_ = 0; ///< the position that is saved; -1 when no undo leads there
    std::unique_ptr<EditCommand> current_;
    Open how_ = Open::Nothing;
    int depth_ = 0;
    int batchDepth_ = 0;
    bool applying_ = false; ///< a step is being undone or redone; what observers do meanwhile stays in one open step
    bool stays_ = false;    ///< the step goes on as a series after endModify()
    Number lastGesture_ = kNone;
    Number gesture_ = kNone;    ///< the one that is open without a text
    Number finished_ = kNone;   ///< the one that made the last step, since when nothing has happened
    std::vector<Number> named_; ///< those that are open with a text, the innermost last
    oribund::WString seriesTitle_;
    std::unique_ptr<EditCommand> rewound_;
    std::vector<oribund::EditModification> toTell_;
    oribund::Notifier<UndoStackEvent> changes_;
};

} // namespace workbench

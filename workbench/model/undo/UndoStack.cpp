#include "workbench/model/undo/UndoStack.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/Edit.h"
#include "oribund/host/services/TextTable.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace workbench
{

using oribund::ChangeKind;
using oribund::iGestureJournal;
using oribund::WString;

UndoStack::UndoStack(Timeline& timeline, oribund::Edit& edit)
    : timeline_(timeline)
    , edit_(edit)
{
}

UndoStack::~UndoStack() = default;

bool UndoStack::canUndo() const
{
    return !busy() && (done_ > 0 || (current_ && !current_->isNull()));
}

bool UndoStack::canRedo() const
{
    return !busy() && done_ < steps_.size() && (!current_ || current_->isNull());
}

bool UndoStack::undo()
{
    if (busy())
        return false;
    endGesture();
    if (done_ == 0)
        return false;
    --done_;
    finished_ = kNone;
    applying_ = true;
    steps_[done_].revert(timeline_, toTell_);
    applying_ = false;
    tell();
    return true;
}

bool UndoStack::redo()
{
    if (busy())
        return false;
    endGesture();
    if (done_ == steps_.size())
        return false;
    ++done_;
    finished_ = kNone;
    applying_ = true;
    steps_[done_ - 1].apply(timeline_, toTell_);
    applying_ = false;
    tell();
    return true;
}

WString UndoStack::undoTitle() const
{
    if (current_ && !current_->isNull())
        return current_->describe(timeline_);
    return done_ > 0 ? steps_[done_ - 1].title() : WString();
}

WString UndoStack::redoTitle() const
{
    return canRedo() ? steps_[done_].title() : WString();
}

void UndoStack::beginModify(const WString& title, ChangeKind kind)
{
    rewound_.reset();
    // Within a batch of parameter changes all belongs to the step that the batch has opened.
    if (depth_ == 0 && batchDepth_ == 0) {
        const bool joins = kind == ChangeKind::Continuation && how_ == Open::Series && seriesTitle_ == title;
        if (!joins)
            open(Open::Modify, title);
        stays_ = kind != ChangeKind::Single;
        seriesTitle_ = title;
    }
    ++depth_;
}

void UndoStack::endModify()
{
    if (depth_ == 0 || --depth_ > 0)
        return;
    if (batchDepth_ == 0) {
        how_ = Open::Series;
        if (!stays_ && !applying_)
            close();
    }
    tell();
}

bool UndoStack::rewind(const WString& title)
{
    if (busy() || how_ != Open::Series || seriesTitle_ != title)
        return false;
    applying_ = true;
    current_->revert(timeline_, toTell_);
    applying_ = false;
    rewound_ = std::exchange(current_, std::make_unique<EditCommand>(title));
    return true;
}

void UndoStack::replay()
{
    current_ = std::exchange(rewound_, nullptr);
    applying_ = true;
    current_->apply(timeline_, toTell_);
    applying_ = false;
    toTell_.clear();
}

void UndoStack::perform(EditChangePtr change)
{
    if (!current_ || change->isNull())
        return;
    applying_ = true;
    change->apply(timeline_);
    applying_ = false;
    toTell_.push_back(change->modification());
    current_->add(std::move(change));
}

ParamDelta& UndoStack::paramChange(ObjectId effect, const oribund::IdStamp& param, ChangeKind kind)
{
    if (batchDepth_ == 0)
        openSeries(kind);
    return current_->paramDelta(effect, param);
}

void UndoStack::beginParamBatch(ChangeKind kind)
{
    if (batchDepth_++ == 0)
        openSeries(kind);
}

void UndoStack::endParamBatch()
{
    --batchDepth_;
}

void UndoStack::openSeries(ChangeKind kind)
{
    if (depth_ > 0 || how_ == Open::Gesture)
        return;
    if (kind == ChangeKind::Continuation && how_ == Open::Series && seriesTitle_.empty())
        return;
    open(Open::Series, {});
    seriesTitle_.clear();
    changes_.notify({});
}

iGestureJournal::Number UndoStack::beginGesture(const oribund::UIString& text)
{
    if (!text.empty()) {
        beginModify(text.isLiteral() ? text.expand(text.text()) : oribund::displayText(text));
        return named_.emplace_back(++lastGesture_);
    }
    if (busy())
        return kNone;
    open(Open::Gesture, {});
    return gesture_ = ++lastGesture_;
}

bool UndoStack::isGestureOpen(Number gesture) const
{
    return gesture != kNone &&
           (gesture == gesture_ || std::find(named_.begin(), named_.end(), gesture) != named_.end());
}

void UndoStack::finishGesture(Number gesture)
{
    if (!isGestureOpen(gesture))
        return;
    const std::size_t before = done_;
    if (std::erase(named_, gesture) > 0)
        endModify();
    else
        endGesture();
    finished_ = done_ == before + 1 && !current_ ? gesture : kNone;
}

bool UndoStack::abortGesture(Number gesture)
{
    if (!isGestureOpen(gesture))
        return false;
    if (gesture == gesture_)
        return cancelGesture();
    if (depth_ > 1 || batchDepth_ > 0 || applying_)
        return false;
    named_.clear();
    depth_ = 0;
    return cancelGesture();
}

bool UndoStack::takeBackGesture(Number gesture)
{
    if (gesture == kNone || gesture != finished_ || !undo())
        return false;
    dropUndone();
    changes_.notify({});
    return true;
}

void UndoStack::endGesture()
{
    if (busy() || !current_)
        return;
    close();
    changes_.notify({});
}

bool UndoStack::cancelGesture()
{
    if (busy() || !current_)
        return false;
    const std::unique_ptr<EditCommand> cancelled = std::exchange(current_, nullptr);
    how_ = Open::Nothing;
    gesture_ = kNone;
    if (cancelled->isNull())
        return false;
    applying_ = true;
    cancelled->revert(timeline_, toTell_);
    applying_ = false;
    tell();
    return true;
}

void UndoStack::setClean()
{
    endGesture();
    finished_ = kNone; // what was saved can be undone, but not forgotten
    clean_ = static_cast<std::ptrdiff_t>(done_);
    changes_.notify({});
}

bool UndoStack::isClean() const
{
    return clean_ == static_cast<std::ptrdiff_t>(done_) && (!current_ || current_->isNull());
}

void UndoStack::open(Open how, const WString& title)
{
    if (applying_ && current_)
        return;
    close();
    current_ = std::make_unique<EditCommand>(title);
    how_ = how;
}

void UndoStack::close()
{
    finished_ = kNone;
    how_ = Open::Nothing;
    gesture_ = kNone;
    const std::unique_ptr<EditCommand> closing = std::exchange(current_, nullptr);
    if (!closing || closing->isNull())
        return;
    closing->close(timeline_);
    dropUndone();
    steps_.push_back(std::move(*closing));
    ++done_;
}

void UndoStack::dropUndone()
{
    if (clean_ > static_cast<std::ptrdiff_t>(done_))
        clean_ = -1;
    steps_.erase(steps_.begin() + static_cast<std::ptrdiff_t>(done_), steps_.end());
}

void UndoStack::tell()
{
    // The objects of what is told first may be changed by an observer, which then tells on its own.
    const std::vector<oribund::EditModification> told = std::exchange(toTell_, {});
    std::set<std::tuple<int, oribund::IdStamp>> seen;
    for (const oribund::EditModification& modification : told)
        if (seen.emplace(static_cast<int>(modification.type), modification.object).second)
            edit_.addModification(modification);
    changes_.notify({});
}

} // namespace workbench

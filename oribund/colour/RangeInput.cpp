#include "oribund/colour/RangeEntry.h"
#include "oribund/colour/TolerantRangeEditor.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/Menu.h"

#include <cmath>
#include <memory>

namespace oribund
{

namespace
{

constexpr double kFineDrag = 0.1;
constexpr double kPageSteps = 10.0;

/** By how many steps a key moves what it is at; 0 for other keys. */
double rangeStepsOf(const Event& press)
{
    if (press.code != EventCode::KeyPress || press.has(Event::kAlt | Event::kMeta))
        return 0.0;
    const double scale = TextBox::stepScale(press);
    switch (press.key) {
    case Key::Left:
    case Key::Down:
        return -scale;
    case Key::Right:
    case Key::Up:
        return scale;
    case Key::PageDown:
        return -kPageSteps * scale;
    case Key::PageUp:
        return kPageSteps * scale;
    default:
        return 0.0;
    }
}

} // namespace

RangeGeometry TolerantRangeEditor::geometry() const
{
    return {axis_, getRanges(), getSize()};
}

XY<double> TolerantRangeEditor::bottomUp(const XY<int>& local) const
{
    return flipped(XY<double>{local.x + 0.5, local.y + 0.5}, static_cast<double>(getHeight()));
}

RangePart TolerantRangeEditor::partOf(int stop)
{
    return stop == kWholeRange ? RangePart::section(1) : RangePart::handle(static_cast<std::size_t>(stop));
}

int TolerantRangeEditor::stopOf(RangePart part)
{
    if (part == RangePart::section(1))
        return kWholeRange;
    return static_cast<int>(part == RangePart::section(2) ? part.last : part.first);
}

/** What an edit starts from: what is seen of a range, and as few turns as can be. */
ColourData TolerantRangeEditor::editable(const ColourData& range) const
{
    const ColourData seen = axis_.shown(range);
    return keepsTurns() ? seen : axis_.inFirstTurn(seen);
}

// Edits

void TolerantRangeEditor::userPress(RangePart part)
{
    if (!canInteract() || inSeries())
        return;
    beginSeries(getRanges());
    grip_ = {part, editable(getRanges()), 0.0, false};
    setCurrent(stopOf(part));
}

void TolerantRangeEditor::userDrag(double distance)
{
    if (!inSeries() || !canInteract() || !std::isfinite(distance) || (distance == 0.0 && !hasWritten()))
        return;
    const ColourData range = axis_.moved(grip_.from, grip_.part, distance);
    if (range != getRanges() && (hasWritten() || range != grip_.from))
        setValue(range);
}

void TolerantRangeEditor::userRelease()
{
    endSeries(false);
}

void TolerantRangeEditor::userCancel()
{
    endSeries(true);
}

void TolerantRangeEditor::userMove(RangePart part, double distance)
{
    if (!canInteract() || inSeries() || !std::isfinite(distance))
        return;
    const ColourData from = editable(getRanges());
    const ColourData range = axis_.moved(from, part, distance);
    if (range != from)
        setValue(range);
}

void TolerantRangeEditor::userSetComponent(std::size_t component, double value)
{
    const double from = editable(getRanges())[component];
    userMove(RangePart::handle(component), axis_.nearest(value, from) - from);
}

void TolerantRangeEditor::userReset()
{
    if (canInteract() && !inSeries() && resetValue_ && *resetValue_ != getRanges())
        setValue(axis_.ascending(*resetValue_));
}

void TolerantRangeEditor::userEnterNumber(std::size_t component)
{
    if (!canInteract() || inSeries())
        return;
    if (!entry_) {
        NumericEntry::InitArgs args(0, 0, canvas());
        args.palette = getPalette();
        args.align = TextAlign::Right;
        auto entry = std::make_unique<RangeEntry>(args, *this);
        entry_ = entry.get();
        addChild(std::move(entry));
    }
    entry_->open(component);
}

void TolerantRangeEditor::userGoTo(std::size_t component)
{
    if (takeFocus())
        setCurrent(static_cast<int>(component));
}

// Events

void TolerantRangeEditor::setCurrent(int stop)
{
    if (stop == current_)
        return;
    current_ = stop;
    changed(GlobChange::kState | GlobChange::kContents);
}

void TolerantRangeEditor::hover(int handle)
{
    if (handle == hovered_)
        return;
    hovered_ = handle;
    changed(GlobChange::kContents | GlobChange::kTooltip | GlobChange::kCursor);
}

void TolerantRangeEditor::handleMouseContainment(bool over)
{
    if (!over)
        hover(RangeGeometry::kNone);
}

std::size_t TolerantRangeEditor::handleNear(double x) const
{
    std::size_t nearest = 0;
    for (std::size_t i = 1; i < ColourData::size(); ++i)
        if (std::abs(geometry().nobbleX(i) - x) < std::abs(geometry().nobbleX(nearest) - x))
            nearest = i;
    return nearest;
}

bool TolerantRangeEditor::press(const Event& event)
{
    const XY<double> at = bottomUp(event.position);
    const auto part = geometry().partAt(at);
    if (!part || !canInteract())
        return true;
    if (event.code == EventCode::MouseDoubleClick) {
        const int handle = findNobbleAtPos(at);
        userEnterNumber(handle == RangeGeometry::kNone ? handleNear(at.x) : static_cast<std::size_t>(handle));
        return true;
    }
    userPress(*part);
    grip_.x = at.x;
    grip_.fine = event.has(Event::kShift);
    return true;
}

void TolerantRangeEditor::drag(const Event& event)
{
    const double x = bottomUp(event.position).x;
    const bool fine = event.has(Event::kShift);
    if (fine != grip_.fine)
        grip_ = {grip_.part, hasWritten() ? getRanges() : grip_.from, x, fine};
    userDrag(geometry().distance(x - grip_.x) * (fine ? kFineDrag : 1.0));
}

bool TolerantRangeEditor::handleMouseEvent(const Event& event)
{
    if (event.code == EventCode::MouseEnter || event.code == EventCode::MouseLeave)
        handleMouseContainment(event.code == EventCode::MouseEnter);
    if (event.isPress(MouseButton::Left))
        return press(event);
    if (!inSeries()) {
        if (event.code == EventCode::MouseMove)
            hover(findNobbleAtPos(bottomUp(event.position)));
        return ValControl::handleMouseEvent(event);
    }
    if (event.code == EventCode::MouseMove)
        drag(event);
    // What was set before the pointer was taken away stands: the user has seen it.
    if (event.code == EventCode::MouseCancel ||
        (event.code == EventCode::MouseRelease && event.button == MouseButton::Left))
        userRelease();
    return true;
}

MouseCursor TolerantRangeEditor::contextCursor(const XY<int>& local) const
{
    const auto part = geometry().partAt(bottomUp(local));
    if (!part || !canInteract())
        return MouseCursor::Arrow;
    return *part == RangePart::section(1) ? MouseCursor::Move : MouseCursor::ResizeHorizontal;
}

bool TolerantRangeEditor::usesKey(const Event& press) const
{
    if (inSeries() && press.isKeyPress(Key::Escape))
        return true;
    if (rangeStepsOf(press) != 0.0)
        return true;
    if (!press.isPlainKeyPress())
        return ValControl::usesKey(press);
    switch (press.key) {
    case Key::Tab:
        return press.has(Event::kShift) ? current_ > 0 : current_ + 1 < kStops;
    case Key::Home:
    case Key::End:
    case Key::Enter:
    case Key::F2:
        return true;
    default:
        return ValControl::usesKey(press);
    }
}

bool TolerantRangeEditor::handleKeyEvent(const Event& event)
{
    if (inSeries() && event.isKeyPress(Key::Escape)) {
        userCancel();
        return true;
    }
    const RangePart part = partOf(current_);
    if (const double steps = rangeStepsOf(event); steps != 0.0) {
        userMove(part, steps * getStep());
        return true;
    }
    if (!usesKey(event) || !event.isPlainKeyPress())
        return ValControl::handleKeyEvent(event);
    switch (event.key) {
    case Key::Tab:
        setCurrent(current_ + (event.has(Event::kShift) ? -1 : 1));
        return true;
    case Key::Home:
    case Key::End:
        userMove(part, event.key == Key::Home ? -axis_.span : axis_.span);
        return true;
    case Key::Enter:
    case Key::F2:
        userEnterNumber(current_ == kWholeRange ? 1 : static_cast<std::size_t>(current_));
        return true;
    default:
        return ValControl::handleKeyEvent(event);
    }
}

void TolerantRangeEditor::handleFocusEvent(bool gained)
{
    // Who comes back with the Tab key begins at the first handle.
    if (!gained)
        setCurrent(0);
    ValControl::handleFocusEvent(gained);
}

void TolerantRangeEditor::reviewMenu(const Event* event)
{
    const GlobRef<TolerantRangeEditor> self(this);
    const std::size_t handle = event && event->isMouse() ? handleNear(bottomUp(event->position).x)
                                                         : static_cast<std::size_t>(current_) % ColourData::size();
    editMenu().addItem(UIString(TextIds::kRangeType), [self, handle] {
        if (self)
            self->userEnterNumber(handle);
    });
    MenuItem& reset = editMenu().addItem(UIString(TextIds::kRangeReset), [self] {
        if (self)
            self->userReset();
    });
    reset.enabled = resetValue_ && *resetValue_ != getRanges();
}

} // namespace oribund

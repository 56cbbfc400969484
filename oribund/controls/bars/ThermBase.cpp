#include "oribund/controls/bars/ThermBase.h"

#include "oribund/controls/bars/ThermDrag.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/KeyTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace oribund
{

namespace
{

/** With all its digits, so that who reads it zooms as far as was asked for. */
String exactNumber(double number)
{
    std::array<char, 32> digits;
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return String(std::string_view(digits.data(), end));
}

} // namespace

const String ThermBase::resizeZoomWinMsg("resizeZoomWin");

ThermBase::ThermBase(const InitArgs& args)
    : Control(args)
{
    applyNaturalSize(args, {10 * UifStd::getRowHeight(), calcHeight()});
    setAccessibleName(UIString(TextIds::kTime));
}

ThermBase::~ThermBase() = default;

int ThermBase::calcHeight()
{
    return 3 * UifStd::getWidgetGap();
}

int ThermBase::cueHeight()
{
    return 8;
}

int ThermBase::cueTolerance()
{
    return UifStd::getWidgetGap();
}

void ThermBase::set(double start, double end, double windowStart, double windowEnd)
{
    const ThermGeometry before = geometry_;
    geometry_.set(start, end, windowStart, windowEnd);
    if (geometry_ != before)
        changed(GlobChange::kContents);
}

ThermGeometry ThermBase::geometry() const
{
    ThermGeometry shown = geometry_;
    shown.width = getWidth();
    return shown;
}

double ThermBase::constrainTime(double editTime) const
{
    return geometry_.clamp(editTime);
}

void ThermBase::jumpToPos(double editTime)
{
    if (!std::isnan(editTime))
        setTime(constrainTime(snapTime(editTime)));
}

double ThermBase::leastWindow() const
{
    return (geometry_.end - geometry_.start) * 1e-6;
}

void ThermBase::setWindow(const NumRange<double>& range)
{
    const double present = geometry_.windowEnd - geometry_.windowStart;
    const double ratio = range.length() / (present > 0.0 ? present : leastWindow());
    if (!std::isfinite(ratio) || !(ratio > 0.0))
        return;
    requestedWindow_ = range;
    sendMsg(resizeZoomWinMsg + String(" ") + exactNumber(ratio));
}

unsigned ThermBase::doHitTest(const XY<int>& position, unsigned) const
{
    return static_cast<unsigned>(
        geometry().hitTest(position.x, getTime(eExact), allowCurrentTime_, allowZoom_, UifStd::getWidgetGap()));
}

MouseCursor ThermBase::contextCursor(const XY<int>& local) const
{
    switch (static_cast<ThermHit>(drag_ ? dragState() : doHitTest(local))) {
    case ThermHit::LeftEdge:
    case ThermHit::RightEdge:
        return MouseCursor::ResizeHorizontal;
    case ThermHit::WindowBody:
        return MouseCursor::Hand;
    default:
        return Control::contextCursor(local);
    }
}

unsigned ThermBase::dragState() const
{
    return drag_ ? static_cast<unsigned>(drag_->hit()) : 0;
}

void ThermBase::setAllowZoom(bool allow)
{
    if (std::exchange(allowZoom_, allow) != allow)
        changed(GlobChange::kContents);
}

void ThermBase::setViewRegionVisible(bool visible)
{
    if (std::exchange(viewRegionVisible_, visible) != visible)
        changed(GlobChange::kContents);
}

void ThermBase::setMarkedRegion(const std::optional<NumRange<double>>& region)
{
    if (std::exchange(markedRegion_, region) != region)
        changed(GlobChange::kContents);
}

double ThermBase::timeStep() const
{
    return (geometry_.end - geometry_.start) / 100.0;
}

void ThermBase::startDrag(const std::shared_ptr<ThermDrag>& drag)
{
    drag_ = drag;
    clickSetsTime_ = false;
    drag->begin();
}

void ThermBase::finishDrag()
{
    // Taken out first: what the end of the drag sets off finds the bar idle, and may destroy it.
    const GlobRef<ThermBase> self(this);
    if (const auto drag = std::exchange(drag_, nullptr)) {
        drag->finish();
        if (self)
            handleDragEnd();
    }
}

void ThermBase::abortDrag()
{
    const GlobRef<ThermBase> self(this);
    if (const auto drag = std::exchange(drag_, nullptr)) {
        drag->abort();
        if (self)
            handleDragEnd();
    }
}

void ThermBase::handleMouseLeft(const Event& event)
{
    setTime(constrainTime(snapTime(x2f(event.position.x))));
}

bool ThermBase::press(const Event& event)
{
    const int x = event.position.x;
    const auto hit = static_cast<ThermHit>(doHitTest(event.position));
    const GlobRef<ThermBase> self(this);
    startDrag(ThermDrag::make(*this, hit, x));
    if (!self)
        return true;
    pressX_ = x;
    clickSetsTime_ = hit == ThermHit::CurrentTime || hit == ThermHit::WindowBody;
    if (hit == ThermHit::None)
        jumpToPos(x2f(x));
    return true;
}

void ThermBase::release(const Event& event)
{
    const GlobRef<ThermBase> self(this);
    if (event.code == EventCode::MouseRelease && std::exchange(clickSetsTime_, false) && canInteract())
        handleMouseLeft(event);
    if (self)
        finishDrag();
}

bool ThermBase::handleMouseEvent(const Event& event)
{
    if (const auto drag = drag_) { // held: what a motion sets off may end the drag
        if (event.code == EventCode::MouseMove && canInteract()) {
            clickSetsTime_ = clickSetsTime_ && event.position.x == pressX_;
            drag->motion(event.position.x);
        }
        // What was set before the pointer was taken away stands: the user has seen it.
        else if (event.code == EventCode::MouseCancel ||
                 (event.code == EventCode::MouseRelease && event.button == drag->button()))
            release(event);
        return true;
    }
    if (event.isPress(MouseButton::Left))
        return takesPress() && hasTime() && press(event);
    return Control::handleMouseEvent(event);
}

const KeyTable<ThermBase>& ThermBase::keys()
{
    static constexpr KeyAction<ThermBase> kActions[] = {
        {Key::Left, [](ThermBase& widget, const Event&) { widget.goTo(widget.getTime(eExact) - widget.timeStep()); }},
        {Key::Right, [](ThermBase& widget, const Event&) { widget.goTo(widget.getTime(eExact) + widget.timeStep()); }},
        {Key::Home, [](ThermBase& widget, const Event&) { widget.goTo(widget.geometry_.start); }},
        {Key::End, [](ThermBase& widget, const Event&) { widget.goTo(widget.geometry_.end); }},
    };
    static constexpr KeyTable<ThermBase> kKeys(kActions);
    return kKeys;
}

bool ThermBase::usesKey(const Event& press) const
{
    if (drag_ && press.isKeyPress(Key::Escape))
        return true;
    return (!drag_ && canInteract() && hasTime() && keys().has(press)) || Control::usesKey(press);
}

bool ThermBase::handleKeyEvent(const Event& event)
{
    if (drag_ && event.isKeyPress(Key::Escape)) {
        abortDrag();
        return true;
    }
    return keys().run(*this, event) || Control::handleKeyEvent(event);
}

void ThermBase::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::TimeBar;
    description.number = AccessibleNumber{getTime(eExact), geometry_.start, geometry_.end, 0.0};
    description.value = valueText();
}

bool ThermBase::accessibleSetNumber(double value, int)
{
    if (!canInteract() || !hasTime() || std::isnan(value))
        return false;
    setTime(constrainTime(value));
    return true;
}

} // namespace oribund

#include "oribund/controls/bars/ThermBase.h"

#include "oribund/controls/bars/ThermDrag.h"
#include "oribund/cues/CueDrawing.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobPeer.h"

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
        changed(PeerChange::kContents);
}

ThermGeometry ThermBase::geometry() const
{
    ThermGeometry shown = geometry_;
    shown.width = getWidth();
    return shown;
}

double ThermBase::constrainTime(double time) const
{
    return geometry_.clamp(time);
}

void ThermBase::jumpToPos(double time)
{
    setTime(constrainTime(snapTime(time)));
}

void ThermBase::setWindow(const NumRange<double>& range)
{
    const double ratio = range.length() / (geometry_.windowEnd - geometry_.windowStart);
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
        changed(PeerChange::kContents);
}

void ThermBase::setViewRegionVisible(bool visible)
{
    if (std::exchange(viewRegionVisible_, visible) != visible)
        changed(PeerChange::kContents);
}

void ThermBase::setMarkedRegion(const std::optional<NumRange<double>>& region)
{
    if (std::exchange(markedRegion_, region) != region)
        changed(PeerChange::kContents);
}

double ThermBase::timeStep() const
{
    return (geometry_.end - geometry_.start) / 100.0;
}

void ThermBase::startDrag(const std::shared_ptr<ThermDrag>& drag)
{
    drag_ = drag;
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
    pressX_ = x;
    clickSetsTime_ = hit == ThermHit::CurrentTime || hit == ThermHit::WindowBody;
    startDrag(ThermDrag::make(*this, hit, x));
    if (self && hit == ThermHit::None)
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

bool ThermBase::usesKey(const Event& press) const
{
    if (drag_ && press.isKeyPress(Key::Escape))
        return true;
    const bool moves =
        press.key == Key::Left || press.key == Key::Right || press.key == Key::Home || press.key == Key::End;
    return (moves && press.isPlainKeyPress() && !drag_ && canInteract() && hasTime()) || Control::usesKey(press);
}

bool ThermBase::handleKeyEvent(const Event& event)
{
    if (drag_ && event.isKeyPress(Key::Escape)) {
        abortDrag();
        return true;
    }
    if (!event.isPlainKeyPress())
        return Control::handleKeyEvent(event);
    switch (event.key) {
    case Key::Left:
        setTime(constrainTime(getTime(eExact) - timeStep()));
        return true;
    case Key::Right:
        setTime(constrainTime(getTime(eExact) + timeStep()));
        return true;
    case Key::Home:
        setTime(constrainTime(geometry_.start));
        return true;
    case Key::End:
        setTime(constrainTime(geometry_.end));
        return true;
    default:
        return Control::handleKeyEvent(event);
    }
}

void ThermBase::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::TimeBar;
    description.number = AccessibleNumber{getTime(eExact), geometry_.start, geometry_.end, 0.0};
    description.value = valueText();
}

bool ThermBase::accessibleSetNumber(double value, int)
{
    if (!canInteract() || !hasTime())
        return false;
    setTime(constrainTime(value));
    return true;
}

void ThermBase::draw(CanvasRenderer& renderer)
{
    const ClipGuard clip(renderer, CanvasRenderer::toDouble(localBox()));
    drawBackground(renderer);
    if (viewRegionVisible_)
        drawViewRegion(renderer);
    if (markedRegion_)
        drawMarkedRegion(renderer, markedRegion_->start(), markedRegion_->end());
    drawContents(renderer);
    drawCurrentTime(renderer);
    if (hasFocus())
        drawFocusRing(renderer, localBox());
}

void ThermBase::drawContents(CanvasRenderer& renderer)
{
    if (minimalMode())
        return;
    drawMarks(renderer);
    drawCues(renderer);
}

void ThermBase::drawBackground(CanvasRenderer& renderer)
{
    renderer.fillRect(CanvasRenderer::toDouble(localBox()), getOuterWindowColour());
}

void ThermBase::drawViewRegion(CanvasRenderer& renderer)
{
    const ThermGeometry shown = geometry();
    drawWindow(renderer, shown.f2xClippedI(shown.windowStart), shown.f2xClippedI(shown.windowEnd));
}

void ThermBase::drawWindow(CanvasRenderer& renderer, int x0, int x1)
{
    const Kt::Box<double> box = CanvasRenderer::toDouble(Kt::Box<int>{x0, 0, x1, getHeight()});
    renderer.fillRect(box, getWindowColour());
    if (allowZoom_)
        renderer.frameRect(box, getPalette().border());
}

void ThermBase::drawMarkedRegion(CanvasRenderer& renderer, double from, double to)
{
    const ThermGeometry shown = geometry();
    const double third = getHeight() / 3.0;
    renderer.fillRect({shown.f2xClipped(from), third, shown.f2xClipped(to), 2.0 * third}, getMarkedRegionColour());
}

void ThermBase::drawCurrentTime(CanvasRenderer& renderer)
{
    const double time = getTime(eExact);
    if (time < geometry_.start || time > geometry_.end)
        drawOutOfRangeIndicator(renderer, time > geometry_.end);
    else
        drawTimeAt(renderer, geometry().f2xClippedI(time));
}

void ThermBase::drawCueAt(CanvasRenderer& renderer, int x, const Colour& colour)
{
    drawCue(renderer, {x, 0}, colour, colour.scaled(0.3), eCueSizeNormal);
}

void ThermBase::drawMarkAt(CanvasRenderer& renderer, int x)
{
    drawSmallMark(renderer, {x, getHeight() - 4}, UifStd::getColourScheme().mark);
}

void ThermBase::drawTimeAt(CanvasRenderer& renderer, int x)
{
    // At the very end the line would stand beyond the last pixel.
    const double at = std::min(x, std::max(0, getWidth() - 1));
    renderer.fillRect({at, 0.0, at + 1.0, static_cast<double>(getHeight())}, UifStd::getColourScheme().currentTime);
}

void ThermBase::drawOutOfRangeIndicator(CanvasRenderer& renderer, bool atEnd)
{
    const double middle = getHeight() / 2.0;
    const double reach = std::min(middle, static_cast<double>(UifStd::getWidgetGap()));
    const double tip = atEnd ? getWidth() : 0.0;
    const double base = atEnd ? tip - reach : reach;
    const std::array<XY<double>, 3> arrow{{{tip, middle}, {base, middle - reach}, {base, middle + reach}}};
    renderer.polygon(arrow, UifStd::getColourScheme().currentTime);
}

Colour ThermBase::getWindowColour() const
{
    return getPalette().button();
}

Colour ThermBase::getOuterWindowColour() const
{
    return getPalette().field();
}

Colour ThermBase::getMarkedRegionColour() const
{
    return UifStd::getColourScheme().mark.withAlpha(0.5);
}

} // namespace oribund

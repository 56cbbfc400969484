#include "oribund/host/toolkit/scroll/ScrollBar.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/KeyTable.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

/** A thumb that can be taken hold of, however little of the whole it stands for. Pixels. */
constexpr int kShortestThumb = 16;

constexpr double kStepsPerNotch = 3.0;

} // namespace

ScrollBar::ScrollBar(const InitArgs& args)
    : Control(args)
{
    setFocusable(args.focusable);
    applyNaturalSize(args, {UifStd::getScrollBarWidth(), 5 * UifStd::getRowHeight()});
}

void ScrollBar::setThumb(double position, double size)
{
    if (std::isnan(position) || std::isnan(size))
        return;
    size = std::clamp(size, 0.0, 1.0);
    position = std::clamp(position, 0.0, 1.0 - size);
    if (position == position_ && size == size_)
        return;
    position_ = position;
    size_ = size;
    changed(GlobChange::kLook);
}

void ScrollBar::setStep(double step)
{
    step_ = std::isfinite(step) ? std::max(step, 0.0) : 0.0;
}

Kt::Box<int> ScrollBar::thumbBox() const
{
    if (size_ >= 1.0)
        return {};
    const int height = getHeight();
    const int length = std::min(height, std::max(kShortestThumb, static_cast<int>(height * size_)));
    const int top = static_cast<int>(std::lround((height - length) * (position_ / (1.0 - size_))));
    return {0, top, getWidth(), top + length};
}

// What the user does

bool ScrollBar::go(double position, ScrollBarEvent::Kind kind)
{
    const double before = position_;
    const GlobRef<ScrollBar> self(this);
    const RedrawHold hold;
    setThumb(position, size_);
    if (position_ == before)
        return false;
    events_.notify({this, kind, position_});
    return true;
}

void ScrollBar::userMove(double position)
{
    if (canInteract())
        go(position, ScrollBarEvent::Kind::Move);
}

void ScrollBar::userPage(int pages)
{
    if (canInteract())
        go(position_ + pages * size_, ScrollBarEvent::Kind::Page);
}

bool ScrollBar::userStep(double steps)
{
    return canInteract() && go(position_ + steps * getStep(), ScrollBarEvent::Kind::Move);
}

void ScrollBar::press(const Event& event)
{
    const Kt::Box<int> thumb = thumbBox();
    if (!canInteract() || thumb.empty())
        return;
    if (event.position.y < thumb.top || event.position.y >= thumb.bottom) {
        userPage(event.position.y < thumb.top ? -1 : 1);
        return;
    }
    dragged_ = true;
    pressedY_ = event.position.y;
    positionAtPress_ = position_;
    changed(GlobChange::kContents);
}

void ScrollBar::drag(int y)
{
    const int room = getHeight() - thumbBox().height();
    if (room > 0)
        userMove(positionAtPress_ + (y - pressedY_) * (1.0 - size_) / room);
}

void ScrollBar::endDrag(bool cancelled)
{
    const GlobRef<ScrollBar> self(this);
    dragged_ = false;
    changed(GlobChange::kContents);
    if (cancelled)
        userMove(positionAtPress_);
    if (self)
        events_.notify({this, ScrollBarEvent::Kind::DragEnd, position_});
}

bool ScrollBar::handleMouseEvent(const Event& event)
{
    if (event.code == EventCode::MouseWheel)
        return userStep(-event.wheel * kStepsPerNotch);
    if (event.isPress(MouseButton::Left)) {
        press(event);
        return true;
    }
    if (!dragged_)
        return Control::handleMouseEvent(event);
    if (event.code == EventCode::MouseMove)
        drag(event.position.y);
    // What was in view before the pointer was taken away stays there.
    if (event.code == EventCode::MouseCancel ||
        (event.code == EventCode::MouseRelease && event.button == MouseButton::Left))
        endDrag(false);
    return true;
}

const KeyTable<ScrollBar>& ScrollBar::keys()
{
    static constexpr KeyAction<ScrollBar> kActions[] = {
        {Key::Up, [](ScrollBar& widget, const Event&) { widget.userStep(-1.0); }},
        {Key::Down, [](ScrollBar& widget, const Event&) { widget.userStep(1.0); }},
        {Key::PageUp, [](ScrollBar& widget, const Event&) { widget.userPage(-1); }},
        {Key::PageDown, [](ScrollBar& widget, const Event&) { widget.userPage(1); }},
        {Key::Home, [](ScrollBar& widget, const Event&) { widget.userMove(0.0); }},
        {Key::End, [](ScrollBar& widget, const Event&) { widget.userMove(1.0); }},
    };
    static constexpr KeyTable<ScrollBar> kKeys(kActions);
    return kKeys;
}

bool ScrollBar::usesKey(const Event& press) const
{
    if (dragged_ && press.isKeyPress(Key::Escape))
        return true;
    return (hasFocus() && keys().has(press)) || Control::usesKey(press);
}

bool ScrollBar::handleKeyEvent(const Event& event)
{
    if (event.isKeyPress(Key::Escape)) {
        endDrag(true);
        return true;
    }
    return keys().run(*this, event) || Control::handleKeyEvent(event);
}

// Look

void ScrollBar::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::ScrollBar;
    description.number = AccessibleNumber{position_, 0.0, 1.0 - size_, getStep()};
}

bool ScrollBar::accessibleSetNumber(double value, int)
{
    userMove(value);
    return canInteract();
}

void ScrollBar::draw(CanvasRenderer& renderer)
{
    const Palette& palette = getPalette();
    renderer.fillRect(CanvasRenderer::toDouble(localBox()), palette.window().scaled(0.8));
    const Kt::Box<int> thumb = thumbBox().inset(2);
    const bool lit = dragged_ || isHot();
    const Colour& usual = palette.border();
    if (!thumb.empty())
        renderer.fillRect(CanvasRenderer::toDouble(thumb), lit ? usual.mix(palette.windowText(), 0.4) : usual);
    drawFocusRing(renderer, localBox());
}

} // namespace oribund

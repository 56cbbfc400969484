#include "workbench/app/overlay/HandleGlob.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace workbench
{

using namespace oribund;

namespace
{
constexpr int kSize = 19; // what can be hit: more than is seen
constexpr double kRadius = 5.0;

/** A hand that clicks does not hold quite still. */
constexpr int kSlack = 2;

constexpr double kFine = 0.1;
constexpr double kCoarse = 10.0;

// Seen on any picture: light with a dark rim.
constexpr Colour kLight{1.0, 1.0, 1.0, 0.95};
constexpr Colour kRim{0.0, 0.0, 0.0, 0.75};
constexpr Colour kGround{0.0, 0.0, 0.0, 0.25};

/** Where an arrow key leads; nothing for another key. */
XY<double> directionOf(const Event& press)
{
    switch (press.key) {
    case Key::Left:
        return {-1.0, 0.0};
    case Key::Right:
        return {1.0, 0.0};
    case Key::Up:
        return {0.0, -1.0};
    case Key::Down:
        return {0.0, 1.0};
    default:
        return {};
    }
}
} // namespace

HandleGlob::HandleGlob(const InitArgs& args, const FXViewHandle& view, const PictureHandle& handle)
    : Control(args)
    , handle_(handle)
    , view_(view)
    , edits_(view, handle)
{
    applySize(kSize, kSize);
    setAccessibleName(UIString(handle.name));
}

HandleGlob::~HandleGlob() = default;

void HandleGlob::place(const PictureHandle& handle, const PictureMapping& mapping, const Kt::Box<int>& view)
{
    // What is being dragged is measured from where it was taken.
    if (!isDragging())
        handle_ = handle;
    mapping_ = mapping;
    const double margin = kRadius + 1.0;
    const auto within = [margin](double at, int low, int high) {
        return std::clamp(at, low + margin, std::max(low + margin, high - margin));
    };
    const XY<double> seen = mapping.toView(handle.at);
    const XY<double> at{within(seen.x, view.left, view.right), within(seen.y, view.top, view.bottom)};
    const XY<int> corner{static_cast<int>(std::floor(at.x)) - kSize / 2,
                         static_cast<int>(std::floor(at.y)) - kSize / 2};
    centre_ = {at.x - corner.x, at.y - corner.y};
    setPosition(corner);
    setEnabled(edits_.mayEdit());
    changed(GlobChange::kContents);
}

WString HandleGlob::valueText() const
{
    const auto effect = view_.getEffectPtr();
    const auto param = effect ? effect->findParam(handle_.param) : EffectInstance::ParamPtr();
    const auto value = edits_.value();
    return param && value ? oribund::valueText(*param, *value) : WString();
}

// What the user does

bool HandleGlob::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left)) {
        if (event.code == EventCode::MouseDoubleClick) {
            HandleDrag(view_, handle_).reset(); // one of its own: this may be gone after it
            return true;
        }
        pressed_ = true;
        pressedAt_ = event.canvasPosition;
        return true;
    }
    if (!pressed_)
        return Control::handleMouseEvent(event);
    if (event.code == EventCode::MouseMove)
        drag(event);
    // What was set before the pointer was taken away stands: the user has seen it.
    if (event.code == EventCode::MouseCancel ||
        (event.code == EventCode::MouseRelease && event.button == MouseButton::Left)) {
        const GlobRef<HandleGlob> self(this);
        pressed_ = false;
        edits_.finish();
        if (self)
            changed(GlobChange::kContents);
    }
    return true;
}

void HandleGlob::drag(const Event& event)
{
    XY<int> moved = event.canvasPosition - pressedAt_;
    if (!edits_.isBegun()) {
        if (std::max(std::abs(moved.x), std::abs(moved.y)) <= kSlack || !edits_.mayEdit())
            return;
        edits_.begin(handle_, mapping_);
    }
    if (edits_.isLost()) {
        pressed_ = false;
        edits_.finish();
        return;
    }
    if (event.has(Event::kShift))
        (std::abs(moved.x) < std::abs(moved.y) ? moved.x : moved.y) = 0;
    const double scale = event.has(Event::kCtrl) ? kFine : 1.0;
    edits_.moveBy({moved.x * scale, moved.y * scale});
}

bool HandleGlob::usesKey(const Event& press) const
{
    if (pressed_ && press.isKeyPress(Key::Escape))
        return true;
    const bool isStep = press.code == EventCode::KeyPress && directionOf(press) != XY<double>() &&
                        !press.has(Event::kAlt | Event::kMeta);
    return isStep || Control::usesKey(press);
}

bool HandleGlob::handleKeyEvent(const Event& event)
{
    if (pressed_ && event.isKeyPress(Key::Escape)) {
        pressed_ = false;
        edits_.abort();
        return true;
    }
    if (event.code != EventCode::KeyPress || directionOf(event) == XY<double>())
        return Control::handleKeyEvent(event);
    step(event);
    return true;
}

void HandleGlob::step(const Event& press)
{
    const auto effect = view_.getEffectPtr();
    if (pressed_ || !effect)
        return;
    const double scale = (press.has(Event::kShift) ? kCoarse : 1.0) * (press.has(Event::kCtrl) ? kFine : 1.0);
    const Vector2d unit = stepOf(*effect, handle_);
    const XY<double> to = directionOf(press);
    if (handle_.kind == PictureHandle::Kind::Place)
        edits_.stepBy({to.x * unit.x * scale, to.y * unit.y * scale});
    else
        edits_.stepBy({(to.x - to.y) * unit.x * scale, 0.0}); // right and up make it more
}

// What it is

UIString HandleGlob::tooltip() const
{
    return UIString(handle_.name + L": " + valueText());
}

MouseCursor HandleGlob::contextCursor(const XY<int>&) const
{
    return !isEnabled()                                 ? MouseCursor::Arrow
           : handle_.kind == PictureHandle::Kind::Place ? MouseCursor::Move
                                                        : MouseCursor::Hand;
}

void HandleGlob::describe(AccessibleDescription& description) const
{
    description.value = valueText();
    const auto value = edits_.value();
    const auto effect = view_.getEffectPtr();
    const auto* const number = value ? std::get_if<double>(&*value) : nullptr;
    if (!number || !effect)
        return;
    const auto param = effect->findParamAs<EffectValParam<double>>(handle_.param);
    description.role = AccessibleRole::Slider;
    description.number = AccessibleNumber{*number, param->getMin(), param->getMax(), NumberDisplay::of(*param).step};
}

bool HandleGlob::accessibleSetNumber(double number, int)
{
    const auto value = edits_.value();
    const auto* const present = value ? std::get_if<double>(&*value) : nullptr;
    if (!present || !canInteract())
        return false;
    edits_.stepBy({number - *present, 0.0});
    return true;
}

void HandleGlob::draw(CanvasRenderer& renderer)
{
    const bool lit = isHot() || pressed_ || hasFocus();
    const Colour ink = canInteract() ? kLight : kLight.mix(kRim, 0.5);
    const Colour fill = lit ? getPalette().accent() : kGround;
    if (handle_.kind == PictureHandle::Kind::Place) {
        renderer.circle(centre_, kRadius + 1.0, CanvasRenderer::kNone, kRim, 1.5);
        renderer.circle(centre_, kRadius, fill, ink, 1.5);
    } else if (handle_.kind == PictureHandle::Kind::Angle || handle_.kind == PictureHandle::Kind::Softness) {
        const double r = kRadius;
        const XY<double> corners[] = {{centre_.x, centre_.y - r},
                                      {centre_.x + r, centre_.y},
                                      {centre_.x, centre_.y + r},
                                      {centre_.x - r, centre_.y}};
        renderer.polygon(corners, CanvasRenderer::kNone, kRim, 3.5);
        renderer.polygon(corners, fill, ink, 1.5);
    } else {
        const double r = kRadius - 1.0;
        const Kt::Box<double> box{centre_.x - r, centre_.y - r, centre_.x + r, centre_.y + r};
        renderer.frameRect(box.inset(-1.0), kRim, 1.0);
        renderer.fillRect(box, fill);
        renderer.frameRect(box, ink, 1.5);
    }
    if (hasFocus())
        renderer.circle(centre_, kRadius + 3.0, CanvasRenderer::kNone, getPalette().focus(), 1.5);
}

} // namespace workbench

#include "oribund/host/toolkit/widgets/Slider.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/KeyTable.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oribund
{

namespace
{

/** A press this near to the handle takes hold of it and does not move it. Pixels. */
constexpr double kGripReach = 4.0;

constexpr double kFineFactor = 0.1;

} // namespace

Slider::Slider(const InitArgs& args)
    : SeriesControl(args, std::isnan(args.value) ? args.min : args.value)
    , step_(args.step)
    , page_(args.page)
    , origin_(args.origin)
    , resetValue_(args.resetValue)
    , snapToStep_(args.snapToStep)
{
    setRange(args.min, args.max);
    applyNaturalSize(args, {5 * UifStd::getRowHeight(), UifStd::getRowHeight()});
}

void Slider::setRange(double min, double max)
{
    if (!(min < max) || !std::isfinite(max - min) || (min == min_ && max == max_))
        return;
    min_ = min;
    max_ = max;
    changed(GlobChange::kLook);
}

void Slider::setValue(double value, eRedrawFlag redrawFlag)
{
    if (!std::isnan(value))
        receive(value, redrawFlag);
}

void Slider::setSteps(double step, double page)
{
    step_ = step;
    page_ = page;
    changed(GlobChange::kState);
}

double Slider::getStep() const
{
    return step_ > 0.0 ? step_ : (max_ - min_) / 100.0;
}

double Slider::getPage() const
{
    return page_ > 0.0 ? page_ : (max_ - min_) / 10.0;
}

void Slider::setOrigin(std::optional<double> origin)
{
    origin_ = origin;
    changed(GlobChange::kLook);
}

double Slider::origin() const
{
    return std::clamp(origin_.value_or(0.0), min_, max_);
}

Kt::Box<int> Slider::track() const
{
    return controlBox().inset(2);
}

double Slider::valueAt(double x) const
{
    const Kt::Box<int> inner = track();
    const double fraction = inner.width() > 0 ? (x - inner.left) / inner.width() : 0.0;
    return min_ + std::clamp(fraction, 0.0, 1.0) * (max_ - min_);
}

double Slider::xOf(double value) const
{
    const Kt::Box<int> inner = track();
    return inner.left + (std::clamp(value, min_, max_) - min_) / (max_ - min_) * std::max(0, inner.width());
}

double Slider::allowed(double value) const
{
    if (snapToStep_)
        value = min_ + std::round((value - min_) / getStep()) * getStep();
    return std::clamp(value, min_, max_);
}

bool Slider::handleEdit(const double& value, ChangeKind kind)
{
    edits_.notify({this, value, kind});
    return true;
}

void Slider::handleSeriesTakenBack() {}

void Slider::userPress(double value)
{
    if (!canInteract() || isDragging())
        return;
    beginSeries(getValue());
    userDrag(value);
}

void Slider::userDrag(double value)
{
    if (!isDragging() || !canInteract() || std::isnan(value))
        return;
    // A press that moves nothing asks for nothing, even where the value lies outside the range or between steps.
    if (valEqualsVal(value, getValue()))
        return;
    value = allowed(value);
    if (!valEqualsVal(value, getValue()))
        edit(value);
}

void Slider::userRelease()
{
    endSeries(false);
}

void Slider::userCancel()
{
    endSeries(true);
}

void Slider::userStep(int steps)
{
    userSet(std::clamp(getValue(), min_, max_) + steps * getStep());
}

void Slider::userPage(int pages)
{
    userSet(std::clamp(getValue(), min_, max_) + pages * getPage());
}

void Slider::userSet(double value)
{
    clicked_ = false;
    if (!canInteract() || isDragging() || std::isnan(value))
        return;
    value = allowed(value);
    if (!valEqualsVal(value, getValue()))
        edit(value);
}

void Slider::userReset()
{
    if (!canInteract() || isDragging() || !resetValue_)
        return;
    const GlobRef<Slider> self(this);
    const RedrawHold hold;
    if (std::exchange(clicked_, false))
        handleSeriesTakenBack();
    if (self && resetValue_)
        userSet(*resetValue_);
}

bool Slider::press(const Event& event)
{
    if (!canInteract() || isDragging())
        return true;
    if (event.code == EventCode::MouseDoubleClick && resetValue_) {
        userReset();
        return true;
    }
    clicked_ = false;
    const double x = event.position.x + 0.5;
    const bool onHandle = std::abs(x - xOf(getValue())) <= kGripReach;
    const double value = onHandle ? getValue() : valueAt(x);
    grip_ = {x, std::clamp(value, min_, max_), event.has(Event::kShift)};
    userPress(value);
    return true;
}

void Slider::drag(const Event& event)
{
    const double x = event.position.x + 0.5;
    const bool fine = event.has(Event::kShift);
    if (fine != grip_.fine)
        grip_ = {x, std::clamp(getValue(), min_, max_), fine};
    const double distance = x - grip_.x;
    if (distance == 0.0 && !hasWritten())
        return;
    const double perPixel = (max_ - min_) / std::max(1, track().width());
    userDrag(grip_.value + distance * perPixel * (fine ? kFineFactor : 1.0));
}

void Slider::release()
{
    const GlobRef<Slider> self(this);
    const bool edited = hasWritten();
    userRelease();
    if (self)
        clicked_ = edited;
}

void Slider::turnWheel(double notches)
{
    wheelRest_ += notches;
    const double whole = std::trunc(wheelRest_);
    wheelRest_ -= whole;
    userStep(static_cast<int>(whole));
}

bool Slider::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left))
        return press(event);
    if (event.code == EventCode::MouseWheel && hasFocus() && canInteract()) {
        turnWheel(event.wheel);
        return true;
    }
    if (!isDragging())
        return Control::handleMouseEvent(event);
    if (event.code == EventCode::MouseMove)
        drag(event);
    // What was set before the pointer was taken away stands: the user has seen it.
    if (event.code == EventCode::MouseCancel ||
        (event.code == EventCode::MouseRelease && event.button == MouseButton::Left))
        release();
    return true;
}

const KeyTable<Slider>& Slider::keys()
{
    static constexpr KeyAction<Slider> kActions[] = {
        {Key::Left, [](Slider& widget, const Event&) { widget.userStep(-1); }},
        {Key::Down, [](Slider& widget, const Event&) { widget.userStep(-1); }},
        {Key::Right, [](Slider& widget, const Event&) { widget.userStep(1); }},
        {Key::Up, [](Slider& widget, const Event&) { widget.userStep(1); }},
        {Key::PageDown, [](Slider& widget, const Event&) { widget.userPage(-1); }},
        {Key::PageUp, [](Slider& widget, const Event&) { widget.userPage(1); }},
        {Key::Home, [](Slider& widget, const Event&) { widget.userSet(widget.min_); }},
        {Key::End, [](Slider& widget, const Event&) { widget.userSet(widget.max_); }},
    };
    static constexpr KeyTable<Slider> kKeys(kActions);
    return kKeys;
}

bool Slider::usesKey(const Event& press) const
{
    if (isDragging() && press.isKeyPress(Key::Escape))
        return true;
    return keys().has(press) || Control::usesKey(press);
}

bool Slider::handleKeyEvent(const Event& event)
{
    if (isDragging() && event.isKeyPress(Key::Escape)) {
        userCancel();
        return true;
    }
    return keys().run(*this, event) || Control::handleKeyEvent(event);
}

void Slider::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Slider;
    description.number = AccessibleNumber{getValue(), min_, max_, getStep()};
    description.value = toWide(formatNumber(getValue()));
}

bool Slider::accessibleSetNumber(double value, int)
{
    userSet(value);
    return true;
}

void Slider::draw(CanvasRenderer& renderer)
{
    const Palette& palette = getPalette();
    drawBox(renderer, controlBox(), palette.field());
    const Kt::Box<double> inner = CanvasRenderer::toDouble(track());
    const double handle = std::round(xOf(getValue()));
    const double start = std::round(xOf(origin()));
    const Colour fill = canInteract() ? palette.accent().mix(palette.field(), 0.35) : palette.border();
    renderer.fillRect({std::min(start, handle), inner.top, std::max(start, handle), inner.bottom}, fill);
    if (origin() > min_ && origin() < max_)
        renderer.line({start + 0.5, inner.top}, {start + 0.5, inner.bottom}, palette.border());
    const Colour grip = ink(isHot() || isDragging() ? palette.accentText() : palette.fieldText());
    renderer.fillRect({handle - 1.0, inner.top, handle + 1.0, inner.bottom}, grip);
}

} // namespace oribund

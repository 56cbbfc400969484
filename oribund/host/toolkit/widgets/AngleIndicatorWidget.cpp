#include "oribund/host/toolkit/widgets/AngleIndicatorWidget.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/KeyTable.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace oribund
{

namespace
{

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kSnap = 15.0;
constexpr double kStep = 1.0;
constexpr double kBigStep = 10.0;

/** So near to the middle a point has no direction to speak of. Pixels. */
constexpr double kDeadRadius = 2.0;

/** The turn from one direction to another, the short way round. */
double turnBetween(double from, double to)
{
    return std::remainder(to - from, 360.0);
}

double stepOf(const Event& press)
{
    return press.has(Event::kShift) ? kBigStep : kStep;
}

} // namespace

AngleIndicatorWidget::AngleIndicatorWidget(const InitArgs& args)
    : SeriesControl(args, 0.0)
{
    setFocusable(true);
    const int side = UifStd::getRowHeight() * 3 / 2;
    applySize(args.width ? args.width : side, args.height ? args.height : side);
}

void AngleIndicatorWidget::setAngle(double degrees, eRedrawFlag redrawFlag)
{
    if (std::isfinite(degrees))
        receive(degrees, redrawFlag);
}

XY<double> AngleIndicatorWidget::centre() const
{
    return {getWidth() / 2.0, getHeight() / 2.0};
}

double AngleIndicatorWidget::radius() const
{
    return std::max(0.0, std::min(getWidth(), getHeight()) / 2.0 - 1.5);
}

double AngleIndicatorWidget::angleAt(const XY<int>& local) const
{
    const XY<double> middle = centre();
    return std::atan2(local.x + 0.5 - middle.x, middle.y - local.y - 0.5) / kDegree;
}

double AngleIndicatorWidget::getIndicatorValue()
{
    return shown();
}

bool AngleIndicatorWidget::setIndicatorValue(double, ChangeKind)
{
    return true; // the dial shows it already
}

double AngleIndicatorWidget::getStoredValue() const
{
    return shown();
}

Colour AngleIndicatorWidget::getIndicatorColour() const
{
    return getPalette().accent().mix(getPalette().windowText(), 0.4);
}

bool AngleIndicatorWidget::handleEdit(const double& degrees, ChangeKind kind)
{
    return setIndicatorValue(degrees, kind);
}

void AngleIndicatorWidget::userPress(double direction)
{
    if (!canInteract() || isDragging())
        return;
    const double from = getIndicatorValue();
    beginSeries(from);
    turned_ = from;
    lastDirection_ = from;
    userDrag(direction);
}

void AngleIndicatorWidget::userDrag(double direction, bool snap)
{
    if (!isDragging() || !canInteract() || !std::isfinite(direction))
        return;
    turned_ += turnBetween(lastDirection_, direction);
    lastDirection_ = direction;
    const double degrees = snap ? std::round(turned_ / kSnap) * kSnap : turned_;
    if (!valEqualsVal(degrees, present()))
        edit(degrees);
}

void AngleIndicatorWidget::userRelease()
{
    endSeries(false);
}

void AngleIndicatorWidget::userCancel()
{
    endSeries(true);
}

void AngleIndicatorWidget::userStep(double degrees)
{
    userSet(getIndicatorValue() + degrees);
}

void AngleIndicatorWidget::userSet(double degrees)
{
    if (canInteract() && !isDragging() && std::isfinite(degrees) && degrees != getIndicatorValue())
        edit(degrees);
}

bool AngleIndicatorWidget::handleMouseEvent(const Event& event)
{
    const XY<double> fromMiddle = XY<double>{event.position.x + 0.5, event.position.y + 0.5} - centre();
    const bool hasDirection = std::hypot(fromMiddle.x, fromMiddle.y) > kDeadRadius;
    if (event.isPress(MouseButton::Left)) {
        if (hasDirection)
            userPress(angleAt(event.position));
        return true;
    }
    if (!isDragging())
        return StandardPanel::handleMouseEvent(event);
    if (event.code == EventCode::MouseMove && hasDirection)
        userDrag(angleAt(event.position), event.has(Event::kShift));
    if (event.code == EventCode::MouseCancel ||
        (event.code == EventCode::MouseRelease && event.button == MouseButton::Left))
        userRelease();
    return true;
}

const KeyTable<AngleIndicatorWidget>& AngleIndicatorWidget::keys()
{
    static constexpr KeyAction<AngleIndicatorWidget> kActions[] = {
        {Key::Left, [](AngleIndicatorWidget& widget, const Event& press) { widget.userStep(-stepOf(press)); }},
        {Key::Down, [](AngleIndicatorWidget& widget, const Event& press) { widget.userStep(-stepOf(press)); }},
        {Key::Right, [](AngleIndicatorWidget& widget, const Event& press) { widget.userStep(stepOf(press)); }},
        {Key::Up, [](AngleIndicatorWidget& widget, const Event& press) { widget.userStep(stepOf(press)); }},
    };
    static constexpr KeyTable<AngleIndicatorWidget> kKeys(kActions);
    return kKeys;
}

bool AngleIndicatorWidget::usesKey(const Event& press) const
{
    if (isDragging() && press.isKeyPress(Key::Escape))
        return true;
    return keys().has(press) || StandardPanel::usesKey(press);
}

bool AngleIndicatorWidget::handleKeyEvent(const Event& event)
{
    if (isDragging() && event.isKeyPress(Key::Escape)) {
        userCancel();
        return true;
    }
    return keys().run(*this, event) || StandardPanel::handleKeyEvent(event);
}

void AngleIndicatorWidget::getTabOrderables(std::vector<TabOrderable*>& stops)
{
    stops.push_back(this);
}

void AngleIndicatorWidget::describe(AccessibleDescription& description) const
{
    constexpr double kFullTurn = 360.0;
    const double angle = getAngle();
    // An angle has no bounds: they are given as far out as it has been turned, in whole turns.
    const double reach = kFullTurn * std::max(1.0, std::ceil(std::abs(angle) / kFullTurn));
    description.role = AccessibleRole::Dial;
    description.number = AccessibleNumber{angle, -reach, reach, kStep};
    description.value = toWide(formatNumber(angle)) + L"\u00b0";
}

bool AngleIndicatorWidget::accessibleSetNumber(double value, int)
{
    userSet(value);
    return true;
}

void AngleIndicatorWidget::draw(CanvasRenderer& renderer)
{
    const Palette& palette = getPalette();
    const bool usable = canInteract();
    const XY<double> middle = centre();
    const double r = radius();
    renderer.circle(middle, r, palette.field(), hasFocus() ? palette.focus() : palette.border());

    const auto pointAt = [&](double degrees, double distance) {
        return middle + XY<double>{std::sin(degrees * kDegree), -std::cos(degrees * kDegree)} * distance;
    };
    for (const double quarter : {0.0, 90.0, 180.0, 270.0})
        renderer.line(pointAt(quarter, r * 0.85), pointAt(quarter, r), palette.border());
    const Colour needle = usable ? getIndicatorColour() : palette.disabledText();
    renderer.line(middle, pointAt(getStoredValue(), r * 0.9), needle, 2.0);
    renderer.circle(middle, 2.0, needle);
}

} // namespace oribund

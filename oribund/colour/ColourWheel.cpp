#include "oribund/colour/ColourWheel.h"

#include "oribund/colour/ColourOffset.h"
#include "oribund/host/base/HueSatLum.h"
#include "oribund/host/base/text/NumberFormat.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/entries/TextBox.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

constexpr double kPuckRadius = 5.0;
constexpr double kFineTurn = 0.1;
constexpr double kStepOfReach = 0.01;

double lengthOfPoint(const XY<double>& point)
{
    return std::hypot(point.x, point.y);
}

/** The direction in which an arrow key goes; none for other keys. */
XY<double> directionOfKey(const Event& press)
{
    if (press.code != EventCode::KeyPress || press.has(Event::kAlt | Event::kMeta))
        return {};
    switch (press.key) {
    case Key::Left:
        return {-1.0, 0.0};
    case Key::Right:
        return {1.0, 0.0};
    case Key::Up:
        return {0.0, 1.0};
    case Key::Down:
        return {0.0, -1.0};
    default:
        return {};
    }
}

/** The colour of the wheel at a place within the unit circle: muted, with a bright rim. */
Colour colourOfWheel(const XY<double>& at, const Colour& ground)
{
    constexpr double kRim = 0.92;
    const double distance = lengthOfPoint(at);
    const Colour hue = colourOfHSV(ColourOffset::hueOf(at), 1.0, 1.0);
    return distance > kRim ? ground.mix(hue, 0.85) : ground.mix(hue, 0.12 + 0.5 * distance);
}

/** Twice as fine as the screen, for those that are. */
Image makeDisc(int side, const Colour& ground)
{
    constexpr int kOversampling = 2;
    const int size = side * kOversampling;
    const double radius = size / 2.0;
    Image::Pixels pixels(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const XY<double> at{(x + 0.5 - radius) / radius, (radius - y - 0.5) / radius};
            const double inside = std::clamp((1.0 - lengthOfPoint(at)) * radius, 0.0, 1.0);
            const auto alpha = static_cast<std::uint32_t>(inside * 255.0 + 0.5);
            pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(size) + static_cast<std::size_t>(x)] =
                alpha << 24 | colourOfWheel(at, ground).toRGB();
        }
    }
    return Image::fromPixels({size, size}, std::move(pixels));
}

} // namespace

ColourWheel::ColourWheel(const InitArgs& args)
    : ValControl(args, ColourData())
{
    const int side = 4 * UifStd::getRowHeight();
    applyNaturalSize(args, {side, side});
    setTooltip(UIString(TextIds::kWheelTip));
}

ColourWheel::~ColourWheel()
{
    if (hasWritten())
        endDataSeries();
}

void ColourWheel::setReach(double reach)
{
    if (!(reach > 0.0) || !std::isfinite(reach) || reach == reach_)
        return;
    reach_ = reach;
    changed(GlobChange::kLook);
}

XY<double> ColourWheel::getPoint() const
{
    return ColourOffset::pointOf(shown());
}

void ColourWheel::setWidgetValue(const ColourData& offset, eRedrawFlag flag)
{
    if (std::all_of(offset.values.begin(), offset.values.end(), [](double v) { return std::isfinite(v); }))
        receive(offset, flag);
}

bool ColourWheel::handleEdit(const ColourData& offset, ChangeKind kind)
{
    const GlobRef<ColourWheel> self(this);
    const bool accepted = requestDataChange(offset, kind);
    if (self && !inSeries())
        refreshFromData();
    return accepted;
}

void ColourWheel::handleSeriesEnd()
{
    endDataSeries();
}

void ColourWheel::handleSeriesCancel(const ColourData& original)
{
    cancelDataSeries(original);
}

// What the user does

XY<double> ColourWheel::withinRim(const XY<double>& point) const
{
    const double length = lengthOfPoint(point);
    return length > reach_ ? point * (reach_ / length) : point;
}

void ColourWheel::userPress()
{
    if (canInteract() && !inSeries())
        beginSeries(shown());
}

void ColourWheel::userDrag(const XY<double>& point)
{
    if (!inSeries() || !canInteract() || !std::isfinite(point.x + point.y))
        return;
    const ColourData offset = ColourOffset::withPoint(shown(), withinRim(point));
    if (offset != shown())
        edit(offset);
}

void ColourWheel::userRelease()
{
    endSeries(false);
}

void ColourWheel::userCancel()
{
    endSeries(true);
}

void ColourWheel::userSetPoint(const XY<double>& point)
{
    if (!canInteract() || inSeries() || !std::isfinite(point.x + point.y))
        return;
    const ColourData offset = ColourOffset::withPoint(shown(), withinRim(point));
    if (offset != shown())
        edit(offset);
}

// Events

XY<double> ColourWheel::middle() const
{
    return {getWidth() / 2.0, getHeight() / 2.0};
}

double ColourWheel::radius() const
{
    return std::max(1.0, std::min(getWidth(), getHeight()) / 2.0 - 1.0);
}

XY<double> ColourWheel::onWheel(const XY<int>& local) const
{
    const double scale = reach_ / radius();
    return {(local.x + 0.5 - middle().x) * scale, (middle().y - local.y - 0.5) * scale};
}

bool ColourWheel::press(const Event& event)
{
    if (!canInteract() || inSeries())
        return true;
    if (event.code == EventCode::MouseDoubleClick) {
        userSetPoint({});
        return true;
    }
    const XY<double> at = onWheel(event.position);
    const bool onPuck = lengthOfPoint(at - withinRim(getPoint())) * radius() <= kPuckRadius * 1.5 * reach_;
    userPress();
    grip_ = {at, onPuck ? getPoint() : at, event.has(Event::kShift)};
    if (!onPuck)
        userDrag(at);
    return true;
}

void ColourWheel::drag(const Event& event)
{
    const XY<double> at = onWheel(event.position);
    const bool fine = event.has(Event::kShift);
    if (fine != grip_.fine)
        grip_ = {at, getPoint(), fine};
    const XY<double> moved = at - grip_.at;
    if (moved != XY<double>() || hasWritten())
        userDrag(grip_.from + moved * (fine ? kFineTurn : 1.0));
}

bool ColourWheel::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left))
        return press(event);
    if (!inSeries())
        return ValControl::handleMouseEvent(event);
    if (event.code == EventCode::MouseMove)
        drag(event);
    if (event.code == EventCode::MouseCancel ||
        (event.code == EventCode::MouseRelease && event.button == MouseButton::Left))
        userRelease();
    return true;
}

bool ColourWheel::usesKey(const Event& press) const
{
    if (inSeries() && press.isKeyPress(Key::Escape))
        return true;
    const bool isHome = press.isPlainKeyPress() && press.key == Key::Home;
    return isHome || directionOfKey(press) != XY<double>() || ValControl::usesKey(press);
}

bool ColourWheel::handleKeyEvent(const Event& event)
{
    if (inSeries() && event.isKeyPress(Key::Escape)) {
        userCancel();
        return true;
    }
    if (event.isPlainKeyPress() && event.key == Key::Home) {
        userSetPoint({});
        return true;
    }
    const XY<double> direction = directionOfKey(event);
    if (direction == XY<double>())
        return ValControl::handleKeyEvent(event);
    userSetPoint(getPoint() + direction * (kStepOfReach * reach_ * TextBox::stepScale(event)));
    return true;
}

// What it is

void ColourWheel::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Group;
    NumberFormat format;
    format.decimals = 3;
    description.value =
        format.textOf(shown()[0]) + L", " + format.textOf(shown()[1]) + L", " + format.textOf(shown()[2]);
}

void ColourWheel::describePart(int part, AccessibleDescription& description) const
{
    const bool isDirection = part == 0;
    const UIString name(isDirection ? TextIds::kWheelDirection : TextIds::kWheelStrength);
    description.name = UIString(TextIds::kPartOf)
                           .withPlaceholder(L"NAME", displayText(accessibleName()))
                           .withPlaceholder(L"PART", displayText(name));
    description.role = isDirection ? AccessibleRole::Dial : AccessibleRole::Slider;
    if (isDirection) {
        description.number = AccessibleNumber{ColourOffset::hueOf(getPoint()), 0.0, 360.0, 1.0};
        description.value = NumberFormat{0, 1.0, L"\u00b0"}.textOf(description.number->value);
    } else {
        description.number = AccessibleNumber{lengthOfPoint(getPoint()) / reach_, 0.0, 1.0, kStepOfReach};
        description.value = NumberFormat::percentage(0).textOf(description.number->value);
    }
}

bool ColourWheel::accessibleSetNumber(double value, int part)
{
    if (part != 0 && part != 1)
        return false;
    const double hue = part == 0 ? value : ColourOffset::hueOf(getPoint());
    const double strength = part == 1 ? value * reach_ : lengthOfPoint(getPoint());
    const double angle = (hue + 90.0) * std::numbers::pi / 180.0;
    userSetPoint(XY<double>{std::cos(angle), std::sin(angle)} * strength);
    return true;
}

const Image& ColourWheel::disc()
{
    const int side = static_cast<int>(2.0 * radius());
    if (disc_.size().x != 2 * side)
        disc_ = makeDisc(side, getPalette().field());
    return disc_;
}

void ColourWheel::draw(CanvasRenderer& renderer)
{
    const Palette& palette = getPalette();
    const XY<double> centre = middle();
    const double r = radius();
    renderer.image({centre.x - r, centre.y - r, centre.x + r, centre.y + r}, disc(), palette.windowText());
    if (!canInteract())
        renderer.circle(centre, r, palette.window().withAlpha(0.6));
    const Colour cross = palette.fieldText().withAlpha(0.25);
    renderer.line({centre.x - r * 0.9, centre.y}, {centre.x + r * 0.9, centre.y}, cross);
    renderer.line({centre.x, centre.y - r * 0.9}, {centre.x, centre.y + r * 0.9}, cross);
    const XY<double> point = withinRim(getPoint()) * (r / reach_);
    const XY<double> puck{centre.x + point.x, centre.y - point.y};
    renderer.line(centre, puck, ink(palette.fieldText()), 1.5);
    const Colour fill = isHot() || inSeries() ? palette.accentText() : palette.fieldText();
    renderer.circle(puck, kPuckRadius, ink(fill), palette.window(), 1.5);
    if (hasFocus())
        renderer.circle(centre, r, CanvasRenderer::kNone, palette.focus());
}

} // namespace oribund

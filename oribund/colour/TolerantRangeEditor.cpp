#include "oribund/colour/TolerantRangeEditor.h"

#include "oribund/colour/RangeEntry.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace oribund
{

namespace
{

TolerantRangeEditor::InitArgs stripInfo(unsigned short width, const Palette& palette, Canvas* canvas)
{
    TolerantRangeEditor::InitArgs args(width, 0, canvas);
    args.palette = palette;
    return args;
}

} // namespace

TolerantRangeEditor::TolerantRangeEditor(unsigned short width, const Palette& palette, Canvas* canvas)
    : TolerantRangeEditor(stripInfo(width, palette, canvas))
{
}

TolerantRangeEditor::TolerantRangeEditor(const InitArgs& args)
    : ValControl(args, makeRange(0.0, 0.0, 1.0, 1.0))
    , format_(NumberFormat::percentage(1))
{
    applyNaturalSize(args, {5 * UifStd::getRowHeight(), calcHeight()});
}

TolerantRangeEditor::~TolerantRangeEditor()
{
    if (hasWritten())
        endDataSeries();
}

int TolerantRangeEditor::calcHeight()
{
    return UifStd::getRowHeight() + UifStd::getWidgetGap();
}

void TolerantRangeEditor::setRangeDefinition(const ColourData& range, eRedrawFlag redrawFlag)
{
    if (isUsableRange(range))
        receive(axis_.ascending(range), redrawFlag);
}

void TolerantRangeEditor::setScale(double scale)
{
    if (!(scale > 0.0) || !std::isfinite(scale) || scale == axis_.span)
        return;
    axis_.span = scale;
    changed(GlobChange::kLook);
}

void TolerantRangeEditor::setCircularValue(double span, double period)
{
    if (!(span > 0.0) || !(period >= span) || !std::isfinite(period))
        return;
    axis_ = {span, period};
    setRangeDefinition(getRanges());
    changed(GlobChange::kLook);
}

void TolerantRangeEditor::setNumbers(const NumberFormat& format, double step)
{
    format_ = format;
    step_ = step;
    changed(GlobChange::kLook);
}

double TolerantRangeEditor::getStep() const
{
    return step_ > 0.0 ? step_ : axis_.span / 100.0;
}

void TolerantRangeEditor::setWidgetValue(const ColourData& range, eRedrawFlag flag)
{
    setRangeDefinition(range, flag);
}

bool TolerantRangeEditor::handleEdit(const ColourData& range, ChangeKind kind)
{
    const GlobRef<TolerantRangeEditor> self(this);
    const bool accepted = requestDataChange(range, kind);
    // Limits of the parameter may have changed it.
    if (self && !inSeries())
        refreshFromData();
    return accepted;
}

void TolerantRangeEditor::handleSeriesEnd()
{
    endDataSeries();
}

void TolerantRangeEditor::handleSeriesCancel(const ColourData& original)
{
    cancelDataSeries(original);
}

// What it says

UIString TolerantRangeEditor::componentName(std::size_t component) const
{
    static constexpr std::array<int, ColourData::size()> kNames{TextIds::kRangeLowerStart, TextIds::kRangeBandStart,
                                                                TextIds::kRangeBandEnd, TextIds::kRangeUpperEnd};
    return UIString(kNames[component]);
}

double TolerantRangeEditor::componentNumber(std::size_t component) const
{
    const double value = getRanges()[component];
    return axis_.isCircular() ? value - std::floor(value / axis_.period) * axis_.period : value;
}

UIString TolerantRangeEditor::tooltip() const
{
    if (hovered_ == RangeGeometry::kNone)
        return ValControl::tooltip();
    const auto component = static_cast<std::size_t>(hovered_);
    return UIString(TextIds::kRangeHandleTip)
        .withPlaceholder(L"NAME", displayText(componentName(component)))
        .withPlaceholder(L"VALUE", componentText(component));
}

void TolerantRangeEditor::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Group;
    description.value = componentText(0);
    for (std::size_t i = 1; i < ColourData::size(); ++i)
        description.value += L", " + componentText(i);
}

double TolerantRangeEditor::numberOf(int stop) const
{
    return stop == kWholeRange ? (getRanges()[1] + getRanges()[2]) / 2.0 : getRanges()[static_cast<std::size_t>(stop)];
}

void TolerantRangeEditor::describePart(int part, AccessibleDescription& description) const
{
    const bool isWhole = part == kWholeRange;
    const UIString name = isWhole ? UIString(TextIds::kRangeWhole) : componentName(static_cast<std::size_t>(part));
    const WString own = displayText(accessibleName());
    description.role = AccessibleRole::Slider;
    description.name =
        own.empty()
            ? name
            : UIString(TextIds::kPartOf).withPlaceholder(L"NAME", own).withPlaceholder(L"PART", displayText(name));
    const double value = numberOf(part);
    const ColourData lowest = axis_.moved(getRanges(), partOf(part), -2.0 * axis_.span);
    const ColourData highest = axis_.moved(getRanges(), partOf(part), 2.0 * axis_.span);
    const std::size_t first = partOf(part).first;
    description.number = AccessibleNumber{value, value + lowest[first] - getRanges()[first],
                                          value + highest[first] - getRanges()[first], getStep()};
    description.value =
        isWhole ? componentText(1) + L" - " + componentText(2) : componentText(static_cast<std::size_t>(part));
    if (!isWhole) {
        const RangeGeometry::Box area = getNobbleArea(static_cast<std::size_t>(part));
        const int side = RangeGeometry::nobbleSize();
        description.box = Kt::Box<int>::fromSize(
            {static_cast<int>(area.left), getHeight() - static_cast<int>(area.top)}, {side, side});
    }
    description.focusable = true;
    description.focused = hasFocus() && current_ == part;
}

int TolerantRangeEditor::accessiblePartAt(const XY<int>& local) const
{
    const auto part = geometry().partAt(bottomUp(local));
    return part ? stopOf(*part) : kNoPart;
}

bool TolerantRangeEditor::accessibleSetNumber(double value, int part)
{
    if (part < 0 || part >= kStops)
        return false;
    if (part == kWholeRange)
        userMove(partOf(part), axis_.nearest(value, numberOf(part)) - numberOf(part));
    else
        userSetComponent(static_cast<std::size_t>(part), value);
    return true;
}

// What it draws

Kt::Box<double> TolerantRangeEditor::stripBox() const
{
    const int half = RangeGeometry::nobbleSize() / 2;
    return CanvasRenderer::toDouble(localBox().inset(half));
}

void TolerantRangeEditor::drawBackgroundInternal(CanvasRenderer& renderer, const Kt::Box<double>& strip)
{
    renderer.fillRect(strip, getPalette().field().mix(getPalette().fieldText(), 0.4));
}

void TolerantRangeEditor::drawGraticule(std::vector<Kt::Box<double>>& marks)
{
    constexpr int kParts = 4;
    const Kt::Box<double> strip = stripBox();
    for (int i = 1; i < kParts; ++i) {
        const double x = std::round(strip.left + strip.width() * i / kParts);
        marks.push_back({x, strip.bottom - 3.0, x + 1.0, strip.bottom});
    }
}

void TolerantRangeEditor::drawBackground(CanvasRenderer& renderer)
{
    drawBackgroundInternal(renderer, stripBox());
    std::vector<Kt::Box<double>> marks;
    drawGraticule(marks);
    for (const Kt::Box<double>& mark : marks)
        renderer.fillRect(mark, getPalette().window().withAlpha(0.6));
}

std::array<double, ColourData::size()> TolerantRangeEditor::handlesX() const
{
    std::array<double, ColourData::size()> x{};
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = geometry().nobbleX(i);
    return x;
}

void TolerantRangeEditor::drawRange(CanvasRenderer& renderer)
{
    const Kt::Box<double> strip = stripBox();
    const auto x = handlesX();
    const Colour dim = getPalette().window().withAlpha(0.72);
    const std::array<XY<double>, 4> below{
        {{strip.left, strip.top}, {x[1], strip.top}, {x[0], strip.bottom}, {strip.left, strip.bottom}}};
    const std::array<XY<double>, 4> above{
        {{strip.right, strip.top}, {x[2], strip.top}, {x[3], strip.bottom}, {strip.right, strip.bottom}}};
    renderer.polygon(below, dim);
    renderer.polygon(above, dim);
    drawSlopes(renderer);
}

void TolerantRangeEditor::drawSlopes(CanvasRenderer& renderer) const
{
    const Kt::Box<double> strip = stripBox();
    const auto x = handlesX();
    // A light line in a dark one is seen on any colour.
    constexpr double kWide = 3.0;
    for (const auto& [colour, width] :
         {std::pair{getPalette().window().withAlpha(0.5), kWide}, std::pair{ink(getPalette().fieldText()), 1.0}}) {
        renderer.line({x[0], strip.bottom}, {x[1], strip.top}, colour, width);
        renderer.line({x[2], strip.top}, {x[3], strip.bottom}, colour, width);
    }
}

void TolerantRangeEditor::drawNobble(CanvasRenderer& renderer, std::size_t handle) const
{
    const Kt::Box<double> box = toTopDown(getNobbleArea(handle), static_cast<double>(getHeight())).inset(0.5);
    const bool pointsDown = handle == 1 || handle == 2;
    const double base = pointsDown ? box.top : box.bottom;
    const double tip = pointsDown ? box.bottom : box.top;
    const double shoulder = (base + tip) / 2.0;
    const std::array<XY<double>, 5> shape{{{box.left, base},
                                           {box.right, base},
                                           {box.right, shoulder},
                                           {(box.left + box.right) / 2.0, tip},
                                           {box.left, shoulder}}};
    const Palette& palette = getPalette();
    const int index = static_cast<int>(handle);
    const bool isCurrent = hasFocus() && (current_ == index || current_ == kWholeRange);
    const bool isHeld = inSeries() && handle >= grip_.part.first && handle <= grip_.part.last;
    Colour fill = ink(palette.fieldText());
    if (isHeld || (canInteract() && hovered_ == index))
        fill = palette.accentText();
    if (isCurrent)
        fill = palette.focus();
    renderer.polygon(shape, fill, palette.window());
}

void TolerantRangeEditor::draw(CanvasRenderer& renderer)
{
    drawBackground(renderer);
    const Kt::Box<double> strip = stripBox();
    if (!canInteract())
        renderer.fillRect(strip, getPalette().window().withAlpha(0.6));
    drawRange(renderer);
    renderer.frameRect(strip, getPalette().border());
    if (hasFocus())
        renderer.frameRect(strip.inset(-1.0), getPalette().focus());
    for (std::size_t i = 0; i < ColourData::size(); ++i)
        drawNobble(renderer, i);
}

} // namespace oribund

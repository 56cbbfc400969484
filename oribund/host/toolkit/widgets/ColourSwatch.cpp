#include "oribund/host/toolkit/widgets/ColourSwatch.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/Skin.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <span>
#include <vector>

namespace oribund
{

namespace
{

/** A chequered ground, against which one sees how opaque a colour is. */
void drawChequers(CanvasRenderer& renderer, const Kt::Box<double>& box)
{
    constexpr double kSide = 4.0;
    const auto count = static_cast<std::size_t>(std::ceil(box.width() / kSide));
    std::vector<Colour> colours;
    for (std::size_t i = 0; i <= count; ++i)
        colours.push_back(Colour::fromRGB(i % 2 == 0 ? 0x999999 : 0x666666));
    const ClipGuard clip(renderer, box);
    std::size_t first = 0;
    for (double y = box.top; y < box.bottom; y += kSide, first = 1 - first) {
        const double right = box.left + static_cast<double>(count) * kSide;
        renderer.fillColumns({box.left, y, right, y + kSide}, std::span(colours).subspan(first, count));
    }
}

} // namespace

ColourSwatch::ColourSwatch(const InitArgs& args)
    : SeriesControl(args, args.colour)
    , hasAlpha_(args.hasAlpha)
{
    applyNaturalSize(args, {2 * UifStd::getControlHeight(), UifStd::getControlHeight()});
}

void ColourSwatch::setColour(const Colour& colour, eRedrawFlag redrawFlag)
{
    receive(colour, redrawFlag);
}

void ColourSwatch::userClick()
{
    if (!canInteract() || isChooserOpen())
        return;
    beginSeries(getColour());
    // Without a skin the chooser counts as open all the same, as a menu does.
    if (Skin* skin = canvas() ? canvas()->skin() : nullptr)
        skin->openColourChooser(*this);
}

void ColourSwatch::userChoose(const Colour& choice)
{
    const Colour colour = hasAlpha_ ? choice : choice.withAlpha(getColour().a);
    if (isChooserOpen() && canInteract() && colour != getColour())
        edit(colour);
}

bool ColourSwatch::handleEdit(const Colour& colour, ChangeKind kind)
{
    edits_.notify({this, colour, kind});
    return true;
}

void ColourSwatch::userAccept()
{
    endSeries(false);
}

void ColourSwatch::userCancel()
{
    endSeries(true);
}

bool ColourSwatch::usesKey(const Event& press) const
{
    return (isChooserOpen() && press.isKeyPress(Key::Escape)) || ClickControl::usesKey(press);
}

bool ColourSwatch::handleKeyEvent(const Event& event)
{
    if (!isChooserOpen() || !event.isKeyPress(Key::Escape))
        return ClickControl::handleKeyEvent(event);
    userCancel();
    return true;
}

void ColourSwatch::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::ColourButton;
    description.action = AccessibleAction::Press;
    const Colour& colour = getColour();
    const long opacity = std::lround(std::clamp(colour.a, 0.0, 1.0) * 255.0);
    std::array<char, 16> text{};
    if (hasAlpha_)
        std::snprintf(text.data(), text.size(), "#%02lx%06x", static_cast<unsigned long>(opacity), colour.toRGB());
    else
        std::snprintf(text.data(), text.size(), "#%06x", colour.toRGB());
    description.value = toWide(text.data());
}

void ColourSwatch::draw(CanvasRenderer& renderer)
{
    const Kt::Box<int> box = controlBox();
    const Kt::Box<double> inner = CanvasRenderer::toDouble(box.inset(2));
    drawBox(renderer, box, getPalette().field());
    const Colour& colour = getColour();
    const double opacity = hasAlpha_ ? std::clamp(colour.a, 0.0, 1.0) : 1.0;
    if (opacity < 1.0)
        drawChequers(renderer, inner);
    const Colour visible{std::clamp(colour.r, 0.0, 1.0), std::clamp(colour.g, 0.0, 1.0), std::clamp(colour.b, 0.0, 1.0),
                         opacity};
    // Greyed, but still the colour that it is.
    renderer.fillRect(inner, canInteract() ? visible : visible.mix(getPalette().window(), 0.6));
}

} // namespace oribund

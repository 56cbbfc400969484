#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"

#include <array>
#include <cstddef>

namespace oribund
{

/** What a colour of a palette is for. */
enum class PaletteRole : std::size_t {
    Window,       ///< the ground of panels
    WindowText,   ///< text on it
    HeadingText,  ///< titles of groups
    DisabledText, ///< text and glyphs of what cannot be used now
    Field,        ///< the ground of entries, sliders and graphs
    FieldText,
    Button,
    ButtonText,
    Border, ///< frames of controls, separators
    Accent, ///< what is on, filled or selected
    AccentText,
    Focus, ///< the ring around the control that has the keyboard
    Count
};

/**
 * The colours of a part of the interface. A cheap value: copies share their colours until one of them is changed, so
 * that the many widgets of a panel have one palette. A panel hands its own on to the widgets in it.
 */
class ORIBUND_API Palette
{
public:
    /** The palette of the default colour scheme. */
    Palette();

    // Without moves: a palette that was moved from would have no colours.
    Palette(const Palette&) = default;
    Palette& operator=(const Palette&) = default;

    const Colour& colour(PaletteRole role) const noexcept { return colours_->of[static_cast<std::size_t>(role)]; }

    void setColour(PaletteRole role, const Colour& colour);

    const Colour& window() const noexcept { return colour(PaletteRole::Window); }

    const Colour& windowText() const noexcept { return colour(PaletteRole::WindowText); }

    const Colour& headingText() const noexcept { return colour(PaletteRole::HeadingText); }

    const Colour& disabledText() const noexcept { return colour(PaletteRole::DisabledText); }

    const Colour& field() const noexcept { return colour(PaletteRole::Field); }

    const Colour& fieldText() const noexcept { return colour(PaletteRole::FieldText); }

    const Colour& button() const noexcept { return colour(PaletteRole::Button); }

    const Colour& buttonText() const noexcept { return colour(PaletteRole::ButtonText); }

    const Colour& border() const noexcept { return colour(PaletteRole::Border); }

    const Colour& accent() const noexcept { return colour(PaletteRole::Accent); }

    const Colour& accentText() const noexcept { return colour(PaletteRole::AccentText); }

    const Colour& focus() const noexcept { return colour(PaletteRole::Focus); }

    bool operator==(const Palette& other) const
    {
        return colours_ == other.colours_ || colours_->of == other.colours_->of;
    }

private:
    struct Colours final : Kt::InternalRefCount {
        std::array<Colour, static_cast<std::size_t>(PaletteRole::Count)> of;
    };

    static const Kt::Ptr<const Colours>& standard();

    Kt::Ptr<const Colours> colours_;
};

/** The contrast of two opaque colours, 1 (none) to 21 (black on white), from their relative luminances. */
ORIBUND_API double contrastRatio(const Colour& a, const Colour& b);

/** Black or white, whichever reads better on `background`. */
ORIBUND_API Colour readableOn(const Colour& background);

} // namespace oribund

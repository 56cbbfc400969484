// Changes the colours of a range: a band of hue, one of saturation and one of luminance, each with soft edges. Colours
// are measured by the hue and saturation of HSV and by luma; they are changed in HSL, and mixed with what was there by
// how far they are in the range.

#include "workbench/plugins/PixelFilter.h"
#include "workbench/plugins/PixelLoop.h"
#include "workbench/plugins/PixelMath.h"
#include "workbench/plugins/SoftRange.h"

#include <array>
#include <cmath>

namespace workbench
{

namespace
{

enum Place : std::size_t {
    kHue = 0,
    kSaturation = 4,
    kLuminance = 8,
    kTurn = 12,
    kStrengthen,
    kLighten,
    kMatte,
    kInvert
};

constexpr std::array<Setting, 17> kSettings = {{
    {"Hue edge begins", -45.0 / 360.0, "In turns; red is 0"},
    {"Hue begins", -20.0 / 360.0, ""},
    {"Hue ends", 20.0 / 360.0, ""},
    {"Hue edge ends", 45.0 / 360.0, "Not below the numbers before it; more than 1 where the range goes past red"},
    {"Saturation edge begins", 0.1, ""},
    {"Saturation begins", 0.3, ""},
    {"Saturation ends", 1.0, ""},
    {"Saturation edge ends", 1.0, ""},
    {"Luminance edge begins", 0.0, ""},
    {"Luminance begins", 0.0, ""},
    {"Luminance ends", 1.0, ""},
    {"Luminance edge ends", 1.0, ""},
    {"Turn hue", 0.5, "From half a turn back to half a turn on; 0.5 leaves it"},
    {"Change saturation", 0.5, "From none to twice as much; 0.5 leaves it"},
    {"Change lightness", 0.5, "From black to white; 0.5 leaves it"},
    {"Show matte", 0.0, "What is changed is white, what is not is black", true},
    {"Invert", 0.0, "Changes what is outside the range", true},
}};

constexpr PluginDescription kDescription{
    "Selective colour", "Changes hue, saturation and lightness of the colours of a range with soft edges", kSettings};

constexpr float kSextants = 6.0F; // hues are from -1 to below 5 in the loop
constexpr float kStep = 1.0F;     // between two bytes: keeps a division by 0 away, and is nothing where there is none

std::span<const double, 4> rangeAt(std::span<const double> settings, Place place)
{
    return settings.subspan(place).first<4>();
}

/** A pixel's colour, and what is known of it. */
struct Measured {
    RGB colour;
    float most;
    float least;
    float chroma;
    float hue;

    IN_LOOP explicit Measured(std::uint32_t pixel)
        : colour(colourOf(pixel))
        , most(std::max(std::max(colour.r, colour.g), colour.b))
        , least(std::min(std::min(colour.r, colour.g), colour.b))
        , chroma(most - least)
    {
        const bool isRed = most == colour.r;
        const bool isGreen = most == colour.g;
        const float beside = isGreen ? colour.b - colour.r : colour.r - colour.g;
        const float from = isGreen ? 2.0F : 4.0F;
        hue = (isRed ? colour.g - colour.b : beside) / std::max(chroma, kStep) + (isRed ? 0.0F : from);
    }
};

/** How much of a colour is changed. */
struct Selection {
    SoftArc hue;
    SoftRange saturation;
    SoftRange luminance;
    float outside; ///< 1 where the range is inverted
    float sign;

    explicit Selection(std::span<const double> settings)
        : hue(rangeAt(settings, kHue), kSextants, -1.0 / kSextants)
        , saturation(rangeAt(settings, kSaturation), 1.0)
        , luminance(rangeAt(settings, kLuminance), kFull)
        , outside(settings[kInvert] >= 0.5 ? 1.0F : 0.0F)
        , sign(1.0F - 2.0F * outside)
    {
    }

    IN_LOOP float at(const Measured& pixel) const
    {
        const float ofHue = pixel.chroma > 0.0F ? hue.at(pixel.hue) : hue.anywhere();
        const float ofSaturation = saturation.at(pixel.chroma / std::max(pixel.most, kStep));
        return outside + sign * ofHue * ofSaturation * luminance.at(lumaOf(pixel.colour));
    }
};

/** What a colour is changed into, in HSL. */
struct Change {
    float turn;       ///< in sextants, from 1 to below 7: added to a hue, it is not below 0
    float strengthen; ///< factor of the saturation
    float keep;       ///< part of the lightness that stays
    float lift;       ///< what is added to it

    explicit Change(std::span<const double> settings)
    {
        const double turns = settings[kTurn] - 0.5;
        const double lighten = std::clamp(2.0 * settings[kLighten] - 1.0, -1.0, 1.0);
        turn = static_cast<float>((turns - std::floor(turns)) * kSextants);
        turn += turn < 1.0F ? kSextants : 0.0F;
        strengthen = static_cast<float>(2.0 * std::clamp(settings[kStrengthen], 0.0, 1.0));
        keep = static_cast<float>(1.0 - std::abs(lighten));
        lift = static_cast<float>(std::max(lighten, 0.0)) * kFull;
    }

    IN_LOOP RGB of(const Measured& pixel) const
    {
        const float sum = pixel.most + pixel.least; // twice the lightness
        const float strong = pixel.chroma / std::max(kFull - std::abs(sum - kFull), kStep) * strengthen;
        const float newSum = sum * keep + 2.0F * lift;
        const float chroma = std::min(strong, 1.0F) * (kFull - std::abs(newSum - kFull));
        const float base = 0.5F * (newSum - chroma);
        float hue = pixel.hue + turn;
        hue -= hue >= kSextants ? kSextants : 0.0F;
        return {base + chroma * clampTo(std::abs(hue - 3.0F) - 1.0F, 1.0F),
                base + chroma * clampTo(2.0F - std::abs(hue - 2.0F), 1.0F),
                base + chroma * clampTo(2.0F - std::abs(hue - 4.0F), 1.0F)};
    }
};

struct Filter {
    Selection selection;
    Change change;

    IN_LOOP std::uint32_t of(std::uint32_t pixel) const
    {
        const Measured from(pixel);
        const float share = selection.at(from);
        const RGB to = change.of(from);
        return pixelOf({from.colour.r + (to.r - from.colour.r) * share, from.colour.g + (to.g - from.colour.g) * share,
                        from.colour.b + (to.b - from.colour.b) * share},
                       pixel);
    }
};

struct Matte {
    Selection selection;

    IN_LOOP std::uint32_t of(std::uint32_t pixel) const
    {
        const float shown = selection.at(Measured(pixel)) * kFull;
        return pixelOf({shown, shown, shown}, pixel);
    }
};

VECTOR_CODE void changeAll(const Filter& filter, Pixels from, std::span<std::uint32_t> to)
{
    changeBlocks(filter, from, to);
}

VECTOR_CODE void showMatte(const Matte& matte, Pixels from, std::span<std::uint32_t> to)
{
    changeBlocks(matte, from, to);
}

class SelectiveColour final : public PixelFilter
{
public:
    explicit SelectiveColour(std::span<const double> settings)
        : filter_{Selection(settings), Change(settings)}
        , isMatte_(settings[kMatte] >= 0.5)
    {
    }

    void change(Pixels from, std::span<std::uint32_t> to) const override
    {
        if (isMatte_)
            showMatte({filter_.selection}, from, to);
        else
            changeAll(filter_, from, to);
    }

private:
    Filter filter_;
    bool isMatte_;
};

} // namespace

const PluginDescription& pluginDescription()
{
    return kDescription;
}

std::shared_ptr<const PixelFilter> makePixelFilter(std::span<const double> settings)
{
    return std::make_shared<SelectiveColour>(settings);
}

} // namespace workbench

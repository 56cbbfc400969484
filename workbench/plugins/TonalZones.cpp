// Changes shadows, midtones and highlights apart. Four numbers on the axis of luma say where the zones meet: the
// shadows end where the midtones begin, and fade into them, and so do the midtones into the highlights.

#include "workbench/plugins/PixelFilter.h"
#include "workbench/plugins/PixelLoop.h"
#include "workbench/plugins/PixelMath.h"
#include "workbench/plugins/SoftRange.h"

#include <array>

namespace workbench
{

namespace
{

enum Place : std::size_t { kExtents = 0, kLevels = 4, kSaturations = 7 };

constexpr std::array<Setting, 10> kSettings = {{
    {"Shadows end", 0.15, "Where the midtones begin to come in"},
    {"Midtones begin", 0.35, ""},
    {"Midtones end", 0.65, ""},
    {"Highlights begin", 0.85, "Where the midtones are gone"},
    {"Level of shadows", 0.5, "From darker to lighter; 0.5 leaves them"},
    {"Level of midtones", 0.5, ""},
    {"Level of highlights", 0.5, ""},
    {"Saturation of shadows", 0.5, "From none to twice as much; 0.5 leaves it"},
    {"Saturation of midtones", 0.5, ""},
    {"Saturation of highlights", 0.5, ""},
}};

constexpr PluginDescription kDescription{"Tonal zones",
                                         "Changes level and saturation of shadows, midtones and highlights", kSettings};

/** A number that has one value in each zone. Where zones fade into each other, so do the values. */
struct ZoneValue {
    float shadows;
    float toMiddle;
    float toHighlights;

    /** The three settings are from 0 to 1, and stand for -1 to 1. */
    explicit ZoneValue(std::span<const double> settings)
    {
        const auto value = [&](std::size_t i) { return 2.0 * std::clamp(settings[i], 0.0, 1.0) - 1.0; };
        shadows = static_cast<float>(value(0));
        toMiddle = static_cast<float>(value(1) - value(0));
        toHighlights = static_cast<float>(value(2) - value(1));
    }

    IN_LOOP float at(float middle, float highlights) const
    {
        return shadows + toMiddle * middle + toHighlights * highlights;
    }
};

struct Filter {
    SoftStep middle;
    SoftStep highlights;
    ZoneValue level;
    ZoneValue saturation;

    IN_LOOP std::uint32_t of(std::uint32_t pixel) const
    {
        const RGB from = colourOf(pixel);
        const float luma = lumaOf(from);
        const float inMiddle = middle.at(luma);
        const float inHighlights = highlights.at(luma);
        const float strengthen = 1.0F + saturation.at(inMiddle, inHighlights);
        const float lighten = level.at(inMiddle, inHighlights);
        const auto changed = [&](float component) __attribute__((always_inline))
        {
            const float strong = clampTo(luma + (component - luma) * strengthen, kFull);
            // A bow between black and white, which stay where they are: nothing is clipped.
            return strong + lighten * strong * (1.0F - strong * (1.0F / kFull));
        };
        return pixelOf({changed(from.r), changed(from.g), changed(from.b)}, pixel);
    }
};

VECTOR_CODE void changeAll(const Filter& filter, Pixels from, std::span<std::uint32_t> to)
{
    changeBlocks(filter, from, to);
}

class TonalZones final : public PixelFilter
{
public:
    explicit TonalZones(std::span<const double> settings)
        : filter_{{settings[kExtents], settings[kExtents + 1], kFull},
                  {settings[kExtents + 2], settings[kExtents + 3], kFull},
                  ZoneValue(settings.subspan(kLevels)),
                  ZoneValue(settings.subspan(kSaturations))}
    {
    }

    void change(Pixels from, std::span<std::uint32_t> to) const override { changeAll(filter_, from, to); }

private:
    Filter filter_;
};

} // namespace

const PluginDescription& pluginDescription()
{
    return kDescription;
}

std::shared_ptr<const PixelFilter> makePixelFilter(std::span<const double> settings)
{
    return std::make_shared<TonalZones>(settings);
}

} // namespace workbench

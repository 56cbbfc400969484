#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/TextMeasurer.h"
#include "oribund/host/canvas/UifStd.h"

#include <gtest/gtest.h>

namespace oribund
{
namespace
{

class TenAChar : public TextMeasurer
{
public:
    int width(std::wstring_view text, const Glib::FontDesc&) const override
    {
        return static_cast<int>(text.size()) * 10;
    }

    int lineHeight(const Glib::FontDesc&) const override { return 11; }
};

TEST(Contrast, AgreesWithPublishedPairs)
{
    const Colour white = Colour::fromRGB(0xffffff);
    EXPECT_NEAR(contrastRatio(white, Colour::fromRGB(0x000000)), 21.0, 1e-9);
    EXPECT_NEAR(contrastRatio(Colour::fromRGB(0x767676), white), 4.54, 0.005);
    EXPECT_NEAR(contrastRatio(white, Colour::fromRGB(0xff0000)), 4.0, 0.005);
}

TEST(Contrast, ReadableTextIsReadableOnAnything)
{
    for (const std::uint32_t rgb : {0x000000u, 0xffffffu, 0xff0000u, 0x00ff00u, 0x0000ffu, 0x767676u, 0xffff00u})
        EXPECT_GE(contrastRatio(readableOn(Colour::fromRGB(rgb)), Colour::fromRGB(rgb)), 4.5) << std::hex << rgb;
}

TEST(ColourScheme, DarkTextsCanBeRead)
{
    const ColourScheme dark = ColourScheme::dark();
    EXPECT_GE(contrastRatio(dark.windowText(), dark.window()), 4.5);
    EXPECT_GE(contrastRatio(dark.headingText(), dark.window()), 4.5);
    EXPECT_GE(contrastRatio(dark.fieldText(), dark.field()), 4.5);
    EXPECT_GE(contrastRatio(dark.buttonText(), dark.button()), 4.5);
    EXPECT_GE(contrastRatio(dark.accentText(), dark.accent()), 4.5);
    EXPECT_GE(contrastRatio(dark.focus(), dark.window()), 3.0);
    EXPECT_GE(contrastRatio(dark.disabledText(), dark.window()), 3.0);
    EXPECT_LT(contrastRatio(dark.disabledText(), dark.window()), contrastRatio(dark.windowText(), dark.window()) / 2)
        << "greyed text must look greyed";
}

TEST(Palette, CopiesAreOneUntilOneIsChanged)
{
    const Palette one;
    Palette other = one;
    EXPECT_EQ(&one.window(), &other.window());
    other.setColour(PaletteRole::Window, Colour::fromRGB(0xffffff));
    EXPECT_NE(one, other);
    EXPECT_EQ(one, Palette());
}

TEST(TableTextMeasurer, WidthsBehaveLikeAFonts)
{
    const TableTextMeasurer table;
    const Glib::FontDesc font{String(), 20};
    const auto width = [&](std::wstring_view text) { return table.width(text, font); };

    EXPECT_EQ(width(L""), 0);
    EXPECT_EQ(width(L"1111"), width(L"9047")) << "a changing number keeps its width";
    EXPECT_LT(width(L"illi"), width(L"nnnn"));
    EXPECT_LT(width(L"nnnn"), width(L"WWWW"));
    EXPECT_EQ(width(L"e\u0301"), width(L"e")) << "an accent on the letter before takes no room";
    EXPECT_EQ(width(L"\u8272\u76f8"), 40) << "ideographs are square";
    EXPECT_EQ(width(L"\n\t"), 0);

    EXPECT_NEAR(table.width(L"Saturation", {String(), 40}), 2 * width(L"Saturation"), 1);
    EXPECT_GT(table.width(L"Saturation", {String(), 20, true}), width(L"Saturation"));
    EXPECT_GE(table.lineHeight(font), 20);
    EXPECT_EQ(table.width(L"abc", {}), table.width(L"abc", UifStd::getDefaultFont())) << "size 0 is the default size";
}

TEST(UifStd, MeasuresWithWhatTheHostGives)
{
    const int builtIn = UifStd::measure(L"abcd");
    const TenAChar tenAChar;
    UifStd::instance().setTextMeasurer(&tenAChar);
    EXPECT_EQ(UifStd::measure(L"abcd"), 40);
    EXPECT_EQ(UifStd::lineHeight({}), 11);
    UifStd::instance().setTextMeasurer(nullptr);
    EXPECT_EQ(UifStd::measure(L"abcd"), builtIn);
}

TEST(UifStd, MetricsFollowTheFontSize)
{
    using Metrics = UifStd::Metrics;
    const Metrics standard;
    EXPECT_EQ(Metrics::forFontSize(2 * standard.fontSize).rowHeight, 2 * standard.rowHeight);
    EXPECT_EQ(Metrics::forFontSize(-3).fontSize, 8);
    for (int size = 8; size < 60; ++size) {
        const Metrics m = Metrics::forFontSize(size);
        EXPECT_GT(m.rowHeight, m.fontSize * 5 / 4) << "a line of text must fit into a row at size " << size;
        EXPECT_GE(m.rowHeight, m.controlHeight);
        EXPECT_GE(m.rowGap, 1);
    }
}

} // namespace
} // namespace oribund

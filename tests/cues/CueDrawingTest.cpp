#include "oribund/cues/CueDrawing.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/canvas/UifStd.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace oribund
{
namespace
{

constexpr Colour kRed = Colour::fromRGB(0xff0000);
constexpr Colour kBlue = Colour::fromRGB(0x0000ff);

/** "y:left+width" of each rectangle. */
std::vector<std::string> rows(const RecordingRenderer& renderer)
{
    std::vector<std::string> all;
    for (const Primitive& p : renderer.primitives()) {
        EXPECT_EQ(p.kind, Primitive::Kind::Rect);
        EXPECT_EQ(p.box.height(), 1.0);
        all.emplace_back(std::to_string(roundHalfAway(p.box.top)) + ":" + std::to_string(roundHalfAway(p.box.left)) +
                         "+" + std::to_string(roundHalfAway(p.box.width())));
    }
    return all;
}

/** What stands on the screen afterwards: one letter a pixel, 'R', 'B' or '#' for any other colour. */
std::map<int, std::string> picture(const RecordingRenderer& renderer, int left, int right)
{
    std::map<int, std::string> lines;
    for (const Primitive& p : renderer.primitives()) {
        std::string& line = lines[roundHalfAway(p.box.top)];
        line.resize(static_cast<std::size_t>(right - left), '.');
        const char letter = p.colour == kRed ? 'R' : p.colour == kBlue ? 'B' : '#';
        for (int x = roundHalfAway(p.box.left); x < roundHalfAway(p.box.right); ++x)
            line.at(static_cast<std::size_t>(x - left)) = letter;
    }
    return lines;
}

using Lines = std::map<int, std::string>;
using Rows = std::vector<std::string>;

class CueDrawing : public testing::Test
{
protected:
    CueDrawing()
        : before_(UifStd::instance().metrics())
    {
        UifStd::Metrics metrics = before_;
        metrics.widgetGap = 6;
        metrics.rowHeight = 24;
        metrics.indentWidth = 2;
        UifStd::instance().setMetrics(metrics);
    }

    ~CueDrawing() override { UifStd::instance().setMetrics(before_); }

    RecordingRenderer renderer;

private:
    UifStd::Metrics before_;
};

TEST_F(CueDrawing, SizesDeriveFromTheStandardMetrics)
{
    const UifStd::Metrics standard;
    EXPECT_LT(standard.indentWidth, standard.widgetGap) << "else marks could not be set in by it";
    UifStd::Metrics metrics = UifStd::instance().metrics();
    metrics.widgetGap = 9;
    metrics.rowHeight = 35;
    UifStd::instance().setMetrics(metrics);
    EXPECT_EQ(getDefaultDiamondSize(), (XY<int>{11, 27}));
    EXPECT_EQ(getCueDimensions(eCueSizeSmall), (XY<int>{10, 5}));
    EXPECT_EQ(getCueDimensions(eCueSizeNormal), (XY<int>{10, 7}));
    EXPECT_EQ(getCueDimensions(eCueSizeLarge), (XY<int>{16, 18}));
}

TEST_F(CueDrawing, AnIndentDeeperThanAGapLeavesEveryMarkVisible)
{
    UifStd::Metrics metrics = UifStd::instance().metrics();
    metrics.indentWidth = 12;
    UifStd::instance().setMetrics(metrics);
    EXPECT_EQ(getCueDimensions(eCueSizeNormal), (XY<int>{6, 4}));
    drawDiamondWithTopHighlight(renderer, {20, 0}, kRed, kRed);
    EXPECT_EQ(picture(renderer, 14, 26)[8].find('R'), 4U);
}

TEST_F(CueDrawing, AKeyframeIsADiamondWithABorderOfOnePixel)
{
    drawKeyFrame(renderer, {10, 20}, kRed, kBlue);
    EXPECT_EQ(picture(renderer, 3, 18), (Lines{{14, ".......B......."},
                                               {15, "......BRB......"},
                                               {16, ".....BRRRB....."},
                                               {17, "....BRRRRRB...."},
                                               {18, "...BRRRRRRRB..."},
                                               {19, "..BRRRRRRRRRB.."},
                                               {20, ".BRRRRRRRRRRRB."},
                                               {21, "..BRRRRRRRRRB.."},
                                               {22, "...BRRRRRRRB..."},
                                               {23, "....BRRRRRB...."},
                                               {24, ".....BRRRB....."},
                                               {25, "......BRB......"},
                                               {26, ".......B......."}}));
}

TEST_F(CueDrawing, ADiamondOfEvenHeightStaysWithinItsHeightAndDrawsNoRowTwice)
{
    drawDiamond(renderer, {10, 0}, {8, 6}, kRed, kBlue);
    EXPECT_EQ(rows(renderer), (Rows{"0:9+2", "5:9+2", "1:8+4", "4:8+4", "2:7+6", "3:6+9"}));
    for (const Primitive& p : renderer.primitives())
        EXPECT_EQ(p.colour, kRed.mix(kBlue, p.box.top / 5.0));
}

TEST_F(CueDrawing, ADiamondWithoutRoomIsALineOrNothing)
{
    drawDiamond(renderer, {10, 3}, {4, 1}, kRed, kBlue);
    EXPECT_EQ(rows(renderer), (Rows{"3:8+5"}));
    EXPECT_EQ(renderer.primitives().front().colour, kRed);
    renderer.clear();
    drawDiamond(renderer, {10, 0}, {-1, 5}, kRed, kBlue);
    drawDiamond(renderer, {10, 0}, {5, 0}, kRed, kBlue);
    EXPECT_TRUE(renderer.primitives().empty());
}

TEST_F(CueDrawing, ASmallMarkIsAPennantOfFourRowsWithDarkEdges)
{
    drawSmallMark(renderer, {10, 4}, kRed);
    EXPECT_EQ(picture(renderer, 7, 14), (Lines{{4, ".#RRR#."}, {5, ".#RRR#."}, {6, "..#R#.."}, {7, "...#..."}}));
    EXPECT_EQ(renderer.primitives().front().colour, kRed.scaled(0.3));
}

TEST_F(CueDrawing, MarksFarAwayAreDrawnFarAway)
{
    constexpr int kFar = std::numeric_limits<int>::max();
    for (const int x : {kFar, -kFar}) {
        drawDiamondWithTopHighlight(renderer, {x * 1e300, x * 1.0}, kRed, kBlue);
        drawKeyFrame(renderer, {x, x}, kRed, kBlue);
        drawSmallMark(renderer, {x, x}, kRed);
        drawCue(renderer, {x, x}, kRed, kBlue, eCueSizeLarge);
    }
    for (const Primitive& p : renderer.primitives())
        EXPECT_GT(std::abs(p.box.left), 1e8);
}

TEST_F(CueDrawing, ACueFillsItsDimensionsAndIsOutlinedWithoutAGap)
{
    drawCue(renderer, {10, 0}, kRed, kBlue, eCueSizeLarge);
    const Lines large = picture(renderer, 4, 16);
    ASSERT_EQ(large.size(), 14U);
    EXPECT_EQ(large.at(0), "BBBBBBBBBBBB");
    EXPECT_EQ(large.at(6), "BRRRRRRRRRRB");
    EXPECT_EQ(large.at(13), ".....BB.....");
    EXPECT_EQ(large.begin()->first, 0);

    for (const eCueSize size : {eCueSizeSmall, eCueSizeNormal, eCueSizeLarge}) {
        renderer.clear();
        drawCue(renderer, {10, 0}, kRed, kBlue, size);
        const Lines lines = picture(renderer, 0, 20);
        const auto at = [&](int x, int y) {
            return lines.count(y) ? lines.at(y).at(static_cast<std::size_t>(x)) : '.';
        };
        for (int y = 0; y < 14; ++y) {
            for (int x = 1; x < 19; ++x) {
                if (at(x, y) != 'R')
                    continue;
                EXPECT_TRUE(at(x - 1, y) != '.' && at(x + 1, y) != '.' && at(x, y - 1) != '.' && at(x, y + 1) != '.')
                    << "the fill shows through at " << x << "," << y << " in size " << size;
            }
        }
    }
}

} // namespace
} // namespace oribund

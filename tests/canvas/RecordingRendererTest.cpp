#include "oribund/host/canvas/RecordingRenderer.h"

#include <array>
#include <gtest/gtest.h>

namespace oribund
{
namespace
{

const Colour kRed = Colour::fromRGB(0xff0000);
const Colour kBlue = Colour::fromRGB(0x0000ff);

TEST(RecordingRenderer, PrintsWhatWasDrawn)
{
    RecordingRenderer r;
    r.fillRect({1, 2, 11, 6}, kRed);
    r.line({0.5, 0.5}, {9.5, 0.5}, kBlue.withAlpha(0.5), 2.0);
    const std::array<XY<double>, 3> corners{{{0, 0}, {4, 0}, {2, 3}}};
    r.polygon(corners, kRed, kBlue, 1.0);
    r.circle({5, 5}, 2.5, kRed, CanvasRenderer::kNone, 1.0);
    r.text({0, 0, 50, 20}, L"Größe", {String("Sans"), 13, true}, kRed, TextAlign::Centre);
    r.image({0, 0, 8, 8}, Image::icon("settings"), kBlue);
    EXPECT_EQ(r.toString(), "Rect [1,2 10x4] #ff0000\n"
                            "Line 0.5,0.5 9.5,0.5 #0000ff/0.5 width 2\n"
                            "Polygon 0,0 4,0 2,3 #ff0000 outline #0000ff width 1\n"
                            "Circle [2.5,2.5 5x5] #ff0000\n"
                            "Text [0,0 50x20] \"Größe\" Sans 13 bold centre #ff0000\n"
                            "Image [0,0 8x8] icon settings #0000ff\n");
}

TEST(RecordingRenderer, WhatCannotBeSeenIsNotRecorded)
{
    RecordingRenderer r;
    r.fillRect({0, 0, 5, 5}, CanvasRenderer::kNone);
    r.fillRect({5, 0, 5, 5}, kRed);
    r.text({0, 0, 5, 5}, L"", {}, kRed, TextAlign::Left);
    r.line({0, 0}, {5, 5}, kRed, 0.0);
    r.circle({0, 0}, 0.0, kRed, kBlue, 1.0);
    r.image({0, 0, 5, 5}, Image(), kRed);
    const std::array<XY<double>, 1> point{{{1, 1}}};
    r.polyline(point, kRed, 1.0);
    r.polygon(point, kRed, kRed, 1.0);
    EXPECT_EQ(r.toString(), "");
}

TEST(RecordingRenderer, OriginsAndClipsNest)
{
    RecordingRenderer r;
    {
        const OriginGuard outer(r, {10, 10});
        const ClipGuard outerClip(r, {0, 0, 20, 20});
        const OriginGuard inner(r, {5, 5});
        const ClipGuard innerClip(r, {0, 0, 100, 10});
        r.fillRect({0, 0, 2, 2}, kRed);
        r.fillRect({0, 0, 30, 30}, kBlue);
        r.fillRect({0, 11, 5, 15}, kRed);
        r.line({0, 10}, {5, 10}, kRed, 1.0);
        EXPECT_EQ(r.depth(), 4u);
        EXPECT_EQ(r.clipBox(), (Kt::Box<double>{0, 0, 15, 10}));
    }
    r.fillRect({0, 0, 1, 1}, kRed);
    EXPECT_EQ(r.depth(), 0u);
    EXPECT_EQ(r.toString(), "Rect [15,15 2x2] #ff0000\n"
                            "Rect [15,15 30x30] #0000ff clip [15,15 15x10]\n"
                            "Line 15,25 20,25 #ff0000 width 1 clip [15,15 15x10]\n"
                            "Rect [0,0 1x1] #ff0000\n");
}

TEST(RecordingRenderer, AnEmptyClipHidesEverything)
{
    RecordingRenderer r({0, 0, 20, 20});
    r.fillRect({21, 0, 30, 20}, kRed);
    EXPECT_EQ(r.clipBox(), (Kt::Box<double>{0, 0, 20, 20})) << "what is exposed";
    r.popClip();
    r.popOrigin(); // one too many is harmless
    const ClipGuard left(r, {0, 0, 5, 5});
    const ClipGuard right(r, {10, 10, 15, 15});
    r.fillRect({0, 0, 20, 20}, kRed);
    EXPECT_TRUE(r.primitives().empty());
}

TEST(CanvasRenderer, ColumnsShareTheBoxAndNeighboursOfOneColourAreOne)
{
    RecordingRenderer r;
    const std::array<Colour, 4> columns{kRed, kRed, kBlue, CanvasRenderer::kNone};
    r.fillColumns({10, 0, 18, 5}, columns);
    r.fillColumns({0, 0, 5, 5}, {});
    EXPECT_EQ(r.toString(), "Rect [10,0 4x5] #ff0000\nRect [14,0 2x5] #0000ff\n");
}

TEST(CanvasRenderer, AFrameCoversEachOfItsPixelsOnce)
{
    for (const Kt::Box<double> box :
         {Kt::Box<double>{0, 0, 10, 6}, Kt::Box<double>{0, 0, 3, 3}, Kt::Box<double>{0, 0, 1, 9}}) {
        RecordingRenderer r;
        r.frameRect(box, kRed.withAlpha(0.5), 2.0);
        double area = 0.0;
        Kt::Box<double> around;
        for (const Primitive& p : r.primitives()) {
            area += p.box.width() * p.box.height();
            around = around.unite(p.box);
        }
        const double w = std::min({2.0, box.width() / 2, box.height() / 2});
        EXPECT_DOUBLE_EQ(area, box.width() * box.height() - (box.width() - 2 * w) * (box.height() - 2 * w));
        EXPECT_EQ(around, box);
    }
}

} // namespace
} // namespace oribund

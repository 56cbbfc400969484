#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/Border.h"
#include "oribund/host/canvas/CanvasClient.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/canvas/RecordingRenderer.h"

#include <gtest/gtest.h>

namespace oribund
{
namespace
{

class OneRectangle : public CanvasClient
{
public:
    bool handleEvent(const Event&) override { return true; }

    void drawContents(CanvasRenderer& renderer) override { renderer.fillRect({0, 0, 5, 5}, Colour::fromRGB(0xff0000)); }

    void regionChanged(const Kt::Box<int>&) override {}

    Glob* focusOwner() const override { return nullptr; }
};

TEST(Canvas, TheDirtyRegionGrowsWithinTheCanvasAndEndsWithADraw)
{
    using Boxes = std::vector<Kt::Box<int>>;
    Canvas canvas({100, 50});
    EXPECT_TRUE(canvas.dirtyRegion().empty());

    canvas.invalidate({10, 10, 20, 20});
    canvas.repainted({90, 40, 130, 70});
    EXPECT_EQ(canvas.repaintCount(), 1u) << "an invalid region is no repaint of a glob";
    canvas.invalidate({200, 200, 210, 210});
    EXPECT_EQ(canvas.dirtyRegion().boxes(), (Boxes{{10, 10, 20, 20}, {90, 40, 100, 50}})) << "within the canvas";
    canvas.invalidate({12, 12, 15, 15});
    canvas.invalidate({20, 10, 30, 20});
    EXPECT_EQ(canvas.dirtyRegion().boxes(), (Boxes{{90, 40, 100, 50}, {10, 10, 30, 20}})) << "neighbours are one";
    for (int x = 0; x < 100; x += 3)
        canvas.invalidate({x, 0, x + 1, 1});
    EXPECT_LE(canvas.dirtyRegion().boxes().size(), 8u);
    EXPECT_EQ(canvas.dirtyRegion().bounds(), (Kt::Box<int>{0, 0, 100, 50}));

    canvas.setClient(std::make_unique<OneRectangle>());
    RecordingRenderer renderer;
    canvas.draw(renderer);
    EXPECT_EQ(renderer.primitives().size(), 1u);
    EXPECT_TRUE(canvas.dirtyRegion().empty());
    EXPECT_EQ(canvas.repaintCount(), 1u);
}

TEST(Image, PixelsMustFitTheSize)
{
    EXPECT_FALSE(Image::fromPixels({2, 2}, Image::Pixels(4)).empty());
    EXPECT_TRUE(Image::fromPixels({2, 2}, Image::Pixels(3)).empty());
    EXPECT_TRUE(Image::fromPixels({-2, -2}, Image::Pixels(4)).empty());
    EXPECT_EQ(Image::icon("settings"), Image::icon("settings"));
    EXPECT_NE(Image::icon("settings"), Image::icon("delete"));
}

TEST(Border, InsetsAreThoseOfItsSides)
{
    const Border all(Border::Line, 6, 15);
    EXPECT_EQ(all.left, 6);
    EXPECT_TRUE(all.isVisible());
    const Border under(Border::Line, 3, Border::kBottom);
    EXPECT_EQ(under.top, 0);
    EXPECT_EQ(under.bottom, 3);
    EXPECT_FALSE(Border(Border::None, 6, 15).isVisible());
}

} // namespace
} // namespace oribund

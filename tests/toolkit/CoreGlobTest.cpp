#include "CoreProbe.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

using Boxes = std::vector<Kt::Box<int>>;

/** A glob in another on an open panel. */
class Globs : public testing::Test
{
protected:
    const Boxes& dirty() const { return scene.canvas.dirtyRegion().boxes(); }

    void drawAll()
    {
        RecordingRenderer renderer;
        scene.canvas.draw(renderer);
    }

    Scene scene;
    Probe* outer = scene.add("outer", {10, 20, 100, 90});
    Probe* inner = scene.add("inner", {5, 6, 50, 50}, outer);
};

TEST_F(Globs, AreRepaintedOnceWhenRedrawsAreNoLongerHeldOff)
{
    Probe* gone = scene.add("gone", {100, 0, 120, 20});
    const unsigned before = outer->repaintCount();
    const unsigned beforeInner = inner->repaintCount();
    const unsigned beforeAll = scene.canvas.repaintCount();
    {
        const RedrawHold hold;
        gone->redraw();
        for (int i = 0; i < 5; ++i) {
            const RedrawHold within;
            outer->redraw();
            inner->setEnabled(i % 2 == 0);
            inner->redraw();
        }
        delete gone;
        EXPECT_EQ(scene.canvas.repaintCount(), beforeAll) << "the inner hold must not let anything through";
    }
    EXPECT_EQ(outer->repaintCount(), before + 1);
    EXPECT_EQ(inner->repaintCount(), beforeInner + 1);
    EXPECT_EQ(scene.canvas.repaintCount(), beforeAll + 2);
    Drawable::enableRedraws();
    EXPECT_TRUE(Drawable::redrawsEnabled());
    const RedrawHold hold;
    EXPECT_FALSE(Drawable::redrawsEnabled()) << "an enable too many must not be remembered";
}

TEST_F(Globs, AreRepaintedOnlyWhereTheyAreShownAndForWhatIsToBeSeen)
{
    const unsigned before = outer->repaintCount();
    outer->setEnabled(false, eRedrawFlag::No);
    EXPECT_EQ(outer->repaintCount(), before);
    outer->setTooltip(L"tip");
    EXPECT_EQ(outer->repaintCount(), before + 1) << "a tooltip alone repaints nothing, what was deferred does";
    outer->setTooltip(L"another tip");
    outer->setEnabled(false);
    EXPECT_EQ(outer->repaintCount(), before + 1) << "an equal value changes nothing";
    scene.panel->setVisible(false);
    const unsigned hidden = scene.canvas.repaintCount();
    outer->redraw();
    scene.panel->setVisible(true);
    scene.panel->close();
    outer->redraw();
    EXPECT_EQ(outer->repaintCount(), before + 1);
    EXPECT_GE(scene.canvas.repaintCount(), hidden);
}

TEST_F(Globs, InvalidateTheirOldPlaceTheirNewOneAndTheirParts)
{
    drawAll();
    outer->setPosition({15, 20});
    EXPECT_EQ(scene.canvas.dirtyRegion().bounds(), (Kt::Box<int>{10, 20, 105, 90}));
    drawAll();
    const unsigned before = outer->repaintCount();
    {
        const RedrawHold hold;
        outer->redraw({0, 0, 2, 50});
        outer->redraw({80, 0, 120, 50});
        outer->redraw({200, 0, 210, 50});
    }
    EXPECT_EQ(dirty(), (Boxes{{15, 20, 17, 70}, {95, 20, 105, 70}}));
    EXPECT_EQ(outer->repaintCount(), before + 1);
    {
        const RedrawHold hold;
        outer->redraw({0, 0, 2, 50});
        outer->redraw();
    }
    EXPECT_EQ(scene.canvas.dirtyRegion().bounds(), outer->box());
    drawAll();
    outer->draws = 0;
    RecordingRenderer elsewhere(Kt::Box<double>{120, 0, 125, 20});
    scene.canvas.draw(elsewhere);
    EXPECT_EQ(outer->draws, 0) << "it lies outside";
    scene.panel->removeChild(*outer).reset();
    EXPECT_EQ(scene.canvas.dirtyRegion().bounds(), (Kt::Box<int>{15, 20, 105, 90}));
    Probe* b = scene.add("b", {5, 5, 10, 10});
    drawAll();
    delete b;
    EXPECT_EQ(dirty(), (Boxes{{5, 5, 10, 10}}));
}

TEST_F(Globs, StandInTheirParent)
{
    EXPECT_EQ(inner->toCanvas({1, 1}), (XY<int>{16, 27}));
    EXPECT_EQ(inner->fromCanvas({16, 27}), (XY<int>{1, 1}));
    EXPECT_TRUE(scene.panel->isAncestorOf(inner));
    EXPECT_FALSE(inner->isAncestorOf(outer));
    EXPECT_TRUE(inner->isShown());
    const std::unique_ptr<Glob> taken = scene.panel->removeChild(*outer);
    ASSERT_EQ(taken.get(), outer);
    EXPECT_EQ(scene.panel->removeChild(*outer), nullptr) << "no child any more";
    EXPECT_FALSE(inner->isShown());
    EXPECT_EQ(inner->canvas(), nullptr);
}

TEST_F(Globs, OpenOnlyAsRootsOfACanvasWhichMayGoFirst)
{
    StandardPanel homeless{GlobCreationInfo(10, 10)};
    EXPECT_FALSE(homeless.open());
    EXPECT_FALSE(outer->open());
    EXPECT_TRUE(scene.panel->open()) << "it is already";

    StandardPanel popup{GlobCreationInfo(50, 50, &scene.canvas)};
    ASSERT_TRUE(popup.open());
    outer->takes = true;
    EXPECT_FALSE(scene.canvas.inject(Event::mouseWheel({15, 25}, 1))) << "what is opened later lies above";
    popup.close();
    EXPECT_TRUE(scene.canvas.inject(Event::mouseWheel({15, 25}, 1)));

    auto canvas = std::make_unique<Canvas>(XY<int>{100, 100});
    StandardPanel panel{GlobCreationInfo(50, 50, canvas.get())};
    panel.open();
    canvas.reset();
    EXPECT_FALSE(panel.isOpen());
    EXPECT_EQ(panel.canvas(), nullptr);
}

TEST_F(Globs, TakeStatePaletteFontAndCursorFromWhatTheyStandIn)
{
    const unsigned before = inner->repaintCount();
    outer->setEnabled(false);
    EXPECT_FALSE(inner->canInteract());
    EXPECT_TRUE(inner->isEnabled()) << "its own state is its own";
    EXPECT_EQ(inner->repaintCount(), before + 1) << "it looks different now";
    outer->setEnabled(true);
    scene.panel->setActive(false);
    EXPECT_FALSE(outer->isActive()) << "a panel passes it on";
    EXPECT_FALSE(inner->canInteract());

    Palette green;
    green.setColour(PaletteRole::Window, Colour::fromRGB(0x00ff00));
    scene.panel->setPalette(green);
    EXPECT_EQ(inner->getPalette(), green);
    inner->setFont({String("Mono"), 9, true});
    scene.panel->setFontSize(20);
    EXPECT_EQ(inner->font(), (Glib::FontDesc{String("Mono"), 20, true}));
    scene.panel->setFontSize(0);
    EXPECT_GT(inner->font().size, 0) << "a font is complete";

    outer->setCursor(MouseCursor::Hand);
    EXPECT_EQ(inner->cursorAt({1, 1}), MouseCursor::Hand);
    inner->setCursor(MouseCursor::Text);
    EXPECT_EQ(inner->cursorAt({1, 1}), MouseCursor::Text);
}

/** Fills its box. */
class Filled : public Glob
{
public:
    Filled(const Kt::Box<int>& box, unsigned rgb)
        : Glob(GlobCreationInfo(static_cast<unsigned short>(box.width()), static_cast<unsigned short>(box.height())))
        , colour_(Colour::fromRGB(rgb))
    {
        setPosition(box.topLeft());
    }

    void draw(CanvasRenderer& renderer) override { renderer.fillRect(CanvasRenderer::toDouble(localBox()), colour_); }

private:
    Colour colour_;
};

TEST(Drawing, ParentsFirstAndClippedToTheirBoxes)
{
    Canvas canvas({100, 100});
    GlobCreationInfo info(60, 60, &canvas);
    info.border = Border(Border::Line, 1, Border::kBottom);
    StandardPanel panel(info);
    Glob& red = panel.addChild(std::make_unique<Filled>(Kt::Box<int>{10, 10, 40, 40}, 0xff0000));
    red.addChild(std::make_unique<Filled>(Kt::Box<int>{20, 20, 50, 50}, 0x0000ff));
    panel.addChild(std::make_unique<Filled>(Kt::Box<int>{0, 0, 9, 9}, 0x00ff00)).setVisible(false);
    panel.open();
    RecordingRenderer r;
    canvas.draw(r);
    EXPECT_EQ(r.toString(), "Rect [0,0 60x60] #2b2b2b\n"
                            "Rect [0,59 60x1] #545454\n"
                            "Rect [10,10 30x30] #ff0000\n"
                            "Rect [30,30 30x30] #0000ff clip [30,30 10x10]\n");
}

} // namespace
} // namespace oribund::test

#include "CoreProbe.h"

#include "oribund/host/canvas/RecordingRenderer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace oribund::test
{
namespace
{

TEST(Redraws, AreHeldOffAndThenDoneOnceForEachGlob)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {50, 0, 100, 50});
    const unsigned beforeA = a->repaintCount();
    const unsigned beforeB = b->repaintCount();
    const unsigned before = scene.canvas.repaintCount();
    {
        const RedrawHold outer;
        for (int i = 0; i < 5; ++i) {
            const RedrawHold inner;
            a->redraw();
            a->setEnabled(i % 2 == 0);
        }
        b->redraw();
        EXPECT_EQ(scene.canvas.repaintCount(), before) << "the inner hold must not let anything through";
    }
    EXPECT_EQ(a->repaintCount(), beforeA + 1);
    EXPECT_EQ(b->repaintCount(), beforeB + 1);
    EXPECT_EQ(scene.canvas.repaintCount(), before + 2);

    a->redraw();
    EXPECT_EQ(a->repaintCount(), beforeA + 2) << "at once when nothing holds it off";
    Drawable::enableRedraws();
    EXPECT_TRUE(Drawable::redrawsEnabled());
    const RedrawHold hold;
    EXPECT_FALSE(Drawable::redrawsEnabled()) << "an enable too many must not be remembered";
}

TEST(Redraws, AGlobMayGoWhileItWaitsForOne)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {50, 0, 100, 50});
    const unsigned before = b->repaintCount();
    {
        const RedrawHold hold;
        a->redraw();
        b->redraw();
        delete a;
    }
    EXPECT_EQ(b->repaintCount(), before + 1);
}

TEST(Redraws, WhatIsNotShownIsNotRepainted)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    scene.panel->setVisible(false);
    const unsigned before = scene.canvas.repaintCount();
    a->redraw();
    EXPECT_EQ(scene.canvas.repaintCount(), before);
    scene.panel->setVisible(true);
    scene.panel->close();
    a->redraw();
    EXPECT_EQ(a->repaintCount(), 1u) << "the one when it was added";
}

TEST(Redraws, AChangeWithoutRedrawComesWithTheNextOne)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    const unsigned before = a->repaintCount();
    a->setEnabled(false, eRedrawFlag::No);
    EXPECT_EQ(a->repaintCount(), before);
    a->setTooltip(L"tip");
    EXPECT_EQ(a->repaintCount(), before + 1) << "a tooltip alone repaints nothing, what was deferred does";
    a->setTooltip(L"another tip");
    EXPECT_EQ(a->repaintCount(), before + 1);
    a->setEnabled(false);
    EXPECT_EQ(a->repaintCount(), before + 1) << "an equal value changes nothing";
}

TEST(Redraws, MovingInvalidatesTheOldPlaceAndTheNew)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 10, 10});
    RecordingRenderer renderer;
    scene.canvas.draw(renderer);
    a->setPosition({50, 20});
    EXPECT_EQ(scene.canvas.dirtyRegion().boxes(), (std::vector<Kt::Box<int>>{{0, 0, 10, 10}, {50, 20, 60, 30}}));
    scene.canvas.draw(renderer);
    scene.panel->removeChild(*a).reset();
    EXPECT_EQ(scene.canvas.dirtyRegion().bounds(), (Kt::Box<int>{50, 20, 60, 30}));
    Probe* b = scene.add("b", {5, 5, 10, 10});
    scene.canvas.draw(renderer);
    delete b;
    EXPECT_EQ(scene.canvas.dirtyRegion().bounds(), (Kt::Box<int>{5, 5, 10, 10}));
}

TEST(Redraws, OfAPartAreOfThatPartAndDrawWhatIsInItAlone)
{
    Scene scene;
    Probe* a = scene.add("a", {10, 10, 110, 60});
    scene.add("b", {120, 10, 190, 60});
    RecordingRenderer all;
    scene.canvas.draw(all);
    const unsigned before = a->repaintCount();
    {
        const RedrawHold hold;
        a->redraw({0, 0, 2, 50});
        a->redraw({90, 0, 120, 50});
        a->redraw({200, 0, 210, 50});
    }
    EXPECT_EQ(scene.canvas.dirtyRegion().boxes(), (std::vector<Kt::Box<int>>{{10, 10, 12, 60}, {100, 10, 110, 60}}));
    EXPECT_EQ(a->repaintCount(), before + 1);
    {
        const RedrawHold hold;
        a->redraw({0, 0, 2, 50});
        a->redraw();
    }
    EXPECT_EQ(scene.canvas.dirtyRegion().bounds(), a->box());
    RecordingRenderer part(Kt::Box<double>{120, 0, 125, 20});
    int draws = 0;
    a->onDraw = [&] { ++draws; };
    scene.canvas.draw(part);
    EXPECT_EQ(draws, 0) << "it lies outside";
    scene.canvas.draw(all);
    EXPECT_EQ(draws, 1);
}

TEST(Tree, APositionIsThatInTheParent)
{
    Scene scene;
    Probe* outer = scene.add("outer", {10, 20, 100, 90});
    Probe* inner = scene.add("inner", {5, 6, 50, 50}, outer);
    EXPECT_EQ(inner->toCanvas({1, 1}), (XY<int>{16, 27}));
    EXPECT_EQ(inner->fromCanvas({16, 27}), (XY<int>{1, 1}));
    EXPECT_EQ(inner->canvas(), &scene.canvas) << "inherited";
    EXPECT_TRUE(scene.panel->isAncestorOf(inner));
    EXPECT_FALSE(inner->isAncestorOf(outer));
    EXPECT_TRUE(inner->isShown());

    const std::unique_ptr<Glob> taken = scene.panel->removeChild(*outer);
    ASSERT_EQ(taken.get(), outer);
    EXPECT_EQ(scene.panel->removeChild(*outer), nullptr) << "no child any more";
    EXPECT_FALSE(inner->isShown());
    EXPECT_EQ(inner->canvas(), nullptr);
}

TEST(Tree, OnlyARootWithACanvasOpens)
{
    Canvas canvas({100, 100});
    StandardPanel homeless{GlobCreationInfo(10, 10)};
    EXPECT_FALSE(homeless.open());
    Scene scene;
    Probe* child = scene.add("child", {0, 0, 10, 10});
    EXPECT_FALSE(child->open());
    EXPECT_TRUE(scene.panel->open()) << "it is already";

    StandardPanel popup{GlobCreationInfo(50, 50, &scene.canvas)};
    ASSERT_TRUE(popup.open());
    child->takes = true;
    EXPECT_FALSE(scene.canvas.inject(Event::mouseWheel({5, 5}, 1))) << "what is opened later lies above";
    popup.close();
    EXPECT_TRUE(scene.canvas.inject(Event::mouseWheel({5, 5}, 1)));
}

TEST(Tree, ACanvasThatGoesFirstLeavesItsGlobsUsable)
{
    auto canvas = std::make_unique<Canvas>(XY<int>{100, 100});
    StandardPanel panel{GlobCreationInfo(50, 50, canvas.get())};
    panel.open();
    panel.addChild(std::make_unique<Probe>("a", XY<int>{5, 5}));
    canvas.reset();
    EXPECT_FALSE(panel.isOpen());
    EXPECT_EQ(panel.canvas(), nullptr);
    panel.setVisible(false);
    panel.resize(20, 20);
}

TEST(Geometry, SizesAreRoundedAndNeverBelowTheMinimum)
{
    Probe a("a", {10, 10});
    a.setMinSize({5, 6});
    a.resize(7.5, 7.4);
    EXPECT_EQ(a.getSize(), (XY<int>{8, 7}));
    a.resize(-20.0, 2.0);
    EXPECT_EQ(a.getSize(), (XY<int>{5, 6}));
    a.resize(std::numeric_limits<double>::quiet_NaN(), 1e300);
    EXPECT_EQ(a.getSize(), (XY<int>{5, (1 << 24) - 1}));
}

TEST(State, GreyedAncestorsGreyWhatIsInThem)
{
    Scene scene;
    Probe* outer = scene.add("outer", {0, 0, 50, 50});
    Probe* inner = scene.add("inner", {0, 0, 20, 20}, outer);
    const unsigned before = inner->repaintCount();
    outer->setEnabled(false);
    EXPECT_FALSE(inner->canInteract());
    EXPECT_TRUE(inner->isEnabled()) << "its own state is its own";
    EXPECT_EQ(inner->repaintCount(), before + 1) << "it looks different now";
    outer->setEnabled(true);
    scene.panel->setActive(false);
    EXPECT_FALSE(outer->isActive()) << "a panel passes it on";
    EXPECT_FALSE(inner->canInteract());
}

TEST(State, PaletteAndFontSizeReachEverythingInside)
{
    Scene scene;
    Probe* outer = scene.add("outer", {0, 0, 50, 50});
    Probe* inner = scene.add("inner", {0, 0, 20, 20}, outer);
    Palette green;
    green.setColour(PaletteRole::Window, Colour::fromRGB(0x00ff00));
    scene.panel->setPalette(green);
    EXPECT_EQ(inner->getPalette(), green);
    inner->setFont({String("Mono"), 9, true});
    scene.panel->setFontSize(20);
    EXPECT_EQ(inner->font(), (Glib::FontDesc{String("Mono"), 20, true}));
    scene.panel->setFontSize(0);
    EXPECT_GT(inner->font().size, 0) << "a font is complete";
}

TEST(State, TheCursorIsInherited)
{
    Scene scene;
    Probe* outer = scene.add("outer", {0, 0, 50, 50});
    Probe* inner = scene.add("inner", {0, 0, 20, 20}, outer);
    EXPECT_EQ(inner->cursorAt({1, 1}), MouseCursor::Arrow);
    outer->setCursor(MouseCursor::Hand);
    EXPECT_EQ(inner->cursorAt({1, 1}), MouseCursor::Hand);
    inner->setCursor(MouseCursor::Text);
    EXPECT_EQ(inner->cursorAt({1, 1}), MouseCursor::Text);
}

TEST(Drawing, ParentsFirstAndClippedToTheirBoxes)
{
    class Filled : public Glob
    {
    public:
        Filled(const Kt::Box<int>& box, const Colour& colour)
            : Glob(
                  GlobCreationInfo(static_cast<unsigned short>(box.width()), static_cast<unsigned short>(box.height())))
            , colour_(colour)
        {
            setPosition(box.topLeft());
        }

        void draw(CanvasRenderer& renderer) override
        {
            renderer.fillRect(CanvasRenderer::toDouble(localBox()), colour_);
        }

    private:
        Colour colour_;
    };

    Canvas canvas({100, 100});
    GlobCreationInfo info(60, 60, &canvas);
    info.border = Border(Border::Line, 1, Border::kBottom);
    StandardPanel panel(info);
    Glob& red = panel.addChild(std::make_unique<Filled>(Kt::Box<int>{10, 10, 40, 40}, Colour::fromRGB(0xff0000)));
    red.addChild(std::make_unique<Filled>(Kt::Box<int>{20, 20, 50, 50}, Colour::fromRGB(0x0000ff)));
    panel.addChild(std::make_unique<Filled>(Kt::Box<int>{0, 0, 9, 9}, Colour::fromRGB(0x00ff00))).setVisible(false);
    panel.open();

    RecordingRenderer r;
    canvas.draw(r);
    EXPECT_EQ(r.toString(), "Rect [0,0 60x60] #2b2b2b\n"
                            "Rect [0,59 60x1] #545454\n"
                            "Rect [10,10 30x30] #ff0000\n"
                            "Rect [30,30 30x30] #0000ff clip [30,30 10x10]\n");
    EXPECT_EQ(r.depth(), 0u);
}

} // namespace
} // namespace oribund::test

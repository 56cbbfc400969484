#include "CoreProbe.h"

#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

const int kGap = 4;

Probe* addRow(StandardPanel& panel, const char* name, int height, Glob* above, const WidgetSurround& surround = {})
{
    return panel.addWidget(std::make_unique<Probe>(name, XY<int>{40, height}),
                           above ? WidgetPosition::below(*above, kGap) : Glob::UserTopLeft(0, 0), surround);
}

TEST(Layout, WidgetsStandBesideEachOther)
{
    GlobCreationInfo info(200, 100);
    info.border = Border(Border::Line, 5);
    StandardPanel panel(info);
    const auto add = [&](int width, const WidgetPosition& position, const WidgetSurround& surround = {}) {
        return panel.addWidget(std::make_unique<Probe>("w", XY<int>{width, 10}), position, surround);
    };
    Probe* first = add(30, Glob::UserTopLeft(2, 3));
    EXPECT_EQ(first->getPosition(), (XY<int>{7, 8}));
    EXPECT_EQ(panel.previousWidget(), first);
    Probe* right = add(20, WidgetPosition::rightOf(*first, 6), {1, 0, 2, 0, false});
    EXPECT_EQ(right->getPosition(), (XY<int>{7 + 30 + 6 + 1, 8}));
    Probe* farther = add(20, WidgetPosition::rightOf(*right, 6));
    EXPECT_EQ(farther->getPosition(), (XY<int>{44 + 20 + 2 + 6, 8}));
    Probe* corner = add(20, Glob::UserTopRight(4, 1));
    EXPECT_EQ(corner->getPosition(), (XY<int>{195 - 4 - 20, 6}));
    Probe* left = add(10, WidgetPosition::leftOf(*corner, 2));
    EXPECT_EQ(left->getPosition(), (XY<int>{171 - 2 - 10, 6}));
    Probe* below = add(30, WidgetPosition::below(*first, 4), {3, 2, 0, 0, true});
    EXPECT_EQ(below->getPosition(), (XY<int>{10, 18 + 4 + 2}));
    EXPECT_EQ(below->getWidth(), 185) << "it follows the width";

    panel.resize(250, 100);
    EXPECT_EQ(corner->getPosition().x, 221);
    EXPECT_EQ(left->getPosition().x, 209);
    EXPECT_EQ(below->getWidth(), 235);
    EXPECT_EQ(first->getWidth(), 30);
    panel.resize(4, 100);
    EXPECT_EQ(below->getWidth(), 0);
}

TEST(Layout, WhatIsHiddenTakesNoRoom)
{
    StandardPanel panel{GlobCreationInfo(100, 200)};
    Probe* a = addRow(panel, "a", 10, nullptr);
    Probe* b = addRow(panel, "b", 20, a);
    Probe* c = addRow(panel, "c", 10, b);
    Probe* beside = panel.addWidget(std::make_unique<Probe>("beside", XY<int>{5, 5}), WidgetPosition::rightOf(*b, 3));
    Probe* d = addRow(panel, "d", 10, c);
    EXPECT_EQ(d->getPosition().y, 10 + 4 + 20 + 4 + 10 + 4);

    b->setVisible(false);
    EXPECT_EQ(c->getPosition().y, 14);
    EXPECT_EQ(d->getPosition().y, 28);
    EXPECT_EQ(beside->getPosition().x, b->getPosition().x) << "in the place of what is hidden";
    c->setVisible(false);
    EXPECT_EQ(d->getPosition().y, 14) << "through any number of hidden ones";
    a->setVisible(false);
    EXPECT_EQ(d->getPosition().y, 0) << "no gap above the first that shows";
    for (Probe* p : {a, b, c})
        p->setVisible(true);
    EXPECT_EQ(d->getPosition().y, 52);
}

TEST(Layout, WhatStoodBelowARemovedWidgetMovesToItsPlace)
{
    StandardPanel panel{GlobCreationInfo(100, 200)};
    Probe* a = addRow(panel, "a", 10, nullptr);
    Probe* b = addRow(panel, "b", 20, a);
    Probe* c = addRow(panel, "c", 10, b);
    panel.destroyWidget(*b);
    EXPECT_EQ(c->getPosition().y, 14);
    delete a;
    EXPECT_EQ(c->getPosition().y, 0);
    EXPECT_EQ(panel.previousWidget(), c);
    panel.setWidgetPosition(*c, Glob::UserTopLeft(9, 9));
    EXPECT_EQ(c->getPosition(), (XY<int>{9, 9}));
    delete c;
    EXPECT_EQ(panel.previousWidget(), nullptr);
}

struct Groups {
    Groups()
    {
        MinimizableGroup::InitArgs args(200, 0, &canvas);
        args.title = L"Outer";
        outer = std::make_unique<MinimizableGroup>(args);
        MinimizableGroup::InitArgs innerArgs(100, 0);
        innerArgs.title = L"Inner";
        first = outer->addWidget(std::make_unique<Probe>("first", XY<int>{50, 20}), Glob::UserTopLeft(0, 0));
        inner = outer->addWidget(std::make_unique<MinimizableGroup>(innerArgs), WidgetPosition::below(*first, kGap),
                                 {0, 0, 0, 0, true});
        row = inner->addWidget(std::make_unique<Probe>("row", XY<int>{50, 30}), Glob::UserTopLeft(0, 0));
        last = outer->addWidget(std::make_unique<Probe>("last", XY<int>{50, 20}), WidgetPosition::below(*inner, kGap));
        row->setFocusable(true);
        outer->open();
    }

    void click(const XY<int>& at)
    {
        canvas.inject(Event::mousePress(at));
        canvas.inject(Event::mouseRelease(at));
    }

    XY<int> innerTitle() const { return inner->toCanvas({30, inner->getTitleArea().centre().y}); }

    Canvas canvas{{300, 300}};
    std::unique_ptr<MinimizableGroup> outer;
    MinimizableGroup* inner = nullptr;
    Probe* first = nullptr;
    Probe* row = nullptr;
    Probe* last = nullptr;
};

TEST(Groups, AreAsHighAsWhatIsInThem)
{
    Groups g;
    const int title = UifStd::getRowHeight() + UifStd::getRowGap();
    EXPECT_EQ(g.inner->getHeight(), title + 30);
    EXPECT_EQ(g.outer->getHeight(), title + 20 + kGap + title + 30 + kGap + 20);
    EXPECT_EQ(g.first->getPosition().x, WidgetGroupEx::childXOffset());
    EXPECT_EQ(g.row->toCanvas({}).x, 2 * WidgetGroupEx::childXOffset());
    EXPECT_EQ(g.inner->getWidth(), 200 - WidgetGroupEx::childXOffset());

    const int before = g.outer->getHeight();
    g.row->resize(50, 45);
    EXPECT_EQ(g.outer->getHeight(), before + 15) << "all the way up";
    g.row->setVisible(false);
    EXPECT_EQ(g.inner->getHeight(), title);
    delete g.row;
    g.outer->resize(120, 5000);
    EXPECT_EQ(g.outer->getHeight(), before - 30) << "the height is not for others to set";
    EXPECT_EQ(g.outer->getWidth(), 120);
    EXPECT_EQ(g.inner->getWidth(), 120 - WidgetGroupEx::childXOffset());
}

TEST(Groups, FoldToTheirTitleAndUnfoldAgain)
{
    Groups g;
    const int outerHeight = g.outer->getHeight();
    const int innerHeight = g.inner->getHeight();
    const int lastY = g.last->getPosition().y;
    const unsigned repaints = g.outer->repaintCount();

    g.click(g.innerTitle());
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeMinimised);
    EXPECT_EQ(g.inner->getHeight(), g.inner->calcMinHeight());
    EXPECT_FALSE(g.row->isShown());
    const int gone = innerHeight - g.inner->calcMinHeight();
    EXPECT_EQ(g.outer->getHeight(), outerHeight - gone);
    EXPECT_EQ(g.last->getPosition().y, lastY - gone);
    EXPECT_EQ(g.outer->repaintCount(), repaints + 1);

    g.row->resize(50, 60);
    EXPECT_EQ(g.outer->getHeight(), outerHeight - gone) << "what is folded away cannot push";
    g.row->setVisible(false);
    g.inner->setSizeState(Glob::eSizeNormal);
    EXPECT_FALSE(g.row->isVisible()) << "hidden by its owner meanwhile";
    g.row->setVisible(true);
    EXPECT_EQ(g.outer->getHeight(), outerHeight + 30);

    g.outer->setSizeState(Glob::eSizeMinimised);
    Probe* late = addRow(*g.outer, "late", 20, g.last);
    EXPECT_FALSE(late->isVisible()) << "also what comes later";
    EXPECT_EQ(g.outer->getHeight(), g.outer->calcMinHeight());
    g.outer->setSizeState(Glob::eSizeNormal);
    EXPECT_TRUE(late->isVisible());
    EXPECT_TRUE(g.row->isShown());
}

TEST(Groups, OnlyACompletedClickOnTheTitleFolds)
{
    Groups g;
    g.canvas.inject(Event::mousePress(g.innerTitle()));
    g.canvas.inject(Event::mouseRelease({10, 290}));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeNormal) << "released elsewhere";
    g.canvas.inject(Event::mousePress(g.innerTitle()));
    g.inner->setEnabled(false);
    g.inner->setEnabled(true);
    g.canvas.inject(Event::mouseRelease(g.innerTitle()));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeNormal) << "the press was cancelled";
    g.click(g.row->toCanvas({5, 5}));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeNormal);

    g.inner->setSizeChangeEnabled(false);
    g.click(g.innerTitle());
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeNormal);
    EXPECT_FALSE(g.inner->canTakeFocus());
    g.inner->setSizeChangeEnabled(true);
    g.outer->setActive(false);
    g.click(g.innerTitle());
    g.inner->userToggleSizeState();
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeNormal);
}

TEST(Groups, FoldByKeyboardAndKeepIt)
{
    Groups g;
    g.row->takeFocus();
    g.canvas.inject(Event::keyPress(Key::Space));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeNormal) << "the key was meant for the row";

    g.inner->setSizeState(Glob::eSizeMinimised);
    EXPECT_TRUE(g.inner->hasFocus()) << "the row is gone from sight";
    EXPECT_EQ(g.row->count(EventCode::FocusOut), 1u);
    g.canvas.inject(Event::keyPress(Key::Left));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeMinimised);
    g.canvas.inject(Event::keyPress(Key::Right));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeNormal);
    g.canvas.inject(Event::keyPress(Key::Right));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeNormal);
    g.canvas.inject(Event::keyPress(Key::Enter));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeMinimised);
    EXPECT_EQ(g.outer->getSizeState(), Glob::eSizeNormal);
}

TEST(Groups, MayBeDestroyedWhileTheyFold)
{
    Groups g;
    g.row->takeFocus();
    g.row->onEvent = [&g](const Event& event) {
        if (event.code == EventCode::FocusOut)
            delete g.inner;
    };
    const int lastY = g.last->getPosition().y;
    g.inner->setSizeState(Glob::eSizeMinimised);
    EXPECT_LT(g.last->getPosition().y, lastY);
    EXPECT_TRUE(Drawable::redrawsEnabled());
}

TEST(Groups, TitleWidgetsStayInTheTitleRow)
{
    Groups g;
    Probe* led = g.inner->addTitleWidget(std::make_unique<Probe>("led", XY<int>{10, 12}), 3);
    const Kt::Box<int> title = g.inner->getTitleArea();
    EXPECT_EQ(led->getPosition(), (XY<int>{title.right - 13, title.top + (title.height() - 12) / 2}));
    EXPECT_FALSE(g.inner->widgetVisibilityCanChange(led));
    EXPECT_TRUE(g.inner->widgetVisibilityCanChange(g.row));
    g.inner->setSizeState(Glob::eSizeMinimised);
    EXPECT_TRUE(led->isShown());
    g.outer->resize(150, 0);
    EXPECT_EQ(led->box().right, g.inner->getTitleArea().right - 3);
    led->takes = true;
    g.click(led->toCanvas({2, 2}));
    EXPECT_EQ(g.inner->getSizeState(), Glob::eSizeMinimised) << "a click on it is not one on the title";
    delete led;
    g.inner->resize(90, 0);
}

class NamedGroup : public MinimizableGroup
{
public:
    using MinimizableGroup::MinimizableGroup;

    int titleChanges = 0;

protected:
    void handleTitleChange() override { ++titleChanges; }
};

TEST(Groups, ShowTheirTitle)
{
    Canvas canvas({200, 100});
    MinimizableGroup::InitArgs args(200, 0, &canvas);
    args.title = L"Colour";
    args.titleColour = Colour::fromRGB(0x123456);
    args.minimisable = false;
    NamedGroup group(args);
    group.open();
    const auto titleColour = [&] {
        RecordingRenderer r;
        canvas.draw(r);
        const Primitive* text = r.findText(group.getTitle().text());
        return text ? text->colour : CanvasRenderer::kNone;
    };
    EXPECT_EQ(titleColour(), Colour::fromRGB(0x123456));
    group.setTitleActive(false);
    EXPECT_EQ(titleColour(), group.getPalette().disabledText());
    group.setTitleActive(true);
    EXPECT_EQ(group.getSizeState(), Glob::eSizeNormal);
    group.userToggleSizeState();
    EXPECT_EQ(group.getSizeState(), Glob::eSizeNormal) << "not minimisable";

    group.setTitle(L"Light");
    EXPECT_EQ(group.titleChanges, 0) << "it was not the user";
    EXPECT_EQ(titleColour(), Colour::fromRGB(0x123456));
    EXPECT_EQ(group.accessibleName(), UIString(L"Light"));
    group.setTitleRowShown(false);
    EXPECT_TRUE(group.getTitleArea().empty());
    EXPECT_EQ(titleColour(), CanvasRenderer::kNone);
}

class TitleEdit : public testing::Test
{
protected:
    TitleEdit()
    {
        MinimizableGroup::InitArgs args(200, 0, &canvas);
        args.title = L"Blur";
        group = std::make_unique<NamedGroup>(args);
        group->open();
        group->setTitleEditable(true);
    }

    void type(const wchar_t* text)
    {
        for (; *text; ++text)
            canvas.inject(Event::character(*text));
    }

    bool isEditing() const { return canvas.focusOwner() && canvas.focusOwner() != group.get(); }

    Canvas canvas{{300, 300}};
    std::unique_ptr<NamedGroup> group;
};

TEST_F(TitleEdit, EnterTakesTheNewTitleAndEscapeDoesNot)
{
    ASSERT_TRUE(group->takeFocus());
    canvas.inject(Event::keyPress(Key::F2));
    ASSERT_TRUE(isEditing());
    type(L"Soft");
    EXPECT_EQ(group->getTitle(), UIString(L"Blur"));
    canvas.inject(Event::keyPress(Key::Enter));
    EXPECT_EQ(group->getTitle(), UIString(L"Soft"));
    EXPECT_EQ(group->titleChanges, 1);
    EXPECT_TRUE(group->hasFocus()) << "back where it came from";
    EXPECT_EQ(group->getSizeState(), Glob::eSizeNormal) << "the key must not fold the group";

    canvas.inject(Event::keyPress(Key::F2));
    type(L"Hard");
    canvas.inject(Event::keyPress(Key::Escape));
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(group->getTitle(), UIString(L"Soft"));
    EXPECT_EQ(group->titleChanges, 1);
}

TEST_F(TitleEdit, EndsWithTheFocusOrWithThePermission)
{
    ASSERT_TRUE(group->beginTitleEdit());
    type(L"Soft");
    group->setSizeState(Glob::eSizeMinimised);
    EXPECT_TRUE(isEditing()) << "the title row stays";
    canvas.inject(Event::mousePress({290, 290}));
    EXPECT_TRUE(isEditing()) << "a press beside the panel is for others";
    canvas.inject(Event::keyPress(Key::Tab));
    EXPECT_EQ(group->getTitle(), UIString(L"Soft")) << "what was typed counts";
    EXPECT_FALSE(isEditing());

    ASSERT_TRUE(group->beginTitleEdit());
    type(L"Hard");
    group->setTitleEditable(false);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(group->getTitle(), UIString(L"Soft"));
    EXPECT_FALSE(group->beginTitleEdit());
    EXPECT_FALSE(group->userSetTitle(L"Other"));
    group->setTitleEditable(true);
    EXPECT_FALSE(group->userSetTitle(L"")) << "a group without a name could not be found again";
}

TEST_F(TitleEdit, AClickStartsItWhereItDoesNotFold)
{
    const XY<int> title = group->getTitleArea().centre();
    canvas.inject(Event::mousePress(title));
    EXPECT_FALSE(isEditing());
    canvas.inject(Event::mouseRelease(title));
    group->setSizeState(Glob::eSizeNormal);
    group->setSizeChangeEnabled(false);
    canvas.inject(Event::mousePress(title));
    EXPECT_TRUE(isEditing());
    canvas.inject(Event::mouseRelease(title));
    EXPECT_TRUE(isEditing());
    group.reset();
    EXPECT_EQ(canvas.focusOwner(), nullptr);
}

} // namespace
} // namespace oribund::test

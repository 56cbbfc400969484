#include "CoreProbe.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

constexpr int kGap = 4;

template <class Panel>
Probe* addProbe(Panel& panel, const char* name, const XY<int>& size, const WidgetPosition& position,
                const WidgetSurround& surround = {})
{
    return panel.addWidget(std::make_unique<Probe>(name, size), position, surround);
}

TEST(Layout, WidgetsStandBesideEachOther)
{
    GlobCreationInfo info(200, 100);
    info.border = Border(Border::Line, 5);
    StandardPanel panel(info);
    Probe* first = addProbe(panel, "first", {30, 10}, Glob::UserTopLeft(2, 3));
    Probe* right = addProbe(panel, "right", {20, 10}, WidgetPosition::rightOf(*first, 6), {1, 0, 2, 0, false});
    Probe* farther = addProbe(panel, "farther", {20, 10}, WidgetPosition::rightOf(*right, 6));
    Probe* corner = addProbe(panel, "corner", {20, 10}, Glob::UserTopRight(4, 1));
    Probe* left = addProbe(panel, "left", {10, 10}, WidgetPosition::leftOf(*corner, 2));
    Probe* below = addProbe(panel, "below", {30, 10}, WidgetPosition::below(*first, 4), {3, 2, 0, 0, true});
    EXPECT_EQ(first->getPosition(), (XY<int>{7, 8}));
    EXPECT_EQ(right->getPosition(), (XY<int>{7 + 30 + 6 + 1, 8}));
    EXPECT_EQ(farther->getPosition(), (XY<int>{44 + 20 + 2 + 6, 8}));
    EXPECT_EQ(corner->getPosition(), (XY<int>{195 - 4 - 20, 6}));
    EXPECT_EQ(left->getPosition(), (XY<int>{171 - 2 - 10, 6}));
    EXPECT_EQ(below->box(), (Kt::Box<int>{10, 18 + 4 + 2, 195, 34})) << "it follows the width";
    panel.resize(250, 100);
    EXPECT_EQ(left->getPosition().x, 209);
    EXPECT_EQ(below->getWidth(), 235);
    panel.resize(4, 100);
    EXPECT_EQ(below->getWidth(), 0);
}

TEST(Layout, WhatIsHiddenOrGoneTakesNoRoom)
{
    StandardPanel panel{GlobCreationInfo(100, 200)};
    Probe* a = addProbe(panel, "a", {40, 10}, Glob::UserTopLeft(0, 0));
    Probe* b = addProbe(panel, "b", {40, 20}, WidgetPosition::below(*a, kGap));
    Probe* c = addProbe(panel, "c", {40, 10}, WidgetPosition::below(*b, kGap));
    Probe* beside = addProbe(panel, "beside", {5, 5}, WidgetPosition::rightOf(*b, 3));
    Probe* d = addProbe(panel, "d", {40, 10}, WidgetPosition::below(*c, kGap));
    const auto yOfD = [&] { return d->getPosition().y; };
    EXPECT_EQ(yOfD(), 10 + 4 + 20 + 4 + 10 + 4);
    b->setVisible(false);
    EXPECT_EQ(yOfD(), 28);
    EXPECT_EQ(beside->getPosition().x, b->getPosition().x) << "in the place of what is hidden";
    c->setVisible(false);
    EXPECT_EQ(yOfD(), 14) << "through any number of hidden ones";
    a->setVisible(false);
    EXPECT_EQ(yOfD(), 0) << "no gap above the first that shows";
    for (Probe* p : {a, b, c})
        p->setVisible(true);
    EXPECT_EQ(yOfD(), 52);

    panel.destroyWidget(*b);
    EXPECT_EQ(yOfD(), 28);
    delete a;
    EXPECT_EQ(c->getPosition().y, 0);
    EXPECT_EQ(panel.previousWidget(), d);
    panel.setWidgetPosition(*d, Glob::UserTopLeft(9, 9));
    EXPECT_EQ(d->getPosition(), (XY<int>{9, 9}));
}

class NamedGroup : public MinimizableGroup
{
public:
    using MinimizableGroup::MinimizableGroup;

    int titleChanges = 0;

protected:
    void handleTitleChange() override { ++titleChanges; }
};

/** A group with a group between two probes. */
class Groups : public testing::Test
{
protected:
    Groups()
    {
        outer = desk.add<NamedGroup>(titled(L"Outer", 200));
        first = addProbe(*outer, "first", {50, 20}, Glob::UserTopLeft(0, 0));
        inner = outer->addWidget(std::make_unique<NamedGroup>(titled(L"Inner", 100)),
                                 WidgetPosition::below(*first, kGap), {0, 0, 0, 0, true});
        row = addProbe(*inner, "row", {50, 30}, Glob::UserTopLeft(0, 0));
        last = addProbe(*outer, "last", {50, 20}, WidgetPosition::below(*inner, kGap));
        row->setFocusable(true);
    }

    static MinimizableGroup::InitArgs titled(const wchar_t* title, unsigned short width)
    {
        MinimizableGroup::InitArgs args(width, 0);
        args.title = title;
        return args;
    }

    XY<int> innerTitle() const { return inner->toCanvas({30, inner->getTitleArea().centre().y}); }

    bool isFolded() const { return inner->getSizeState() == Glob::eSizeMinimised; }

    void fold(bool folded = true) { inner->setSizeState(folded ? Glob::eSizeMinimised : Glob::eSizeNormal); }

    Desk desk;
    NamedGroup* outer = nullptr;
    NamedGroup* inner = nullptr;
    Probe* first = nullptr;
    Probe* row = nullptr;
    Probe* last = nullptr;
};

TEST_F(Groups, AreAsHighAsWhatIsInThem)
{
    const int title = UifStd::getRowHeight() + UifStd::getRowGap();
    const int indent = WidgetGroupEx::childXOffset();
    EXPECT_EQ(inner->getHeight(), title + 30);
    EXPECT_EQ(outer->getHeight(), title + 20 + kGap + title + 30 + kGap + 20);
    EXPECT_EQ(row->toCanvas({}).x - outer->toCanvas({}).x, 2 * indent);
    EXPECT_EQ(inner->getWidth(), 200 - indent);

    const int before = outer->getHeight();
    row->resize(50, 45);
    EXPECT_EQ(outer->getHeight(), before + 15) << "all the way up";
    row->setVisible(false);
    EXPECT_EQ(inner->getHeight(), title);
    delete row;
    outer->resize(120, 5000);
    EXPECT_EQ(outer->getSize(), (XY<int>{120, before - 30})) << "the height is not for others to set";
    EXPECT_EQ(inner->getWidth(), 120 - indent);
}

TEST_F(Groups, FoldToTheirTitleAndUnfoldAgain)
{
    const int outerHeight = outer->getHeight();
    const int lastY = last->getPosition().y;
    const int gone = inner->getHeight() - inner->calcMinHeight();
    const unsigned repaints = outer->repaintCount();
    desk.click(innerTitle());
    EXPECT_TRUE(isFolded());
    EXPECT_EQ(inner->getHeight(), inner->calcMinHeight());
    EXPECT_FALSE(row->isShown());
    EXPECT_EQ(Desk::drawn(*inner).ofKind(Primitive::Kind::Polygon).size(), 1u) << "the arrow";
    EXPECT_EQ(outer->getHeight(), outerHeight - gone);
    EXPECT_EQ(last->getPosition().y, lastY - gone);
    EXPECT_EQ(outer->repaintCount(), repaints + 1);

    row->resize(50, 60);
    EXPECT_EQ(outer->getHeight(), outerHeight - gone) << "what is folded away cannot push";
    row->setVisible(false);
    fold(false);
    EXPECT_FALSE(row->isVisible()) << "hidden by its owner meanwhile";
    row->setVisible(true);
    EXPECT_EQ(outer->getHeight(), outerHeight + 30);

    outer->setSizeState(Glob::eSizeMinimised);
    Probe* late = addProbe(*outer, "late", {40, 20}, WidgetPosition::below(*last, kGap));
    EXPECT_FALSE(late->isVisible()) << "also what comes later";
    EXPECT_EQ(outer->getHeight(), outer->calcMinHeight());
    outer->setSizeState(Glob::eSizeNormal);
    EXPECT_TRUE(late->isVisible());
    EXPECT_TRUE(row->isShown());
}

TEST_F(Groups, FoldByACompletedClickOnTheTitleOnly)
{
    desk.press(innerTitle());
    desk.release({10, 290});
    EXPECT_FALSE(isFolded()) << "released elsewhere";
    desk.press(innerTitle());
    inner->setEnabled(false);
    inner->setEnabled(true);
    desk.release(innerTitle());
    EXPECT_FALSE(isFolded()) << "the press was cancelled";
    desk.click(row->toCanvas({5, 5}));
    inner->setSizeChangeEnabled(false);
    desk.click(innerTitle());
    EXPECT_FALSE(inner->canTakeFocus());
    inner->setSizeChangeEnabled(true);
    outer->setActive(false);
    desk.click(innerTitle());
    inner->userToggleSizeState();
    EXPECT_FALSE(isFolded());
}

TEST_F(Groups, FoldByKeyboardAndKeepIt)
{
    row->takeFocus();
    desk.key(Key::Space);
    EXPECT_FALSE(isFolded()) << "the key was meant for the row";
    fold();
    EXPECT_TRUE(inner->hasFocus()) << "the row is gone from sight";
    EXPECT_EQ(row->count(EventCode::FocusOut), 1);
    for (const auto& [key, folded] : {std::pair(Key::Left, true), std::pair(Key::Right, false),
                                      std::pair(Key::Right, false), std::pair(Key::Enter, true)}) {
        desk.key(key);
        EXPECT_EQ(isFolded(), folded);
    }
    EXPECT_EQ(outer->getSizeState(), Glob::eSizeNormal);
}

TEST_F(Groups, MayBeDestroyedWhileTheyFold)
{
    row->takeFocus();
    row->onEvent = [this](const Event& event) {
        if (event.code == EventCode::FocusOut)
            delete inner;
    };
    const int lastY = last->getPosition().y;
    fold();
    EXPECT_LT(last->getPosition().y, lastY);
    EXPECT_TRUE(Drawable::redrawsEnabled());
}

TEST_F(Groups, KeepTitleWidgetsInTheTitleRow)
{
    Probe* led = inner->addTitleWidget(std::make_unique<Probe>("led", XY<int>{10, 12}), 3);
    fold();
    EXPECT_TRUE(led->isShown());
    outer->resize(150, 0);
    EXPECT_EQ(led->box().right, inner->getTitleArea().right - 3);
    led->takes = true;
    desk.click(led->toCanvas({2, 2}));
    EXPECT_TRUE(isFolded()) << "a click on it is not one on the title";
}

TEST_F(Groups, ShowTheirTitle)
{
    MinimizableGroup::InitArgs args = titled(L"Colour", 200);
    args.titleColour = Colour::fromRGB(0x123456);
    args.minimisable = false;
    NamedGroup group(args);
    const auto titleColour = [&] {
        const RecordingRenderer r = Desk::drawn(group);
        const Primitive* text = r.findText(group.getTitle().text());
        return text ? text->colour : CanvasRenderer::kNone;
    };
    EXPECT_EQ(titleColour(), Colour::fromRGB(0x123456));
    group.setTitleActive(false);
    EXPECT_EQ(titleColour(), group.getPalette().disabledText());
    group.setTitle(L"Light");
    EXPECT_EQ(group.titleChanges, 0) << "it was not the user";
    group.setTitleRowShown(false);
    EXPECT_TRUE(group.getTitleArea().empty());
    EXPECT_EQ(titleColour(), CanvasRenderer::kNone);
}

/** A title that can be edited. */
class TitleEdit : public Groups
{
protected:
    TitleEdit() { inner->setTitleEditable(true); }

    bool isEditing() const
    {
        const Glob* const owner = desk.canvas.focusOwner();
        return owner && owner->parent() == inner;
    }
};

TEST_F(TitleEdit, EnterTakesTheNewTitleAndEscapeDoesNot)
{
    ASSERT_TRUE(inner->takeFocus());
    desk.key(Key::F2);
    ASSERT_TRUE(isEditing());
    desk.type(L"Soft");
    EXPECT_EQ(inner->getTitle(), UIString(L"Inner"));
    desk.key(Key::Enter);
    EXPECT_EQ(inner->getTitle(), UIString(L"Soft"));
    EXPECT_TRUE(inner->hasFocus()) << "back where it came from";
    EXPECT_FALSE(isFolded()) << "the key must not fold the group";
    desk.key(Key::F2);
    desk.type(L"Hard");
    desk.key(Key::Escape);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(inner->getTitle(), UIString(L"Soft"));
    EXPECT_EQ(inner->titleChanges, 1);
}

TEST_F(TitleEdit, EndsWithTheFocusOrWithThePermission)
{
    ASSERT_TRUE(inner->beginTitleEdit());
    desk.type(L"Soft");
    fold();
    EXPECT_TRUE(isEditing()) << "the title row stays";
    desk.key(Key::Tab);
    EXPECT_EQ(inner->getTitle(), UIString(L"Soft")) << "what was typed counts";
    EXPECT_FALSE(isEditing());

    ASSERT_TRUE(inner->beginTitleEdit());
    desk.type(L"Hard");
    inner->setTitleEditable(false);
    EXPECT_FALSE(isEditing());
    EXPECT_FALSE(inner->beginTitleEdit());
    EXPECT_FALSE(inner->userSetTitle(L"Other"));
    inner->setTitleEditable(true);
    EXPECT_FALSE(inner->userSetTitle(L"")) << "a group without a name could not be found again";
    EXPECT_EQ(inner->getTitle(), UIString(L"Soft"));
}

TEST_F(TitleEdit, AClickStartsItWhereItDoesNotFold)
{
    desk.press(innerTitle());
    EXPECT_FALSE(isEditing());
    desk.release(innerTitle());
    fold(false);
    inner->setSizeChangeEnabled(false);
    desk.click(innerTitle());
    EXPECT_TRUE(isEditing());
    outer->destroyWidget(*inner);
    EXPECT_EQ(desk.canvas.focusOwner(), nullptr);
}

} // namespace
} // namespace oribund::test

#include "tests/skin/SkinSupport.h"

#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"
#include "oribund/host/toolkit/widgets/Slider.h"

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>

namespace workbench::test
{
namespace
{

using namespace oribund;

void pressTab(bool backwards = false)
{
    QTest::keyClick(QApplication::focusWidget(), backwards ? Qt::Key_Backtab : Qt::Key_Tab);
}

/** A panel between two native entries. */
class PanelFocus : public testing::Test
{
protected:
    PanelFocus()
    {
        first = stage.add<Slider>(10, 10);
        second = stage.add<TextBox>(10, 50);
        third = stage.add<Checkbox>(10, 90);
        before = new QLineEdit(&stage.window);
        after = new QLineEdit(&stage.window);
        before->show();
        after->show();
        QWidget::setTabOrder(before, stage.view);
        QWidget::setTabOrder(stage.view, after);
        before->setFocus();
    }

    Stage stage;
    Slider* first;
    TextBox* second;
    Checkbox* third;
    QLineEdit* before;
    QLineEdit* after;
};

TEST_F(PanelFocus, TabGoesThroughThePanelAndOn)
{
    for (Glob* stop : std::initializer_list<Glob*>{first, second, third}) {
        pressTab();
        EXPECT_EQ(stage.focused(), stop);
    }
    pressTab();
    EXPECT_TRUE(after->hasFocus());
    EXPECT_EQ(stage.view->canvas().focusOwner(), nullptr);
    for (Glob* stop : std::initializer_list<Glob*>{third, second, first}) {
        pressTab(true);
        EXPECT_EQ(stage.focused(), stop);
    }
    pressTab(true);
    EXPECT_TRUE(before->hasFocus());
}

TEST_F(PanelFocus, TabFollowsThePanelsOwnOrder)
{
    stage.panel().addTabStop(third);
    stage.panel().addTabStop(first);
    stage.panel().addTabStop(second);
    second->setEnabled(false);
    pressTab();
    EXPECT_EQ(stage.focused(), third);
    pressTab();
    EXPECT_EQ(stage.focused(), first);
    pressTab();
    EXPECT_TRUE(after->hasFocus());
}

TEST_F(PanelFocus, EveryControlShowsThatItHasTheKeyboard)
{
    for (Glob* stop : std::initializer_list<Glob*>{first, second, third}) {
        const QImage without = stage.view->grab().toImage();
        pressTab();
        ASSERT_EQ(stage.focused(), stop);
        EXPECT_NE(stage.view->grab().toImage(), without);
    }
}

TEST_F(PanelFocus, WhatLosesTheKeyboardLeavesItInThePanel)
{
    third->takeFocus();
    third->setEnabled(false);
    EXPECT_EQ(stage.view->canvas().focusOwner(), nullptr);
    EXPECT_TRUE(stage.view->hasFocus());
    pressTab();
    EXPECT_EQ(stage.focused(), first);
}

/** A key is the window's command, unless the control that has the keyboard has a use for it. */
TEST_F(PanelFocus, ControlsKeepTheirKeysFromTheWindowsCommands)
{
    int commands = 0;
    QShortcut space(QKeySequence(Qt::Key_Space), &stage.window);
    QShortcut left(QKeySequence(Qt::Key_Left), &stage.window);
    for (QShortcut* shortcut : {&space, &left})
        QObject::connect(shortcut, &QShortcut::activated, [&] { ++commands; });
    const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };

    third->takeFocus();
    press(Qt::Key_Space);
    EXPECT_TRUE(third->isChecked());
    EXPECT_EQ(commands, 0);
    press(Qt::Key_Left);
    EXPECT_EQ(commands, 1);

    first->setValue(0.5);
    first->takeFocus();
    press(Qt::Key_Left);
    EXPECT_LT(first->getValue(), 0.5);
    EXPECT_EQ(commands, 1);
    press(Qt::Key_Space);
    EXPECT_EQ(commands, 2);
}

/** Counts the keys that reach the window. */
class KeyWindow : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        keys += event->type() == QEvent::KeyPress;
        return false;
    }

    int keys = 0;
};

TEST_F(PanelFocus, AKeyThatNobodyUsesReachesTheWindowOnce)
{
    KeyWindow filter;
    stage.window.installEventFilter(&filter);
    third->takeFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_L);
    EXPECT_EQ(filter.keys, 1);
}

TEST(GroupKeys, SpaceFoldsAndUnfoldsAndThePanelFollows)
{
    Stage stage;
    MinimizableGroup::InitArgs args(400, 0);
    args.title = L"Group";
    args.canvas = &stage.view->canvas();
    auto made = std::make_unique<MinimizableGroup>(args);
    MinimizableGroup* group = made.get();
    Slider* slider = group->addWidget(std::make_unique<Slider>(Slider::InitArgs()), Glob::UserTopLeft(0, 600));
    stage.view->setPanel(std::move(made));
    const int unfolded = group->getHeight();
    EXPECT_EQ(stage.view->widget()->height(), unfolded);
    ASSERT_TRUE(group->takeFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_LT(group->getHeight(), unfolded);
    EXPECT_FALSE(Stage::nativeOf(*slider)->isVisible());
    EXPECT_EQ(stage.view->widget()->height(), stage.view->viewport()->height());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(stage.view->widget()->height(), unfolded);
    EXPECT_TRUE(Stage::nativeOf(*slider)->isVisible());
}

} // namespace
} // namespace workbench::test

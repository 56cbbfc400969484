#include "tests/skin/SkinSupport.h"

#include "tests/toolkit/WidgetsSupport.h"

#include "oribund/host/toolkit/core/Menu.h"
#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"
#include "oribund/host/toolkit/widgets/ValColourSwatch.h"

#include <gtest/gtest.h>

#include <QColorDialog>
#include <QContextMenuEvent>
#include <QMenu>

namespace oribund::qt::test
{
namespace
{

using namespace oribund;
using oribund::test::StoreAdaptor;

QMenu* openedMenu()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

/** A panel with a context menu. */
class MenuPanel : public MenuGlob
{
public:
    using MenuGlob::MenuGlob;

    std::vector<std::string> chosen;

protected:
    void reviewMenu(const Event*) override
    {
        const auto note = [this](const char* what) { return [this, what] { chosen.emplace_back(what); }; };
        editMenu().addHeading(L"Keyframes");
        editMenu().addItem(L"Copy & paste", note("copy")).checked = true;
        editMenu().addItem(L"Not now", note("never")).enabled = false;
        editMenu().addSeparator();
        editMenu().addSubmenu(L"More").addItem(L"Inner", note("inner"));
    }
};

class MenuOfGlob : public testing::Test
{
protected:
    MenuOfGlob()
    {
        glob =
            stage.panel().addWidget(std::make_unique<MenuPanel>(GlobCreationInfo(100, 100)), Glob::UserTopLeft(0, 0));
        stage.click(*glob, {20, 30}, Qt::RightButton);
        menu = openedMenu();
    }

    ~MenuOfGlob() override
    {
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
        settle();
    }

    Stage stage;
    MenuPanel* glob;
    QMenu* menu;
};

TEST_F(MenuOfGlob, ShowsTheItemsAsTheyAreAndDoesWhatIsChosenOnce)
{
    ASSERT_TRUE(menu);
    const auto actions = menu->actions();
    ASSERT_EQ(actions.size(), 5);
    EXPECT_FALSE(actions[0]->isEnabled());
    EXPECT_EQ(actions[1]->text(), "Copy && paste");
    EXPECT_TRUE(actions[1]->isChecked());
    EXPECT_FALSE(actions[2]->isEnabled());
    EXPECT_TRUE(actions[3]->isSeparator());
    ASSERT_TRUE(actions[4]->menu());
    EXPECT_EQ(menu->pos(), stage.surface->mapToGlobal(QPoint(20, 30)));
    actions[4]->menu()->actions()[0]->trigger();
    menu->close();
    settle();
    EXPECT_EQ(glob->chosen, std::vector<std::string>{"inner"});
    EXPECT_FALSE(glob->isMenuOpen());
}

TEST_F(MenuOfGlob, ClosedWithoutAChoiceItIsClosedForTheGlobToo)
{
    ASSERT_TRUE(menu);
    EXPECT_TRUE(glob->isMenuOpen());
    QTest::keyClick(menu, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(glob->isMenuOpen());
    EXPECT_TRUE(glob->chosen.empty());
}

TEST_F(MenuOfGlob, GoesWithItsGlob)
{
    QPointer<QMenu> open = menu;
    ASSERT_TRUE(open);
    stage.panel().destroyWidget(*glob);
    settle();
    EXPECT_TRUE(open.isNull());
}

/** An entry whose menu has an item of its own. */
class EntryWithMenu : public TextBox
{
public:
    using TextBox::TextBox;

protected:
    void reviewMenu(const Event*) override { editMenu().addItem(L"Reset", String("reset")); }
};

TEST(EntryMenu, IsThatOfTheBoxWhereItHasOne)
{
    Stage stage;
    EntryWithMenu* box = stage.add<EntryWithMenu>(10, 10);
    for (const bool typing : {false, true}) {
        if (typing) {
            box->takeFocus();
            QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, {5, 5});
            QApplication::sendEvent(stage.editor(), &event);
        } else {
            stage.click(*box, {5, 5}, Qt::RightButton);
        }
        QMenu* menu = openedMenu();
        ASSERT_TRUE(menu);
        ASSERT_EQ(menu->actions().size(), 1);
        EXPECT_EQ(menu->actions()[0]->text(), "Reset");
        menu->close();
        settle();
        stage.activate();
    }
}

TEST(DropDownPeer, ChoosesByMenu)
{
    Stage stage;
    const auto store = Kt::makePtr<StoreAdaptor<unsigned>>(1u);
    ValMenuButton::InitArgs args;
    args.items = {L"One", L"Two", L"Three"};
    ValMenuButton* button = stage.add<ValMenuButton>(args, 10, 10);
    button->setDataAdaptor(store);
    stage.click(*button, {5, 10});
    QMenu* menu = openedMenu();
    ASSERT_TRUE(menu);
    EXPECT_GE(menu->width(), button->getWidth());
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    settle();
    EXPECT_EQ(store->value, 2u) << "the one below that which was chosen";
    stage.activate();
    EXPECT_EQ(stage.focused(), button);
}

class SwatchPeer : public testing::Test
{
protected:
    SwatchPeer()
    {
        swatch = stage.add<ValColourSwatch>(10, 10);
        swatch->setDataAdaptor(store);
        stage.click(*swatch, {5, 10});
        chooser = stage.window.findChild<QColorDialog*>();
    }

    Kt::Ptr<StoreAdaptor<ColourData>> store = Kt::makePtr<StoreAdaptor<ColourData>>(ColourData{{1.0, 0.0, 0.0, 1.0}});
    Stage stage;
    ValColourSwatch* swatch;
    QColorDialog* chooser;
};

TEST_F(SwatchPeer, WhatIsTriedOutIsOneSeriesAndCancelTakesItBack)
{
    ASSERT_TRUE(chooser);
    EXPECT_FALSE(chooser->isModal());
    EXPECT_EQ(chooser->currentColor(), QColor(Qt::red));
    EXPECT_TRUE(store->requests.empty());
    chooser->setCurrentColor(Qt::green);
    chooser->setCurrentColor(Qt::blue);
    chooser->accept();
    EXPECT_EQ(store->kinds(), "SC");
    EXPECT_EQ(store->seriesEnds, 1);
    EXPECT_EQ(store->value, (ColourData{{0.0, 0.0, 1.0, 1.0}}));
    EXPECT_FALSE(swatch->isChooserOpen());
    settle();

    stage.click(*swatch, {5, 10});
    chooser = stage.window.findChild<QColorDialog*>();
    ASSERT_TRUE(chooser);
    chooser->setCurrentColor(Qt::green);
    chooser->reject();
    EXPECT_EQ(store->value, (ColourData{{0.0, 0.0, 1.0, 1.0}}));
    EXPECT_EQ(store->cancels, 1);
    settle();
    EXPECT_EQ(stage.window.findChild<QColorDialog*>(), nullptr);
}

TEST_F(SwatchPeer, EscapeInThePanelClosesTheChooserToo)
{
    ASSERT_TRUE(chooser);
    chooser->setCurrentColor(Qt::green);
    stage.activate();
    Stage::key(Qt::Key_Escape);
    settle();
    EXPECT_EQ(store->value, (ColourData{{1.0, 0.0, 0.0, 1.0}}));
    EXPECT_EQ(stage.window.findChild<QColorDialog*>(), nullptr);
}

TEST_F(SwatchPeer, TheChooserGoesWithItsSwatch)
{
    QPointer<QColorDialog> open = chooser;
    ASSERT_TRUE(open);
    stage.panel().destroyWidget(*swatch);
    open->setCurrentColor(Qt::green);
    EXPECT_TRUE(store->requests.empty());
    settle();
    EXPECT_TRUE(open.isNull());
}

} // namespace
} // namespace oribund::qt::test

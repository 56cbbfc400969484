#include "CoreProbe.h"

#include "oribund/host/toolkit/core/Menu.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

/** A skin that writes down what it is told. */
class ScribeSkin : public Skin
{
public:
    void regionChanged(const Kt::Box<int>& region) override { regions.push_back(region); }

    void globChanged(Glob& glob, unsigned changes) override
    {
        journal += std::string(glob.idString().c_str()) + ":" + std::to_string(changes) + " ";
    }

    void focusChanged(Glob* owner) override { focused = owner; }

    bool passFocusOn(bool forward) override
    {
        journal += forward ? "on " : "back ";
        return takesFocus;
    }

    void showHint(Glob&, const WString&) override {}

    void openMenu(MenuGlob&, const XY<int>& at) override { menuAt = at; }

    void openColourChooser(ColourSwatch&) override {}

    std::vector<Kt::Box<int>> regions;
    std::string journal;
    Glob* focused = nullptr;
    bool takesFocus = true;
    XY<int> menuAt{-1, -1};
};

TEST(Skins, HearOfEachKindOfChangeOnce)
{
    ScribeSkin skin;
    Scene scene(&skin);
    Probe* a = scene.add("a", {0, 0, 50, 50});
    skin.journal.clear();
    a->setTooltip(L"tip");
    a->setTooltip(L"tip");
    a->setCursor(MouseCursor::Hand);
    skin.regions.clear();
    a->setPosition({5, 5});
    EXPECT_EQ(skin.journal, "a:128 a:512 a:1 ");
    EXPECT_EQ(skin.regions, (std::vector<Kt::Box<int>>{{0, 0, 50, 50}, {5, 5, 55, 55}})) << "where it was, and is";

    skin.journal.clear();
    {
        const RedrawHold hold;
        a->setPosition({6, 6});
        a->setTooltip(L"other");
        a->redraw();
    }
    EXPECT_EQ(skin.journal, "a:145 ") << "one call with all of it";
    skin.journal.clear();
    a->setVisible(false);
    EXPECT_NE(skin.journal.find("a:"), std::string::npos) << "also when it is not to be seen any more";
    const std::unique_ptr<Glob> taken = scene.panel->removeChild(*a);
    skin.journal.clear();
    taken->setTooltip(L"off the screen");
    EXPECT_EQ(skin.journal, "");
}

TEST(Skins, HearWhereTheKeyboardIsAndMayTakeItOn)
{
    ScribeSkin skin;
    Scene scene(&skin);
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {60, 0, 90, 50});
    a->setFocusable(true);
    b->setFocusable(true);
    const auto tab = [&](unsigned modifiers = 0) { return scene.canvas.inject(Event::keyPress(Key::Tab, modifiers)); };
    tab();
    EXPECT_EQ(skin.focused, a);
    tab();
    EXPECT_EQ(skin.focused, b);
    skin.journal.clear();
    EXPECT_TRUE(tab());
    EXPECT_EQ(skin.journal, "on ");
    skin.takesFocus = false;
    EXPECT_TRUE(tab());
    EXPECT_EQ(skin.focused, a) << "round, where there is nothing else";
    skin.takesFocus = true;
    skin.journal.clear();
    EXPECT_TRUE(tab(Event::kShift));
    EXPECT_EQ(skin.journal, "back ");
    a->dropFocus();
    EXPECT_EQ(skin.focused, nullptr);
}

class MenuProbe : public StandardPanel
{
public:
    explicit MenuProbe(Canvas* canvas)
        : StandardPanel(GlobCreationInfo(100, 50, canvas))
    {
    }

    bool withItems = true;
    int reviews = 0;
    std::string chosen;

protected:
    void reviewMenu(const Event*) override
    {
        ++reviews;
        editMenu().addHeading(L"Selection");
        if (!withItems)
            return;
        editMenu().addItem(L"Select all", "SelectAll");
        editMenu().addItem(L"Clear", [this] { chosen += "cleared "; }).enabled = false;
        editMenu().addSeparator();
        editMenu().addSubmenu(L"More").addItem(L"Reset", [this] { chosen += "reset "; });
        editMenu().addItem(L"Close", [this] { delete this; });
    }

    bool handleMessageEvent(const String& message, Glob*) override
    {
        chosen += message.c_str();
        chosen += " ";
        return true;
    }
};

TEST(Menus, OpenFilledAnewAndDoWhatIsChosen)
{
    Canvas canvas({100, 50});
    GlobRef<MenuProbe> panel(new MenuProbe(&canvas));
    panel->open();
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(canvas.inject(Event::mousePress({10, 10}, MouseButton::Right)));
        canvas.inject(Event::mouseRelease({10, 10}, MouseButton::Right));
    }
    EXPECT_TRUE(panel->isMenuOpen());
    EXPECT_EQ(panel->reviews, 2);
    ASSERT_EQ(panel->menu().items().size(), 6u) << "not filled on top of what was there";

    panel->userChooseMenuItem(panel->menu().items()[1]);
    EXPECT_EQ(panel->chosen, "SelectAll ");
    EXPECT_FALSE(panel->isMenuOpen());
    panel->userChooseMenuItem(panel->menu().items()[1]);
    EXPECT_EQ(panel->chosen, "SelectAll ") << "the menu is closed";

    for (const std::size_t refused : {0u, 2u, 3u, 4u}) {
        ASSERT_TRUE(panel->openMenu({0, 0}));
        panel->userChooseMenuItem(panel->menu().items()[refused]);
        EXPECT_EQ(panel->chosen, "SelectAll ") << refused;
    }
    panel->openMenu({0, 0});
    panel->userChooseMenuItem(panel->menu().items()[4].submenu->items()[0]);
    EXPECT_EQ(panel->chosen, "SelectAll reset ");

    panel->openMenu({0, 0});
    panel->userChooseMenuItem(panel->menu().items()[5]);
    EXPECT_FALSE(panel) << "the item destroys the panel and its menu";
}

TEST(Menus, WithNothingToChooseDoNotOpen)
{
    ScribeSkin skin;
    Canvas canvas({100, 50}, &skin);
    MenuProbe panel(&canvas);
    panel.open();
    panel.withItems = false;
    EXPECT_FALSE(panel.openMenu({3, 4}));
    EXPECT_EQ(skin.menuAt, (XY<int>{-1, -1}));
    panel.withItems = true;
    panel.setActive(false);
    EXPECT_FALSE(panel.openMenu({3, 4})) << "inactive";
    panel.setActive(true);
    EXPECT_TRUE(panel.openMenu({3, 4}));
    EXPECT_EQ(skin.menuAt, (XY<int>{3, 4}));
    panel.userCloseMenu();
    EXPECT_FALSE(panel.isMenuOpen());
}

} // namespace
} // namespace oribund::test

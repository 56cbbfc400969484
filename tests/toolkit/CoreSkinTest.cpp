#include "CoreProbe.h"

#include "oribund/host/toolkit/core/Menu.h"

#include <gtest/gtest.h>

#include <utility>

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
    const auto told = [&] { return std::exchange(skin.journal, {}); };
    told();
    a->setTooltip(L"tip");
    a->setTooltip(L"tip");
    a->setCursor(MouseCursor::Hand);
    skin.regions.clear();
    a->setPosition({5, 5});
    EXPECT_EQ(told(), "a:128 a:512 a:1 ");
    EXPECT_EQ(skin.regions, (std::vector<Kt::Box<int>>{{0, 0, 50, 50}, {5, 5, 55, 55}})) << "where it was, and is";
    {
        const RedrawHold hold;
        a->setPosition({6, 6});
        a->setTooltip(L"other");
        a->redraw();
    }
    EXPECT_EQ(told(), "a:145 ") << "one call with all of it";
    a->setVisible(false);
    EXPECT_NE(told().find("a:"), std::string::npos) << "also when it is not to be seen any more";
    const std::unique_ptr<Glob> taken = scene.panel->removeChild(*a);
    told();
    taken->setTooltip(L"off the screen");
    EXPECT_EQ(told(), "");
}

TEST(Skins, HearWhereTheKeyboardIsAndMayTakeItOn)
{
    ScribeSkin skin;
    Scene scene(&skin);
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {60, 0, 90, 50});
    a->setFocusable(true);
    b->setFocusable(true);
    scene.key(Key::Tab);
    EXPECT_EQ(skin.focused, a);
    scene.key(Key::Tab);
    EXPECT_EQ(skin.focused, b);
    skin.journal.clear();
    EXPECT_TRUE(scene.key(Key::Tab));
    skin.takesFocus = false;
    EXPECT_TRUE(scene.key(Key::Tab));
    EXPECT_EQ(skin.focused, a) << "round, where there is nothing else";
    skin.takesFocus = true;
    EXPECT_EQ(skin.journal.substr(0, 6), "on on ");
    skin.journal.clear();
    EXPECT_TRUE(scene.key(Key::Tab, Event::kShift));
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
    std::string chosen;

protected:
    void reviewMenu(const Event*) override
    {
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
    ScribeSkin skin;
    Canvas canvas({100, 50}, &skin);
    GlobRef<MenuProbe> panel(new MenuProbe(&canvas));
    panel->open();
    const auto choose = [&](std::size_t item) {
        ASSERT_TRUE(panel->openMenu({3, 4}));
        panel->userChooseMenuItem(panel->menu().items()[item]);
    };
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(canvas.inject(Event::mousePress({10, 11}, MouseButton::Right)));
        canvas.inject(Event::mouseRelease({10, 11}, MouseButton::Right));
    }
    EXPECT_TRUE(panel->isMenuOpen());
    EXPECT_EQ(skin.menuAt, (XY<int>{10, 11}));
    ASSERT_EQ(panel->menu().items().size(), 6u) << "not filled on top of what was there";
    panel->userChooseMenuItem(panel->menu().items()[1]);
    EXPECT_FALSE(panel->isMenuOpen());
    panel->userChooseMenuItem(panel->menu().items()[1]);
    EXPECT_EQ(panel->chosen, "SelectAll ") << "the menu is closed";
    for (const std::size_t refused : {0u, 2u, 3u, 4u})
        choose(refused);
    EXPECT_EQ(panel->chosen, "SelectAll ");
    panel->openMenu({0, 0});
    panel->userChooseMenuItem(panel->menu().items()[4].submenu->items()[0]);
    EXPECT_EQ(panel->chosen, "SelectAll reset ");

    panel->withItems = false;
    EXPECT_FALSE(panel->openMenu({0, 0})) << "nothing to choose";
    panel->withItems = true;
    panel->setActive(false);
    EXPECT_FALSE(panel->openMenu({0, 0})) << "inactive";
    panel->setActive(true);
    choose(5);
    EXPECT_FALSE(panel) << "the item destroys the panel and its menu";
}

} // namespace
} // namespace oribund::test

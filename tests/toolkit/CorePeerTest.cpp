#include "CoreProbe.h"

#include "oribund/host/toolkit/core/Menu.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

/** A skin whose peers write down what they are told. */
class ScribeSkin : public Skin
{
public:
    class Peer : public GlobPeer
    {
    public:
        Peer(ScribeSkin& skin, const Glob& glob)
            : skin_(skin)
            , name_(glob.idString().c_str())
        {
            skin_.alive.push_back(name_);
        }

        ~Peer() override
        {
            skin_.journal += "-" + name_ + " ";
            std::erase(skin_.alive, name_);
        }

        void refresh(unsigned changes) override { skin_.journal += name_ + ":" + std::to_string(changes) + " "; }

    private:
        ScribeSkin& skin_;
        std::string name_;
    };

    std::unique_ptr<GlobPeer> makePeer(Label&) override { return nullptr; }

    std::unique_ptr<GlobPeer> makePeer(Button&) override { return nullptr; }

    std::unique_ptr<GlobPeer> makePeer(Checkbox&) override { return nullptr; }

    std::unique_ptr<GlobPeer> makePeer(Slider&) override { return nullptr; }

    std::unique_ptr<GlobPeer> makePeer(TextBox&) override { return nullptr; }

    std::unique_ptr<GlobPeer> makePeer(DropDownMenuButton&) override { return nullptr; }

    std::unique_ptr<GlobPeer> makePeer(TableWidget&) override { return nullptr; }

    std::unique_ptr<GlobPeer> makePaintPeer(Glob& glob) override { return std::make_unique<Peer>(*this, glob); }

    std::unique_ptr<GlobPeer> makeContainerPeer(Glob& glob) override { return std::make_unique<Peer>(*this, glob); }

    void openMenu(MenuGlob&, const XY<int>& at) override { menuAt = at; }

    void openColourChooser(ColourSwatch&) override {}

    std::string journal;
    std::vector<std::string> alive;
    XY<int> menuAt{-1, -1};
};

constexpr unsigned kAll = PeerChange::kAll;

TEST(Peers, AreMadeFromTheRootDownAndToldEverythingOnce)
{
    ScribeSkin skin;
    Canvas canvas({100, 100}, &skin);
    StandardPanel panel{GlobCreationInfo(100, 100, &canvas)};
    Glob& outer = panel.addChild(std::make_unique<Probe>("outer", XY<int>{50, 50}));
    outer.addChild(std::make_unique<Probe>("inner", XY<int>{10, 10}));
    EXPECT_EQ(skin.journal, "") << "nothing to show yet";
    EXPECT_EQ(outer.peer(), nullptr);

    {
        const RedrawHold hold;
        panel.open();
    }
    EXPECT_EQ(skin.journal.find(":1023 outer:1023 inner:1023 "), 0u) << skin.journal;
    EXPECT_NE(outer.peer(), nullptr);
    EXPECT_EQ(skin.alive.size(), 3u);
}

TEST(Peers, GoBeforeThoseOfTheirParents)
{
    ScribeSkin skin;
    auto scene = std::make_unique<Scene>(&skin);
    Probe* outer = scene->add("outer", {0, 0, 50, 50});
    scene->add("inner", {0, 0, 10, 10}, outer);
    skin.journal.clear();
    const std::unique_ptr<Glob> taken = scene->panel->removeChild(*outer);
    EXPECT_EQ(skin.journal, "-inner -outer ");
    EXPECT_EQ(outer->peer(), nullptr);

    scene->add("a", {0, 0, 10, 10});
    skin.journal.clear();
    scene->panel.reset();
    EXPECT_EQ(skin.journal, "-a - ");
    EXPECT_TRUE(skin.alive.empty());
}

TEST(Peers, HearOfEachKindOfChangeOnce)
{
    ScribeSkin skin;
    Scene scene(&skin);
    Probe* a = scene.add("a", {0, 0, 50, 50});
    a->setFocusable(true);
    skin.journal.clear();

    a->setTooltip(L"tip");
    a->setTooltip(L"tip");
    a->setCursor(MouseCursor::Hand);
    a->setPosition({5, 5});
    a->takeFocus();
    EXPECT_EQ(skin.journal, "a:128 a:512 a:1 a:272 ");

    skin.journal.clear();
    {
        const RedrawHold hold;
        a->setPosition({6, 6});
        a->setTooltip(L"other");
        a->redraw();
    }
    EXPECT_EQ(skin.journal, "a:145 ") << "one refresh with all of it";

    skin.journal.clear();
    a->setVisible(false);
    EXPECT_NE(skin.journal.find("a:"), std::string::npos) << "also when it is not to be seen any more";
}

TEST(Peers, InputOfANativeWidgetIsGrabbedAndBubblesLikeAnInjectedOne)
{
    ScribeSkin skin;
    Scene scene(&skin);
    Probe* outer = scene.add("outer", {10, 10, 60, 60});
    Probe* inner = scene.add("inner", {5, 5, 20, 20}, outer);
    outer->takes = true;
    EXPECT_TRUE(inner->userEvent(Event::mousePress({1, 2})));
    EXPECT_EQ(outer->last().position, (XY<int>{6, 7}));
    EXPECT_TRUE(inner->userEvent(Event::mouseMove({300, 2}, MouseButton::Left)));
    EXPECT_EQ(outer->last().position, (XY<int>{305, 7}));
    EXPECT_EQ(inner->count(EventCode::MouseMove), 0u);
    inner->userEvent(Event::mouseRelease({300, 2}));

    inner->setFocusable(true);
    inner->userFocus(true);
    EXPECT_TRUE(inner->hasFocus());
    inner->userFocus(true);
    inner->userFocus(false);
    EXPECT_EQ(inner->count(EventCode::FocusIn), 1u);
    EXPECT_EQ(inner->count(EventCode::FocusOut), 1u);

    scene.panel->close();
    EXPECT_FALSE(inner->userEvent(Event::mousePress({1, 2})));
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

#include "WidgetsSupport.h"
#include "tests/support/Listener.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Menu.h"
#include "oribund/host/toolkit/menus/TitledMenuButtonPlain.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/host/toolkit/widgets/ValButton.h"
#include "oribund/host/toolkit/widgets/ValCheckbox.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

TEST(Buttons, AClickIsAPressAndReleaseOnItOrAKey)
{
    Desk desk;
    Button::InitArgs args;
    args.message = "reset";
    auto* button = desk.add<Button>(args);
    const Listener clicks(button->clicks());
    desk.press({5, 10});
    EXPECT_TRUE(button->isPressed());
    desk.drag({200, 200});
    EXPECT_FALSE(button->isPressed());
    desk.release({200, 200});
    EXPECT_EQ(clicks.count(), 0u) << "let go elsewhere";
    desk.click({5, 10});
    desk.key(Key::Space);
    desk.key(Key::Enter);
    EXPECT_EQ(clicks.count(), 3u);
    EXPECT_EQ(desk.panel->messages, std::vector<String>(3, "reset")) << "for whoever the button stands in";
    Event repeat = Event::keyPress(Key::Space);
    repeat.autoRepeat = true;
    desk.canvas.inject(repeat);
    desk.canvas.inject(Event::mouseMove({5, 10}));
    EXPECT_TRUE(button->isHot());
    button->setEnabled(false);
    desk.click({5, 10});
    button->userClick();
    EXPECT_EQ(clicks.count(), 3u);
    desk.canvas.inject(Event::mouseMove({300, 200}));
    button->setEnabled(true);
    EXPECT_FALSE(button->isHot()) << "disabled under the pointer it forgets the pointer";
}

TEST(Buttons, StatesAreShownAndCheckableOnesSwitch)
{
    Desk desk;
    Button::InitArgs args;
    args.checkable = true;
    auto* button = desk.add<Button>(args);
    const Colour accent = button->getPalette().accent();
    EXPECT_FALSE(Desk::draws(*button, accent));
    button->userClick();
    EXPECT_EQ(button->getState(), Button::eOn);
    EXPECT_TRUE(Desk::draws(*button, accent));
    button->setState(Button::eMixed);
    EXPECT_TRUE(Desk::draws(*button, button->getPalette().focus()));
    button->userClick();
    EXPECT_EQ(button->getState(), Button::eOn) << "what is half on is switched on first";
    button->setState(17);
    EXPECT_EQ(button->getState(), Button::eOff);
}

class Checkboxes : public testing::Test
{
protected:
    Checkboxes() { box->setDataAdaptor(adaptor); }

    Kt::Ptr<StoreAdaptor<bool>> adaptor = Kt::makePtr<StoreAdaptor<bool>>();
    Desk desk;
    ValCheckbox* box = desk.add<ValCheckbox>();
};

TEST_F(Checkboxes, ATogglesWritesOnceHoweverOftenItIsAskedTo)
{
    Listener toggles(box->events());
    // As a panel does that answers the event with the box's own message.
    toggles.then = [&](const auto&) { box->sendMsg(box->getMessage()); };
    desk.click({5, 12});
    ASSERT_EQ(toggles.count(), 1u);
    EXPECT_EQ(static_cast<int>(toggles.heard[0].kind), 0);
    EXPECT_TRUE(toggles.heard[0].checked);
    EXPECT_TRUE(adaptor->value);
    EXPECT_EQ(adaptor->kinds(), ".");

    toggles.then = {};
    desk.key(Key::Space);
    EXPECT_FALSE(adaptor->value);
    EXPECT_EQ(adaptor->kinds(), "..");
    box->setChecked(true); // by the program: no edit, until the box gets its message
    EXPECT_EQ(adaptor->kinds(), "..");
    box->sendMsg(box->getMessage());
    EXPECT_TRUE(adaptor->value);
    EXPECT_FALSE(box->sendMsg("other"));
}

TEST_F(Checkboxes, RefusedOrDisabledItShowsWhatItShowedBefore)
{
    adaptor->refuses = true;
    box->userToggle();
    EXPECT_FALSE(box->isChecked());
    adaptor->refuses = false;
    adaptor->setWidgetEnabledState(false);
    desk.click({5, 12});
    box->userToggle();
    EXPECT_FALSE(box->isChecked());
    EXPECT_EQ(adaptor->kinds(), ".");
}

class MenuButtons : public testing::Test
{
protected:
    MenuButtons()
    {
        button->setItems({L"Normal", L"Add", L"Multiply", L"Alpha"});
        button->setDataAdaptor(adaptor);
    }

    Kt::Ptr<StoreAdaptor<unsigned>> adaptor = Kt::makePtr<StoreAdaptor<unsigned>>(1u);
    Desk desk;
    ValMenuButton* button = desk.add<ValMenuButton>();
};

TEST_F(MenuButtons, TheMenuListsTheItemsAndAChoiceIsAnEdit)
{
    desk.press({5, 10});
    ASSERT_TRUE(button->isMenuOpen());
    const auto& items = button->menu().items();
    ASSERT_EQ(items.size(), 4u);
    EXPECT_TRUE(items[1].checked);
    EXPECT_FALSE(items[0].checked);
    button->userChooseMenuItem(items[2]);
    EXPECT_EQ(adaptor->value, 2u);
    EXPECT_FALSE(button->isMenuOpen());
    button->userSelect(2);
    button->userSelect(9);
    EXPECT_EQ(adaptor->kinds(), ".");
}

TEST_F(MenuButtons, ArrowsAndLettersChooseWithoutTheMenu)
{
    button->takeFocus();
    desk.key(Key::Up);
    desk.key(Key::Up); // the first is the last upwards
    EXPECT_EQ(adaptor->value, 0u);
    desk.type(L"aA");
    EXPECT_EQ(adaptor->value, 3u) << "the next with that letter";
    desk.type(L"d");
    EXPECT_EQ(adaptor->value, 1u) << "that begins with both";
    desk.key(Key::Down);
    desk.type(L"x");
    EXPECT_EQ(adaptor->kinds(), ".....");
    button->setItems({});
    for (const Key key : {Key::Up, Key::Down, Key::Home, Key::End})
        desk.key(key);
    desk.type(L"a");
    EXPECT_EQ(adaptor->kinds(), ".....");
}

TEST_F(MenuButtons, ARefusedChoiceIsTakenBackAndADisabledButtonOffersNone)
{
    adaptor->refuses = true;
    button->userSelect(3);
    EXPECT_EQ(button->getSelected(), 1u);
    adaptor->refuses = false;
    adaptor->convert = [](const unsigned&) { return 1u; };
    button->userSelect(3);
    EXPECT_EQ(button->getSelected(), 1u) << "taken, but as something else";
    button->setDataAdaptor(nullptr);
    button->userSelect(0);
    EXPECT_EQ(button->getSelected(), 1u) << "nobody to take it";
    button->setEnabled(false);
    desk.press({5, 10});
    EXPECT_FALSE(button->isMenuOpen());
    EXPECT_EQ(adaptor->kinds(), "..");
}

TEST(Buttons, AValueWithALookIsShownByIt)
{
    Desk desk;
    auto* button = desk.add<ValButton>();
    const auto state = Kt::makePtr<StoreAdaptor<String>>("gone");
    button->addLook({"here", Image::icon("key-here"), Button::eOn, L"Remove the keyframe"});
    button->setDataAdaptor(state);
    for (const bool here : {true, false}) {
        state->setNewWidgetValue(here ? "here" : "gone", eRedrawFlag::Yes);
        EXPECT_EQ(button->getIcon(), here ? Image::icon("key-here") : Image());
        EXPECT_EQ(button->getState(), here ? Button::eOn : Button::eOff);
        EXPECT_EQ(Desk::drawn(*button).findText(L"gone") == nullptr, here);
        EXPECT_EQ(button->accessibleName(), UIString(here ? L"Remove the keyframe" : L"gone"));
    }
}

TEST(TitledMenu, TheMenuFillsTheRowUnlessItIsSizedToItsItems)
{
    TitledMenuButtonPlain::InitArgs args;
    args.title = L"Blend";
    args.titleWidth = 80;
    args.width = 300;
    args.items = {L"Normal", L"Multiply"};
    TitledMenuButtonPlain row(args);
    const ValMenuButton& menu = row.menuButton();
    const int height = row.getHeight();
    EXPECT_EQ(menu.accessibleName(), UIString(L"Blend"));
    EXPECT_EQ(menu.box(), (Kt::Box<int>{80 + UifStd::getWidgetGap(), 0, 300, height}));
    const int natural = menu.calcNaturalSize().x;
    row.resize({natural + 40, height});
    EXPECT_LT(menu.getWidth(), natural) << "a fixed title leaves it what remains";
    row.setTitleResize(TitledMenuButtonPlain::TitleResize::Shrinks);
    EXPECT_EQ(menu.getWidth(), natural);
    row.resize({10, height});
    EXPECT_EQ(menu.box(), (Kt::Box<int>{0, 0, 10, height}));
}

TEST(Labels, ATextThatIsCutShortIsItsTooltip)
{
    Desk desk;
    Label::InitArgs args;
    args.text = L"Saturation";
    auto* label = desk.add<Label>(args);
    EXPECT_TRUE(label->tooltip().empty());
    label->resize({20, 20});
    EXPECT_EQ(label->tooltip(), UIString(L"Saturation"));
    label->setTooltip(L"Strength of colour");
    EXPECT_EQ(label->tooltip(), UIString(L"Strength of colour"));
    EXPECT_EQ(label->accessibleName(), UIString(L"Saturation"));
}

} // namespace
} // namespace oribund::test

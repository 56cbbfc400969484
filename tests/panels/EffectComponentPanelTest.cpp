#include "tests/support/FakeFXEditor.h"
#include "tests/support/Listener.h"
#include "tests/support/TestHost.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/edit/iTransitionsHost.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/Menu.h"
#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/menus/SettingsButton.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/panels/EffectComponentPanel.h"
#include "oribund/panels/FXPanelFactory.h"
#include "oribund/panels/RemoveComponent.h"
#include "oribund/panels/iEffectPanelBuilder.h"
#include "oribund/panels/iVideoOverlayRenderer.h"

#include <gtest/gtest.h>

#include <vector>

namespace oribund
{
namespace
{

using Options = FXPanelCreationOptions;

class ComponentPanel : public testing::Test
{
protected:
    std::unique_ptr<EffectComponentPanel> makePanel(unsigned flags)
    {
        auto panel = std::make_unique<EffectComponentPanel>(Options(view, 300, &canvas, flags));
        panel->open();
        return panel;
    }

    template <class Widget>
    static Widget* in(const Glob& panel)
    {
        std::vector<Glob*> children;
        panel.getChildren(children);
        for (Glob* child : children) {
            if (auto* found = dynamic_cast<Widget*>(child))
                return found;
        }
        return nullptr;
    }

    static Checkbox* ledOf(const EffectComponentPanel& panel) { return in<Checkbox>(panel); }

    void click(const Glob& glob, unsigned modifiers = 0)
    {
        const XY<int> at = glob.toCanvas({glob.getWidth() / 2, glob.getHeight() / 2});
        canvas.inject(Event::mousePress(at, MouseButton::Left, modifiers));
        canvas.inject(Event::mouseRelease(at, MouseButton::Left, modifiers));
    }

    test::TestHost host;
    Canvas canvas{{400, 300}};
    test::EditableVob vob;
    Kt::Ptr<EffectInstance> effect = Kt::makePtr<EffectInstance>(IdStamp(0, 0, 7), String("blur"), WString(L"Blur"));
    FXViewHandle view = vob.add(effect);
};

TEST_F(ComponentPanel, TheLedSwitchesTheEffectInOneStep)
{
    const auto panel = makePanel(Options::kDefaultFlags);
    Checkbox* const led = ledOf(*panel);
    ASSERT_TRUE(led);
    EXPECT_TRUE(led->isChecked());
    EXPECT_EQ(displayText(led->accessibleName()), WString(L"Switch Blur on or off"));
    EXPECT_GE(led->getPosition().x + led->getWidth(), panel->getWidth() - 12) << "at the right of the title";

    const test::Listener listener(vob.edit->modifications());
    click(*led);
    EXPECT_FALSE(effect->isEnabled());
    EXPECT_EQ(vob.edit->steps, 1);
    ASSERT_EQ(listener.heard.size(), 1u);
    EXPECT_EQ(static_cast<int>(listener.heard[0].type), 17);
    EXPECT_EQ(listener.heard[0].detail, 11);
    EXPECT_EQ(listener.heard[0].count, 1);
}

TEST_F(ComponentPanel, FollowsTheEffectWhoeverSwitchesIt)
{
    const auto panel = makePanel(Options::kDefaultFlags);
    effect->setEnabled(false);
    vob.monitor->tell(EffectChangeCode::EnabledChanged, IdStamp(0, 0, 99));
    EXPECT_TRUE(ledOf(*panel)->isChecked()) << "another effect's change";
    vob.monitor->tell(EffectChangeCode::EnabledChanged, effect->id());
    EXPECT_FALSE(ledOf(*panel)->isChecked());

    vob.edit->readOnly = true;
    vob.monitor->tell(EffectChangeCode::EditabilityChanged, IdStamp::wildcard());
    EXPECT_FALSE(ledOf(*panel)->isEnabled());
    click(*ledOf(*panel));
    EXPECT_FALSE(effect->isEnabled());
    EXPECT_EQ(vob.edit->steps, 0);
}

TEST_F(ComponentPanel, HasTheTitleAreaThatItsFlagsAskFor)
{
    const auto bare = makePanel(Options::kEnableLed | Options::kMinimisable | Options::kResizable);
    EXPECT_EQ(ledOf(*bare), nullptr) << "the LED needs a title bar";
    EXPECT_EQ(bare->getTitleHeight(), 0);
    bare->userToggleSizeState();
    EXPECT_EQ(bare->getSizeState(), Glob::eSizeNormal) << "and so does folding";
    bare->close();
    EXPECT_EQ(ledOf(*makePanel(Options::kTitleBar)), nullptr);

    const auto fixed = makePanel(Options::kTitleBar | Options::kResizable);
    const XY<int> title = fixed->toCanvas({20, fixed->getTitleHeight() / 2});
    canvas.inject(Event::mousePress(title));
    canvas.inject(Event::mouseRelease(title));
    EXPECT_EQ(fixed->getSizeState(), Glob::eSizeNormal) << "not minimisable";
    fixed->close();

    const auto folding = makePanel(Options::kTitleBar | Options::kMinimisable | Options::kResizable);
    folding->userToggleSizeState();
    EXPECT_EQ(folding->getSizeState(), Glob::eSizeMinimised);
    const auto locked = makePanel(Options::kTitleBar | Options::kMinimisable);
    locked->userToggleSizeState();
    EXPECT_EQ(locked->getSizeState(), Glob::eSizeNormal) << "size change is not allowed yet";
}

TEST_F(ComponentPanel, OutlivesItsEffect)
{
    const auto panel = makePanel(Options::kDefaultFlags);
    vob.monitor->effects.clear();
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, effect->id());
    vob.monitor->tell(EffectChangeCode::EnabledChanged, IdStamp::wildcard());
    click(*ledOf(*panel));
    EXPECT_EQ(vob.edit->steps, 0);
    EXPECT_TRUE(effect->isEnabled());
}

/** With a second effect on the track, and what a user does with the menu. */
class ComponentMenu : public ComponentPanel
{
protected:
    ComponentMenu() { vob.add(other); }

    /** Opens the menu by its button. */
    const Menu& open(const EffectComponentPanel& panel)
    {
        click(*in<SettingsButton>(panel));
        EXPECT_TRUE(panel.isMenuOpen());
        return panel.menu();
    }

    static const MenuItem* find(const Menu& menu, const wchar_t* label)
    {
        for (const MenuItem& item : menu.items()) {
            if (displayText(item.label) == WString(label))
                return &item;
        }
        return nullptr;
    }

    void choose(EffectComponentPanel& panel, const wchar_t* label)
    {
        const MenuItem* const item = find(open(panel), label);
        ASSERT_TRUE(item);
        panel.userChooseMenuItem(*item);
    }

    static std::vector<std::string> labels(const Menu& menu, bool enabled)
    {
        std::vector<std::string> all;
        for (const MenuItem& item : menu.items()) {
            if (item.kind == MenuItem::Kind::Action && item.enabled == enabled)
                all.emplace_back(toUTF8(displayText(item.label)).c_str());
        }
        return all;
    }

    using Labels = std::vector<std::string>;

    Kt::Ptr<EffectInstance> other = Kt::makePtr<EffectInstance>(IdStamp(0, 0, 8), String("keyer"), WString(L"Key"));
};

TEST_F(ComponentMenu, StandsLeftOfTheLedOrAtTheEndWithoutOne)
{
    const auto both = makePanel(Options::kDefaultFlags);
    const auto* const settings = in<SettingsButton>(*both);
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->box().right + 2, ledOf(*both)->box().left);
    EXPECT_EQ(settings->box().centre().y, both->getTitleArea().centre().y);
    EXPECT_FALSE(both->widgetVisibilityCanChange(settings));
    both->close();
    const auto alone = makePanel(Options::kTitleBar | Options::kSettingsButton);
    EXPECT_EQ(in<SettingsButton>(*alone)->box().right, alone->getTitleArea().right);
    alone->close();
    EXPECT_FALSE(in<SettingsButton>(*makePanel(Options::kSettingsButton)));
}

TEST_F(ComponentMenu, OffersWhatTheHostDoesAndWhatCanBeDoneNow)
{
    const auto panel = makePanel(Options::kDefaultFlags);
    EXPECT_EQ(labels(open(*panel), true),
              (Labels{"Reset all", "Keyframe all", "Copy settings", "Rename", "Mask", "Move down", "Remove"}));
    EXPECT_EQ(labels(panel->menu(), false), (Labels{"Paste settings", "Move up"}));
    panel->userCloseMenu();

    choose(*panel, L"Copy settings");
    vob.edit->readOnly = true;
    vob.editor.lacks = FXEditor::Command::Rename;
    EXPECT_EQ(labels(open(*panel), true), Labels{"Copy settings"}) << "which changes nothing";
    EXPECT_FALSE(find(panel->menu(), L"Rename"));
    panel->close();

    EffectComponentPanel keyer(Options(FXViewHandle(vob.monitor->getFXVob(other)), 300, &canvas, 0x1F7));
    keyer.open();
    const MenuItem* const mask = find(open(keyer), L"No mask: A keyer makes a mask itself.");
    ASSERT_TRUE(mask);
    EXPECT_FALSE(mask->enabled);
    host.focusedVob = &vob;
    EXPECT_TRUE(EffectComponentPanel::isMaskable(effect));
    EXPECT_FALSE(EffectComponentPanel::isMaskable(other));
}

TEST_F(ComponentMenu, RemovesTheEffectAlsoFromUnderItsOwnPanel)
{
    auto panel = makePanel(Options::kDefaultFlags);
    vob.playing = true;
    // A host that shows the panels of what there is, at once.
    const test::Listener<EffectChangeDescription> listener(vob.monitor->changes(), [&](const EffectChangeDescription&) {
        if (!vob.monitor->findEffect(effect->id()))
            panel.reset();
    });
    choose(*panel, L"Remove");
    EXPECT_FALSE(panel);
    EXPECT_FALSE(vob.editor.wasPlaying) << "playing was stopped first";
    EXPECT_EQ(vob.edit->steps, 1);
    EXPECT_EQ(displayText(UIString(vob.edit->title)), WString(L"Remove Blur"));
}

TEST_F(ComponentMenu, RemovesATransitionFromItsCutAndNothingThatIsGone)
{
    struct Transitions : iTransitionsHost {
        bool removeVideoTransition(const IdStamp& track, double editTime) override
        {
            removed = {track, editTime};
            return true;
        }

        std::pair<IdStamp, double> removed;
    };

    struct TransitionVob : test::EditableVob {
        iTransitionsHost* transitionsHost() override { return &transitions; }

        Transitions transitions;
    } cut;

    cut.add(effect);
    cut.setCurrentTime(3.0);
    cut.editor.node = FXEditor::Node::VideoTransition;
    EXPECT_TRUE(removeComponent(cut, effect));
    EXPECT_EQ(cut.transitions.removed, std::make_pair(test::FakeMonitor::track(), 3.0));
    EXPECT_TRUE(cut.monitor->findEffect(effect->id())) << "whose effect goes with it, or not";
    cut.editor.node = FXEditor::Node::None;
    EXPECT_FALSE(removeComponent(cut, effect));
    EXPECT_EQ(cut.edit->steps, 1);
}

TEST_F(ComponentMenu, RenamesTheEffectInItsTitle)
{
    const auto panel = makePanel(Options::kDefaultFlags);
    const auto type = [&](const WString& name) {
        choose(*panel, L"Rename");
        auto* const box = in<TextBox>(*panel);
        ASSERT_TRUE(box);
        EXPECT_TRUE(box->hasFocus());
        box->userEdit(name);
        canvas.inject(Event::keyPress(Key::Enter));
    };
    type(L"Haze");
    EXPECT_EQ(effect->getName(), WString(L"Haze"));
    EXPECT_EQ(displayText(panel->getTitle()), WString(L"Haze"));
    EXPECT_EQ(displayText(ledOf(*panel)->accessibleName()), WString(L"Switch Haze on or off"));
    EXPECT_EQ(displayText(panel->tooltip()), WString(L"Haze on V1"));
    type(L"");
    EXPECT_EQ(displayText(panel->getTitle()), WString(L"Blur")) << "its first name";
    type(WString(std::wstring(10000, L'x').c_str()));
    EXPECT_LE(effect->getName().size(), 1024u);
    vob.editor.refusesNames = true;
    type(L"Mist");
    EXPECT_EQ(panel->getTitle(), UIString(effect->getName()));
}

TEST_F(ComponentMenu, CtrlOnTheLedSwitchesAllOfTheTrack)
{
    const auto panel = makePanel(Options::kDefaultFlags);
    click(*ledOf(*panel), Event::kCtrl | Event::kShift);
    EXPECT_EQ(vob.edit->steps, 0) << "means nothing";
    click(*ledOf(*panel), Event::kCtrl);
    EXPECT_FALSE(effect->isEnabled());
    EXPECT_FALSE(other->isEnabled());
    EXPECT_EQ(vob.edit->steps, 1);
    vob.monitor->tell(EffectChangeCode::EnabledChanged, effect->id());
    click(*ledOf(*panel), Event::kCtrl);
    EXPECT_TRUE(effect->isEnabled() && other->isEnabled());
}

TEST_F(ComponentPanel, ActiveOrNotItsTitleShowsWhatAClickDoes)
{
    const auto cursors = [this](unsigned flags) {
        const auto panel = makePanel(flags);
        std::vector<int> shown;
        for (const bool active : {true, false, true}) {
            panel->setActive(active);
            shown.push_back(static_cast<int>(panel->contextCursor(panel->getTitleArea().centre())));
            EXPECT_EQ(panel->isTitleEditable(), active);
            const bool follows = flags & Options::kGroupTitleColour;
            EXPECT_EQ(panel->isTitleActive() && panel->isSizeChangeEnabled(), active || !follows);
        }
        return shown;
    };
    EXPECT_EQ(cursors(Options::kDefaultFlags), (std::vector{15, 16, 15}));
    EXPECT_EQ(cursors(Options::kTitleBar | Options::kGroupTitleColour), (std::vector{20, 16, 20}));
}

TEST_F(ComponentPanel, IsDraggedByItsTitleWhereSomebodyListens)
{
    const auto panel = makePanel(Options::kDefaultFlags);
    const XY<int> title = panel->toCanvas({40, 10});
    const auto drag = [&](bool escape) {
        canvas.inject(Event::mousePress(title));
        canvas.inject(Event::mouseMove(title + XY<int>{0, 4}, MouseButton::Left));
        canvas.inject(Event::mouseMove(title + XY<int>{0, 40}, MouseButton::Left));
        canvas.inject(Event::mouseMove(title + XY<int>{0, 60}, MouseButton::Left));
        if (escape)
            canvas.inject(Event::keyPress(Key::Escape));
        canvas.inject(Event::mouseRelease(title));
    };
    using Kind = TitleDragEvent::Kind;
    drag(false);
    EXPECT_EQ(panel->getSizeState(), Glob::eSizeMinimised) << "without a listener it is a click";
    panel->userToggleSizeState();

    std::vector<Kind> kinds;
    int lastY = 0;
    const test::Listener<TitleDragEvent> listener(panel->titleDrags(), [&](const TitleDragEvent& event) {
        kinds.push_back(event.kind);
        lastY = event.canvasPosition.y;
    });
    drag(false);
    EXPECT_EQ(kinds, (std::vector{Kind::Begun, Kind::Moved, Kind::Dropped}));
    EXPECT_EQ(lastY, title.y);
    drag(true);
    EXPECT_EQ(kinds.back(), Kind::Cancelled);
    EXPECT_EQ(panel->getSizeState(), Glob::eSizeNormal) << "a drag is no click";
    const auto told = kinds.size();
    canvas.inject(Event::mousePress(title));
    canvas.inject(Event::mouseRelease(title));
    EXPECT_EQ(kinds.size(), told);
    EXPECT_EQ(panel->getSizeState(), Glob::eSizeMinimised);
}

/** Panels that show their masks, as a builder makes them. */
class MaskedPanel : public ComponentMenu
{
protected:
    struct Panel : EffectComponentPanel {
        explicit Panel(const Options& options)
            : EffectComponentPanel(options)
        {
            addWidget(std::make_unique<Glob>(InitArgs(10, 20)), UserTopLeft(0, 0));
            showMask();
        }

        using EffectComponentPanel::showMask;
    };

    struct Builder : iEffectPanelBuilder {
        bool canBuild(int kind, const String&) override { return kind == kComponentPanel; }

        EffectComponentPanel* buildComponentPanel(const Options& options) override { return new Panel(options); }

        Kt::Ptr<iVideoOverlayRenderer> buildOverlayRenderer(Vob*, const Kt::Ptr<EffectInstance>&) override
        {
            return {};
        }
    };

    MaskedPanel() { FXPanelFactory::instance().add(Kt::Ptr<iEffectPanelBuilder>(Kt::makePtr<Builder>())); }

    ~MaskedPanel() override { FXPanelFactory::instance().removePanelBuilder("blur"); }
};

TEST_F(MaskedPanel, TheMaskStandsBelowTheEffectAndComesAndGoesWithIt)
{
    Panel panel(Options(view, 300, &canvas, Options::kDefaultFlags));
    panel.open();
    EXPECT_FALSE(panel.getMaskPanel());
    const int height = panel.getHeight();
    choose(panel, L"Mask");
    const auto* const mask = dynamic_cast<EffectComponentPanel*>(panel.getMaskPanel());
    ASSERT_TRUE(mask);
    EXPECT_EQ(mask->getFlags(), 0x13Au);
    EXPECT_EQ(displayText(mask->getTitle()), WString(L"Mask")) << "whatever it is called";
    EXPECT_FALSE(mask->isMinimisable());
    EXPECT_FALSE(mask->isTitleEditable());
    EXPECT_EQ(mask->getEffectPtr(), effect->getMask());
    EXPECT_GE(panel.getHeight(), height + mask->getHeight());

    const Glob* const later = panel.addWidget(std::make_unique<Glob>(Glob::InitArgs(10, 20)), Glob::UserTopLeft(0, 90));
    panel.showMask();
    EXPECT_EQ(panel.previousWidget(), panel.getMaskPanel()) << "last of all";
    EXPECT_GE(panel.getMaskPanel()->box().top, later->box().bottom);

    EXPECT_TRUE(find(open(panel), L"Mask")->checked);
    panel.userChooseMenuItem(*find(panel.menu(), L"Mask"));
    EXPECT_FALSE(panel.getMaskPanel());
}

} // namespace
} // namespace oribund

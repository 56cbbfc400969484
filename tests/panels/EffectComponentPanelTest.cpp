#include "tests/support/FakeView.h"
#include "tests/support/Listener.h"
#include "tests/support/TestHost.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/panels/EffectComponentPanel.h"

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

    static Checkbox* ledOf(const EffectComponentPanel& panel)
    {
        std::vector<Glob*> children;
        panel.getChildren(children);
        for (Glob* child : children) {
            if (auto* led = dynamic_cast<Checkbox*>(child))
                return led;
        }
        return nullptr;
    }

    void click(const Glob& glob)
    {
        const XY<int> at = glob.toCanvas({glob.getWidth() / 2, glob.getHeight() / 2});
        canvas.inject(Event::mousePress(at));
        canvas.inject(Event::mouseRelease(at));
    }

    test::TestHost host;
    Canvas canvas{{400, 300}};
    test::FakeVob vob;
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

} // namespace
} // namespace oribund

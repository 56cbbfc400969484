#include "tests/controls/TrackFixture.h"

#include "oribund/controls/keyframes/CompoundEffectKeyframeButtons.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/widgets/Button.h"

#include <string>

namespace oribund::test
{
namespace
{

class KeyframeButtons : public Track
{
protected:
    KeyframeButtons()
    {
        CompoundEffectKeyframeButtons::InitArgs args;
        args.vob = vob.get();
        args.track = FakeMonitor::track();
        buttons = panel->addWidget(std::make_unique<CompoundEffectKeyframeButtons>(args), Glob::UserTopLeft(0, 0));
        buttons->getChildren(children);
    }

    Button& button(std::size_t index) const { return dynamic_cast<Button&>(*children[index]); }

    /** One letter for each button that can be used: previous, next, add, delete, zoom. */
    std::string states() const
    {
        std::string all;
        for (std::size_t i = 0; i < 5; ++i)
            all += button(i).isEnabled() ? "pnadz"[i] : '-';
        return all;
    }

    std::string statesAt(double time)
    {
        vob->setCurrentTime(time);
        return states();
    }

    CompoundEffectKeyframeButtons* buttons;
    std::vector<Glob*> children;
};

enum : std::size_t { kPrevious, kNext, kAdd, kDelete, kZoom, kLabel };

TEST_F(KeyframeButtons, AreUsableWhereTheyDoSomething)
{
    EXPECT_EQ(statesAt(9.0), "-n--z") << "nothing is animated";
    EXPECT_EQ(statesAt(15.0), "pn--z");
    addParam(*effect, L"Amount", {12.0, 14.0});
    EXPECT_EQ(statesAt(10.0), "-na-z");
    EXPECT_EQ(statesAt(12.0), "pn-dz") << "every animated parameter has one here";
    addParam(*effect, L"Size", {14.0});
    EXPECT_EQ(states(), "pnadz") << "one of two has";
    EXPECT_EQ(statesAt(14.0), "pn-dz");
    EXPECT_EQ(statesAt(20.0), "p-a-z");
    EXPECT_EQ(statesAt(21.0), "p---z") << "outside the effect";
    vob->monitor->selectKeyframe({effect->id(), IdStamp(1, 0, 1), 0.2}, true);
    EXPECT_EQ(statesAt(13.0), "pnadz") << "what is selected elsewhere can be removed";
    vob->edit->readOnly = true;
    vob->edit->addModification({});
    EXPECT_EQ(states(), "pn--z");
    vob->edit->readOnly = false;
    const auto second = addEffect(8, 10.0, 15.0);
    vob->monitor->selectAllKeyframes(IdStamp::wildcard(), {}, false);
    EXPECT_EQ(statesAt(14.0), "pnadz") << "an effect that has none";
    addParam(*second, L"Size", {14.0});
    EXPECT_EQ(states(), "pn-dz") << "all that is animated has one";
    EXPECT_EQ(statesAt(16.0), "p---z") << "past the last effect of the stack";
}

TEST_F(KeyframeButtons, TheZoomToggleAsksTheOwner)
{
    addParam(*effect, L"Amount", {12.0});
    button(kZoom).userClick();
    EXPECT_EQ(panel->messages.back(), CompoundEffectKeyframeButtons::zoomInMsg);
    EXPECT_FALSE(buttons->isZoomActive()) << "that is for the owner to say";
    buttons->setVisibleWindowExtents({FXTime{0.2}, FXTime{0.6}}, {FXTime{0.0}, FXTime{1.0}});
    EXPECT_EQ(button(kZoom).getIcon().iconName(), "zmout");
    button(kZoom).userClick();
    EXPECT_EQ(panel->messages.back(), CompoundEffectKeyframeButtons::zoomOutMsg);
    buttons->setVisibleWindowExtents({FXTime{0.0}, FXTime{1.0}}, {FXTime{0.0}, FXTime{1.0}});
    EXPECT_EQ(button(kZoom).getIcon().iconName(), "zmin");
}

TEST_F(KeyframeButtons, TabReachesThemAndTheKeyboardIsNotLostWhenAButtonIsOutOfUse)
{
    const auto amount = addParam(*effect, L"Amount", {12.0, 20.0});
    vob->setCurrentTime(12.0);
    for (const std::size_t expected : {kPrevious, kNext, kDelete, kZoom}) {
        key(Key::Tab);
        EXPECT_TRUE(children[expected]->hasFocus()) << expected;
        EXPECT_FALSE(children[expected]->accessibleName().empty());
        EXPECT_FALSE(children[expected]->tooltip().empty());
    }
    button(kNext).takeFocus();
    key(Key::Space);
    EXPECT_EQ(vob->getCurrentTime(), 20.0);
    EXPECT_FALSE(button(kNext).isEnabled());
    EXPECT_TRUE(button(kPrevious).hasFocus());
    button(kDelete).takeFocus();
    key(Key::Space);
    EXPECT_EQ(frames(*amount), (std::vector<int>{300}));
    EXPECT_TRUE(button(kPrevious).hasFocus()) << "where pressing once more does no harm";
}

TEST_F(KeyframeButtons, LayTheLabelOutWhereThereIsRoom)
{
    const int natural = buttons->getWidth();
    EXPECT_EQ(children[kLabel]->box().right, natural);
    EXPECT_EQ(buttons->getHeight(), UifStd::getRowHeight());
    buttons->resize(natural - 1.0, 40.0);
    EXPECT_FALSE(children[kLabel]->isVisible());
    EXPECT_EQ(children[kPrevious]->box().top, 10);
}

TEST_F(KeyframeButtons, APressMayDestroyThePanel)
{
    addParam(*effect, L"Amount", {12.0});

    struct Closer : CompoundEffectMonitorClient {
        using CompoundEffectMonitorClient::CompoundEffectMonitorClient;

        void handleFXModifications(const ChangeDescription&) override { panel->reset(); }

        std::unique_ptr<OwnerPanel>* panel = nullptr;
    } closer(vob->monitor.get());

    closer.panel = &panel;
    vob->playing = true;
    button(kAdd).userClick();
    EXPECT_EQ(panel, nullptr);
    EXPECT_EQ(vob->edit->steps, 1);
}

} // namespace
} // namespace oribund::test

#include "tests/scenarios/Scenario.h"

#include "workbench/app/overlay/ColourCount.h"
#include "workbench/app/overlay/HandleGlob.h"
#include "workbench/app/overlay/OverlayPanel.h"
#include "workbench/app/overlay/PickArea.h"
#include "workbench/app/overlay/PictureHandles.h"
#include "workbench/app/overlay/ViewerOverlay.h"

#include "oribund/host/edit/iColourPicker.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/panels/EffectComponentPanel.h"

namespace workbench
{
namespace
{

using oribund::ColourAxis;

class ViewerOverlayTest : public Scenario
{
protected:
    PictureHandles& handles() { return window_->overlay().handles(); }

    oribund::FXViewHandle view(const oribund::Kt::Ptr<ModelEffect>& effect)
    {
        return oribund::FXViewHandle(workspace_->vob().getEffectMonitor()->getFXVob(effect));
    }

    /** The sample clip with an effect that makes its colours others. */
    oribund::Kt::Ptr<ModelEffect> openInverted()
    {
        openClip();
        plain_ = window_->viewer().picture();
        auto effect = addEffect("Negative");
        EXPECT_NE(window_->viewer().picture()->rgba, plain_->rgba);
        return effect;
    }

    int handlePick(const oribund::ColourPickEvent& event)
    {
        if (event.kind == oribund::ColourPickEvent::Kind::Ended)
            ++ends_;
        picked_.assign(event.colours.begin(), event.colours.end());
        modifiers_ = event.modifiers;
        return 0;
    }

    FrameImagePtr plain_;
    std::vector<oribund::Colour> picked_;
    unsigned modifiers_ = 0;
    int ends_ = 0;
    oribund::MethodCallback<ViewerOverlayTest, oribund::ColourPickEvent> pickCallback_{this,
                                                                                       &ViewerOverlayTest::handlePick};
};

TEST_F(ViewerOverlayTest, HandlesFollowTheEffectAtHandAndHideWhileItIsPlayed)
{
    openClip();
    const auto pin = addEffect("Corner Pin");
    ASSERT_EQ(handles().handles().size(), 4u);
    const HandleGlob& first = *handles().handles().front();
    const QPoint grip = Hand::middleOf(first);
    hand_.press(first, grip);
    hand_.moveTo(grip + QPoint(80, 60));
    hand_.release(grip + QPoint(80, 60));
    settle();
    const auto corner = oribund::Kt::dynamicCast<oribund::EffectValParam<oribund::Vector2d>>(pin->paramAt(0));
    const double width = handles().mapping().area.width();
    EXPECT_NEAR(corner->getValue(0.0).x, 80.0 / width, 0.02);
    EXPECT_EQ(window_->focusWidget(), &window_->overlay().surface());

    const auto blur = addEffect("Blur");
    EXPECT_EQ(window_->overlay().effect(), objectOf(pin->id())) << "nobody has turned to the new one";
    const auto* const title = findInPanel<oribund::EffectComponentPanel>(blur->getName());
    hand_.press(*title, {title->getWidth() / 2, 4});
    hand_.release({title->getWidth() / 2, 4});
    settle();
    EXPECT_EQ(window_->overlay().effect(), objectOf(blur->id())) << "its panel has the keyboard";
    EXPECT_TRUE(handles().handles().empty());
    press(Command::Undo);
    EXPECT_EQ(window_->overlay().effect(), objectOf(pin->id()));
    EXPECT_EQ(handles().handles().size(), 4u);
    workspace_->vob().startPlay();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !handles().isVisible(); }));
    workspace_->vob().stopPlay();
    EXPECT_TRUE(QTest::qWaitFor([&] { return handles().isVisible(); }));
    press(Command::ShowHandles);
    EXPECT_FALSE(window_->overlay().surface().isVisible());
    press(Command::ShowHandles);
    EXPECT_TRUE(window_->overlay().surface().isVisible());
}

TEST_F(ViewerOverlayTest, ThePickerTakesColoursFromThePictureBeforeTheEffect)
{
    const auto effect = openInverted();
    auto* const picker = workspace_->vob().colourPicker();
    pickCallback_.attach(picker->picks());
    workspace_->vob().setCurrentTime(0.0);
    const auto pick = picker->begin(view(effect));
    ASSERT_NE(pick, oribund::iColourPicker::kNone);
    PickArea& area = window_->overlay().panel().pickArea();
    EXPECT_TRUE(area.hasFocus());
    // Its hint tells which picture it is.
    const auto isInput = [&] {
        oribund::AccessibleDescription description;
        area.describe(description);
        return displayText(description.help).view().find(L"as shown") == std::wstring_view::npos;
    };
    ASSERT_TRUE(QTest::qWaitFor(isInput, 20000));
    const QPoint middle = Hand::middleOf(area);
    QTest::mouseClick(&window_->overlay().surface(), Qt::LeftButton, Qt::ShiftModifier, middle);
    ASSERT_EQ(picked_.size(), 1u);
    EXPECT_EQ(modifiers_, oribund::Event::kShift);
    const oribund::Colour there = colourAt(*plain_, plain_->width / 2, plain_->height / 2);
    EXPECT_NEAR(picked_.front().r, there.r, 0.1);
    EXPECT_NEAR(picked_.front().b, there.b, 0.1);

    Hand::key(Qt::Key_Escape);
    EXPECT_EQ(ends_, 1);
    EXPECT_FALSE(area.isVisible());
    picker->end(pick);
    EXPECT_EQ(ends_, 1) << "it is over";
    picker->begin(view(effect));
    findInPanel<oribund::EffectComponentPanel>(effect->getName())->takeFocus();
    window_->effectsPanel().surface().setFocus();
    Hand::key(Qt::Key_Escape);
    EXPECT_EQ(ends_, 2) << "wherever the keyboard is";
}

TEST_F(ViewerOverlayTest, StatisticsAreOfWhatTheEffectGets)
{
    const auto effect = openInverted();
    auto* const statistics = workspace_->vob().frameStatistics();
    const auto luminance = [&] { return statistics->histogram(effect->id(), ColourAxis::Luminance); };
    EXPECT_EQ(luminance(), nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return luminance() != nullptr; }, 20000));
    const auto mean = [](const oribund::iFrameStatistics::Histogram& histogram) {
        double sum = 0.0;
        double weight = 0.0;
        for (std::size_t i = 0; i < histogram.size(); ++i) {
            sum += static_cast<double>(i) * histogram[i];
            weight += histogram[i];
        }
        return sum / weight;
    };
    const double seen = mean(countColours(*window_->viewer().picture())[2]);
    const double before = mean(countColours(*plain_)[2]);
    EXPECT_GT(std::abs(seen - before), 8.0) << "or this test shows nothing";
    EXPECT_NEAR(mean(*luminance()), before, 3.0);

    // An effect before it changes its input.
    const double first = mean(*luminance());
    const auto second = addEffect("Negative");
    ASSERT_TRUE(workspace_->editor().moveEffect(objectOf(second->id()), 0));
    EXPECT_TRUE(QTest::qWaitFor([&] { return luminance() && std::abs(mean(*luminance()) - first) > 8.0; }, 20000));
}

} // namespace
} // namespace workbench

#include "tests/scenarios/Scenario.h"
#include "workbench/app/effects/EffectTimePanel.h"

#include "oribund/controls/bars/CompoundEffectTherm.h"
#include "oribund/controls/keyframes/CompoundEffectKeyframeButtons.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/effects/curves/Graph1dBase.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/widgets/ValButton.h"
#include "oribund/panels/EffectComponentPanel.h"

#include <QApplication>
#include <QClipboard>

#include <cmath>
#include <span>

namespace workbench
{
namespace
{

/** A clip whose effect has keyframes of "level" at the frames 10, 20 and 40; "alpha", called Opacity, is constant. */
class KeyframeMenuScenario : public Scenario
{
protected:
    KeyframeMenuScenario()
    {
        openClip();
        fade = workspace_->editor().addEffect(workspace_->targetSegment()->id(), "brightness").object;
        const auto param = workspace_->edit().timeline().findEffect(fade)->paramAt(0);
        const auto level = oribund::Kt::dynamicCast<oribund::EffectValParam<double>>(param);
        level->setFunctionType(oribund::EffectValParamFnType::Keyframed, 10.0 / kSampleFrames);
        level->addKeyframeAt(20.0 / kSampleFrames, 60.0);
        level->addKeyframeAt(40.0 / kSampleFrames, 30.0);
        workspace_->edit().undoStack().endGesture();
        begin();
    }

    /** Shows what is there; steps are counted from here. */
    void begin()
    {
        settle();
        window_->effectsPanel().refresh();
        position_ = workspace_->edit().undoStack().position();
    }

    static std::string keysOf(const Segment& segment)
    {
        std::string all;
        for (const auto& param : segment.effects.empty() ? std::span<const Param>() : segment.effects[0]->params()) {
            const oribund::Graph1dBase& graph = *param->graph();
            if (!graph.empty())
                all.append(all.empty() ? "" : " ").append(param->name().c_str());
            for (int i = 0; i < graph.size(); ++i)
                all += ' ' + std::to_string(std::lround(segment.data.start + graph.timeAt(i) * segment.data.length));
        }
        return all;
    }

    /** The frames of the keyframes on the segment whose effects are shown, by parameter. */
    std::string keys() { return keysOf(*workspace_->targetSegment()); }

    const Segment& firstSegment() { return *workspace_->edit().timeline().tracks().front()->segments.front(); }

    int selected() { return workspace_->vob().getEffectMonitor()->getNumKeyframesSelected(IdStamp::wildcard(), {}); }

    /** To what has the keyboard. */
    static void key(Qt::Key code, Qt::KeyboardModifiers held = {})
    {
        QTest::keyClick(QApplication::focusWidget(), code, held);
    }

    void expectRefused(std::initializer_list<Command> commands, const char* why)
    {
        for (const Command command : commands) {
            host_.shown.clear();
            window_->action(command).trigger();
            ASSERT_EQ(host_.shown.size(), 1u) << why;
            EXPECT_NE(host_.shown[0].find(why), std::string::npos) << host_.shown[0];
            EXPECT_EQ(workspace_->edit().undoStack().position(), position_);
        }
    }

    /** That there are these keyframes now by one step of that title, which undo and redo take back and do again. */
    void expectStep(const std::string& wanted, const char* title)
    {
        EXPECT_EQ(keys(), wanted);
        EXPECT_EQ(workspace_->edit().undoStack().position(), ++position_) << title;
        EXPECT_EQ(window_->action(Command::Undo).text().toStdString(), std::string("&Undo ") + title);
        window_->action(Command::Undo).trigger();
        EXPECT_NE(keys(), wanted) << title;
        window_->action(Command::Redo).trigger();
        EXPECT_EQ(keys(), wanted) << title;
    }

    int frameAfter(Qt::Key code, Qt::KeyboardModifiers held = {})
    {
        key(code, held);
        return frame();
    }

    // The bar above the panels

    oribund::CompoundEffectTherm& bar() { return window_->effectsPanel().timePanel().bar(); }

    QPoint at(int frame) { return {bar().geometry().f2xi(workspace_->vob().timeOf(frame)), bar().getHeight() / 2}; }

    ObjectId fade = kNoObject;

private:
    using IdStamp = oribund::IdStamp;
    using Param = oribund::EffectInstance::ParamPtr;

    std::size_t position_ = 0;
};

constexpr auto kCtrl = Qt::ControlModifier;
constexpr auto kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;

TEST_F(KeyframeMenuScenario, KeysWalkAddMoveAndRemoveAStepEach)
{
    for (const int there : {10, 20, 40}) {
        EXPECT_EQ(frameAfter(Qt::Key_Period), there);
    }
    expectRefused({Command::NextKeyframe}, "no later keyframe");
    EXPECT_EQ(frameAfter(Qt::Key_Comma), 20);
    expectRefused({Command::AddKeyframes}, "has a keyframe here already");
    goTo(30);
    expectRefused({Command::RemoveKeyframes}, "none at the current time");
    key(Qt::Key_K);
    expectStep("level 10 20 30 40", "Add keyframes");
    key(Qt::Key_K, Qt::ShiftModifier);
    expectStep("level 10 20 40", "Remove keyframes");

    expectRefused({Command::KeyframesEarlier, Command::KeyframesLater, Command::CopyKeyframes},
                  "No keyframe is selected");
    key(Qt::Key_A, kCtrl);
    key(Qt::Key_Right, kCtrlShift);
    expectStep("level 11 21 41", "Move 3 keyframes of Level");
    key(Qt::Key_A, kCtrl);
    EXPECT_EQ(selected(), 3);
    key(Qt::Key_A, kCtrlShift);
    EXPECT_EQ(selected(), 0);
    key(Qt::Key_A, kCtrl);
    key(Qt::Key_K, Qt::ShiftModifier);
    expectStep("", "Remove 3 keyframes");
    expectRefused({Command::AddKeyframes}, "No value is animated yet");
    expectRefused({Command::SelectKeyframes}, "no keyframes to select");
    EXPECT_EQ(frame(), 30);
}

TEST_F(KeyframeMenuScenario, WhatCannotBeDoneSaysWhyAndEditsNothing)
{
    using enum Command;
    expectRefused({PasteKeyframes}, "No keyframes have been copied.");
    key(Qt::Key_A, kCtrl);
    key(Qt::Key_C, kCtrl);
    goTo(60);
    key(Qt::Key_B);
    workspace_->selection().set(firstSegment().id());
    begin();
    goTo(70);
    EXPECT_EQ(keys(), "level 10 20 40") << "those of the segment that is selected, wherever the time is";
    expectRefused({AddKeyframes, PasteKeyframes}, "outside the segment");
    workspace_->edit().setReadOnly(true);
    goTo(30);
    key(Qt::Key_A, kCtrl);
    expectRefused({AddKeyframes, RemoveKeyframes, PasteKeyframes, KeyframesEarlier, KeyframesLater}, "read-only");
    EXPECT_EQ(frameAfter(Qt::Key_Period), 40) << "to look changes nothing";
    workspace_->edit().setReadOnly(false);
    ASSERT_TRUE(workspace_->editor().removeEffect(fade));
    begin();
    expectRefused({AddKeyframes, NextKeyframe}, "no effects here");
}

TEST_F(KeyframeMenuScenario, CopiesGoToAnotherTimeAnotherValueAndAnotherProject)
{
    key(Qt::Key_A, kCtrl);
    key(Qt::Key_C, kCtrl);
    goTo(50);
    key(Qt::Key_V, kCtrl);
    EXPECT_EQ(host_.shown.size(), 1u) << "the third is beyond the end";
    EXPECT_EQ(selected(), 2);
    expectStep("level 10 20 40 50 60", "Paste 2 keyframes");
    press(Command::Undo);
    begin();

    auto* const opacity = findInPanel<oribund::NumericEntry>(L"Opacity");
    ASSERT_NE(opacity, nullptr);
    opacity->userStartEditing(); // as a click on its name does
    goTo(25);
    key(Qt::Key_V, kCtrl);
    expectStep("level 10 20 40 alpha 25 35 55", "Paste 3 keyframes");
    press(Command::Undo);

    ASSERT_TRUE(workspace_->editor().removeEffect(fade));
    ASSERT_TRUE(workspace_->editor().addEffect(workspace_->targetSegment()->id(), "frei0r.tint0r"));
    begin();
    expectRefused({Command::PasteKeyframes}, "None of these effects has a value of that name");
    document_->startNew();
    openClip();
    ASSERT_TRUE(workspace_->editor().addEffect(workspace_->targetSegment()->id(), "brightness"));
    key(Qt::Key_V, kCtrl);
    EXPECT_EQ(keys(), "level 0 10 30") << "what was copied outlives the project";
}

TEST_F(KeyframeMenuScenario, AnEditFromOutsideTheSegmentBringsTheTimeToIt)
{
    goTo(60);
    key(Qt::Key_B);
    workspace_->selection().set(firstSegment().id());
    begin();
    const EffectsPanelPane& pane = window_->effectsPanel();
    EXPECT_TRUE(pane.saysOutside()) << "the picture is the next segment's";
    findInPanel<oribund::NumericEntry>(L"Opacity")->userSetNumber(0.5);
    EXPECT_EQ(frame(), 60) << "a constant is the same everywhere";
    begin();
    drag(*findInPanel<oribund::Slider>(L"Level"), 0.9);
    EXPECT_EQ(frame(), 59);
    EXPECT_EQ(keys(), "level 10 20 40 59") << "one keyframe, however far it was dragged";
    EXPECT_FALSE(pane.saysOutside());
    goTo(70);
    findInPanel<oribund::ValButton>()->userClick();
    EXPECT_EQ(frame(), 59);
    EXPECT_EQ(keys(), "level 10 20 40");
}

TEST_F(KeyframeMenuScenario, TheZoomButtonShowsAPartAroundTheTimeWhereNobodyHasChosenOne)
{
    goTo(40);
    const double whole = bar().geometry().end - bar().geometry().start;
    auto& buttons = window_->effectsPanel().timePanel().buttons();
    buttons.sendMsg(oribund::CompoundEffectKeyframeButtons::zoomInMsg);
    EXPECT_LT(bar().geometry().end - bar().geometry().start, 0.5 * whole);
    EXPECT_LT(bar().geometry().start, workspace_->vob().timeOf(40));
    EXPECT_GT(bar().geometry().end, workspace_->vob().timeOf(40));
    buttons.sendMsg(oribund::CompoundEffectKeyframeButtons::zoomOutMsg);
    EXPECT_EQ(bar().geometry().end - bar().geometry().start, whole);
    EXPECT_LT(bar().geometry().windowEnd - bar().geometry().windowStart, 0.5 * whole) << "it is there to be dragged";
}

TEST_F(KeyframeMenuScenario, AKeyOnTheBarIsTheBarsOrTheMenusAndNeverBoth)
{
    hand_.click(bar(), at(30));
    EXPECT_TRUE(bar().hasFocus());
    EXPECT_EQ(frame(), 30);
    EXPECT_EQ(frameAfter(Qt::Key_Comma), 20);
    key(Qt::Key_Space);
    EXPECT_EQ(selected(), 1);
    EXPECT_FALSE(workspace_->vob().isPlaying()) << "Space selects the keyframe here";
    EXPECT_EQ(frameAfter(Qt::Key_Right, kCtrl), 40) << "the next keyframe, not the next segment";
    key(Qt::Key_Right, Qt::AltModifier);
    expectStep("level 10 21 40", "Move keyframe of Level");
    key(Qt::Key_Space);
    key(Qt::Key_Delete);
    expectStep("level 10", "Remove 2 keyframes");
    EXPECT_EQ(workspace_->edit().timeline().endFrame(), kSampleFrames) << "the segment stays";
    key(Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return workspace_->vob().isPlaying(); }, 5000)) << "there is no keyframe here";
}

TEST_F(KeyframeMenuScenario, DeleteRemovesWhatHasTheKeyboardAndNoClipByAccident)
{
    QWidget& strip = window_->timeline().strip();
    strip.setFocus();
    key(Qt::Key_A, kCtrl);
    key(Qt::Key_Delete);
    expectStep("", "Remove 3 keyframes");
    key(Qt::Key_Delete); // once too often
    EXPECT_EQ(segments(), 1u);

    ASSERT_TRUE(findInPanel<oribund::Slider>()->takeFocus());
    key(Qt::Key_Delete);
    window_->effectList().search();
    key(Qt::Key_Delete);
    window_->viewer().setFocus();
    window_->setFocus();
    key(Qt::Key_Delete);
    EXPECT_EQ(segments(), 1u);
    EXPECT_EQ(firstSegment().effects.size(), 1u);

    auto* const title = findInPanel<oribund::EffectComponentPanel>();
    ASSERT_TRUE(title && title->takeFocus());
    key(Qt::Key_Delete);
    settle();
    EXPECT_EQ(firstSegment().effects.size(), 0u);
    EXPECT_EQ(segments(), 1u);
    QTest::mouseClick(&strip, Qt::LeftButton, {}, {strip.width() / 4, strip.height() / 3});
    ASSERT_TRUE(strip.hasFocus());
    ASSERT_NE(workspace_->selection().get(), kNoObject);
    key(Qt::Key_Delete);
    EXPECT_EQ(segments(), 0u);
}

TEST_F(KeyframeMenuScenario, WhatIsTypedInAnEntryIsTextAndNoCommand)
{
    goTo(30);
    key(Qt::Key_A, kCtrl);
    findInPanel<oribund::NumericEntry>()->takeFocus();
    auto* const line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(line, nullptr);
    QTest::keyClicks(line, "12,.kK 5");
    key(Qt::Key_Left, kCtrlShift);
    key(Qt::Key_A, kCtrl);
    key(Qt::Key_C, kCtrl);
    EXPECT_EQ(QApplication::clipboard()->text(), "12,.kK 5");
    key(Qt::Key_V, kCtrl);
    EXPECT_EQ(line->text(), "12,.kK 5");
    key(Qt::Key_Escape);
    EXPECT_EQ(keys(), "level 10 20 40");
    EXPECT_EQ(frame(), 30);
    EXPECT_EQ(selected(), 3);
    EXPECT_FALSE(workspace_->vob().isPlaying());
    expectRefused({Command::PasteKeyframes}, "No keyframes have been copied.");
    window_->effectList().search();
    QTest::keyClicks(&window_->effectList().searchField(), "blur");
    key(Qt::Key_Down);
    EXPECT_EQ(frame(), 30) << "the arrows are the search's, and do not go to the cuts";
}

} // namespace
} // namespace workbench

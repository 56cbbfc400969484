#pragma once

#include "tests/support/Listener.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/Cue.h"
#include "oribund/host/edit/Edit.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitorClient.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/effects/EffectInstance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace oribund::test
{

/**
 * What every Vob, with its Edit and its CompoundEffectMonitor, keeps to.
 *
 * `Maker` makes a viewer of an edit that has one effect, which runs from 2 to 6 seconds on `track()` and whose first
 * parameter can be animated, at 25 frames a second: it gives `vob()`,
 * `effect()` and `track()`, takes the effect away with `removeEffect()` and brings it back with `restoreEffect()`, puts
 * a cue on the edit with `addCue(time)`, locks it with `setReadOnly()`, and destroys the viewer with `destroyVob()`.
 */
template <class Maker>
class ViewContract : public testing::Test
{
protected:
    Vob& vob() { return maker.vob(); }

    CompoundEffectMonitor& monitor() { return *vob().getEffectMonitor(); }

    Maker maker;
};

/** Hears of times and of effects. */
struct ViewListener : CompoundEffectMonitorClient {
    explicit ViewListener(Vob& vob)
        : CompoundEffectMonitorClient(vob.getEffectMonitor())
        , times(vob.getCurrentTimeServer().notifier())
    {
    }

    void handleFXModifications(const ChangeDescription& change) override { changes.push_back(change); }

    Listener<ValServerEvent<double>> times;
    std::vector<ChangeDescription> changes;
};

TYPED_TEST_SUITE_P(ViewContract);

TYPED_TEST_P(ViewContract, TheCurrentTimeIsToldOnceAndOnlyWhenItMoves)
{
    Vob& vob = this->vob();
    vob.setCurrentTime(1.0);
    ViewListener listener(vob);
    vob.setCurrentTime(3.0);
    vob.setCurrentTime(3.0);
    ASSERT_EQ(listener.times.count(), 1u);
    EXPECT_EQ(listener.times.heard[0].value, 3.0);
    EXPECT_EQ(vob.getCurrentTime(), 3.0);
    ASSERT_EQ(listener.changes.size(), 1u);
    EXPECT_EQ(listener.changes[0].code, EffectChangeCode::CurrentTimeMoved);
    EXPECT_EQ(listener.changes[0].flags, EffectChangeDescription::kTimeOnly);
    EXPECT_TRUE(listener.changes[0].effect.isWildcard());
}

TYPED_TEST_P(ViewContract, ACueIsReplacedByOneOfItsIdAndOnlyWhereThatIsAllowed)
{
    const IdStamp early = this->maker.addCue(1.0);
    const IdStamp late = this->maker.addCue(2.0);
    const EditPtr edit = this->vob().getEdit();
    const Listener listener(edit->modifications());
    Cue cue = *edit->getCues().find(early);
    cue.time = 3.0;
    cue.name = L"Door";
    {
        const EditModifier modifier(edit, L"Move cue");
        EXPECT_TRUE(edit->setCue(cue));
    }
    EXPECT_TRUE(std::ranges::any_of(listener.heard, [](const EditModification& told) {
        return told.type == EditModification::Type::Cues || told.type == EditModification::Type::Wholesale;
    }));
    ASSERT_EQ(edit->getCues().size(), 2u);
    EXPECT_EQ(edit->getCues()[0].id, late);
    EXPECT_EQ(edit->getCues()[1], cue);

    const CueList before = edit->getCues();
    Cue unknown = cue;
    unknown.id = IdStamp(123456, 7, 8);
    EXPECT_FALSE(edit->setCue(unknown));
    this->maker.setReadOnly(true);
    cue.name = L"Window";
    EXPECT_FALSE(edit->setCue(cue));
    EXPECT_EQ(edit->getCues(), before);
}

TYPED_TEST_P(ViewContract, TheMonitorKnowsTheEffectAndItsRegion)
{
    this->vob().setCurrentTime(4.0);
    const auto effect = this->maker.effect();
    CompoundEffectMonitor& monitor = this->monitor();
    EXPECT_EQ(monitor.getEffects(this->maker.track()), std::vector{effect});
    const std::vector<IdStamp> tracks = monitor.getTracks();
    EXPECT_EQ(std::count(tracks.begin(), tracks.end(), this->maker.track()), 1);
    EXPECT_EQ(monitor.findEffect(effect->id()), effect);
    EXPECT_NEAR(monitor.getEditRegion(effect->id()).start(), 2.0, 1e-9);
    EXPECT_NEAR(monitor.getEditRegion(effect->id()).end(), 6.0, 1e-9);
    EXPECT_EQ(monitor.getCompoundEditRegion(this->maker.track()), monitor.getEditRegion(effect->id()));

    const IdStamp unknown(123456, 7, 8);
    EXPECT_FALSE(monitor.findEffect(unknown));
    EXPECT_EQ(monitor.getEditRegion(unknown), NumRange<double>(0.0, 0.0));
    EXPECT_TRUE(monitor.getEffects(unknown).empty());
    EXPECT_FALSE(monitor.getFXVob({}));
}

TYPED_TEST_P(ViewContract, AHandleFollowsTheEffectOutOfTheEditAndBack)
{
    const auto effect = this->maker.effect();
    const FXViewHandle handle(this->monitor().getFXVob(effect));
    this->vob().setCurrentTime(3.0);
    EXPECT_EQ(handle.getEffectPtr(), effect);
    EXPECT_NEAR(handle.getFXVob()->getNormalisedCurrentTime(), 0.25, 1e-9);

    this->maker.removeEffect();
    EXPECT_FALSE(handle.getEffectPtr());
    EXPECT_FALSE(this->monitor().findEffect(effect->id()));
    this->maker.restoreEffect();
    ASSERT_TRUE(handle.getEffectPtr());
    EXPECT_EQ(handle.getEffectPtr()->id(), effect->id());

    this->maker.destroyVob();
    EXPECT_EQ(handle.getVob(), nullptr);
    EXPECT_FALSE(handle.getEffectPtr());
}

TYPED_TEST_P(ViewContract, SelectedKeyframesMoveInAGestureThatCanBeTakenBack)
{
    CompoundEffectMonitor& monitor = this->monitor();
    const IdStamp track = this->maker.track();
    const auto effect = this->maker.effect();
    const auto param = effect->paramAt(0);
    this->vob().setCurrentTime(4.0);
    param->setFunctionType(EffectValParamFnType::Keyframed, 0.25);
    EffectChangeDescription animated;
    animated.code = EffectChangeCode::FunctionTypeChanged;
    animated.effect = effect->id();
    monitor.effectChanged(animated);
    monitor.selectAllKeyframes(effect->id(), {}, true);

    ViewListener listener(this->vob());
    for (int i = 0; i < 2; ++i) {
        monitor.makeBackup(BackupKind::Undo, {});
        EXPECT_TRUE(monitor.trimSelectedKeyframes(track, 0.4));
    }
    EXPECT_EQ(listener.changes.size(), 2u) << "one for each move";
    EXPECT_NEAR(param->graph()->timeAt(0), 0.45, 1e-9);
    monitor.cancelTrim();
    EXPECT_EQ(param->graph()->timeAt(0), 0.25);
    EXPECT_EQ(listener.changes.size(), 3u);
    EXPECT_EQ(monitor.getNumKeyframesSelected(IdStamp::wildcard(), {}), 1);

    EXPECT_TRUE(monitor.trimSelectedKeyframes(track, -0.4)) << "not announced";
    monitor.endTrim();
    monitor.cancelTrim();
    EXPECT_NEAR(param->graph()->timeAt(0), 0.15, 1e-9) << "what has ended cannot be taken back";
    this->maker.setReadOnly(true);
    monitor.makeBackup(BackupKind::Undo, {});
    EXPECT_FALSE(monitor.trimSelectedKeyframes(track, 0.4));
    monitor.endTrim();
}

TYPED_TEST_P(ViewContract, TheViewRangeIsKeptAndThereIsOneEdit)
{
    Vob& vob = this->vob();
    vob.setViewRange({1.0, 3.0});
    EXPECT_EQ(vob.getViewRange(), NumRange<double>(1.0, 3.0));
    const EditPtr edit = vob.getEdit();
    ASSERT_TRUE(edit);
    EXPECT_GE(edit->getEndTime(), 6.0);
    EXPECT_FALSE(edit->isReadOnly());
    EXPECT_EQ(vob.getEdit(), edit);
}

REGISTER_TYPED_TEST_SUITE_P(ViewContract, TheCurrentTimeIsToldOnceAndOnlyWhenItMoves,
                            ACueIsReplacedByOneOfItsIdAndOnlyWhereThatIsAllowed, TheMonitorKnowsTheEffectAndItsRegion,
                            AHandleFollowsTheEffectOutOfTheEditAndBack,
                            SelectedKeyframesMoveInAGestureThatCanBeTakenBack, TheViewRangeIsKeptAndThereIsOneEdit);

} // namespace oribund::test

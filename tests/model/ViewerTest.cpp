#include "tests/support/Listener.h"
#include "tests/support/SampleEdit.h"

#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitorClient.h"
#include "oribund/host/edit/monitor/FXVob.h"
#include "workbench/model/host/ModelVob.h"

#include <gtest/gtest.h>

using namespace sample;
using oribund::EffectChangeCode;

namespace
{
class Viewer : public testing::Test, public Bench
{
protected:
    Viewer() { vob.setEdit(edit); }

    ObjectId clip = addPicture(50, 100);
    ObjectId tint = editor.addEffect(clip, "tint").object;
    ModelVob vob;
};

} // namespace

TEST_F(Viewer, FramesAreFoundAgainFromTheirTimesAtEveryRate)
{
    for (const auto& [numerator, denominator] : {std::pair(24000, 1001), std::pair(30000, 1001), std::pair(50, 1)}) {
        FormatData format;
        format.fpsNumerator = numerator;
        format.fpsDenominator = denominator;
        EditData data = emptyEdit("rates", format);
        data.media.push_back({10, media("/m/long.mp4", 1000000)});
        data.tracks[0].segments.push_back({11, 10, 0, "", 0, 0, 200000, {}});
        vob.setEdit(oribund::Kt::makePtr<EditModel>(data, catalogue()));
        for (int frame = 0; frame < 200000; frame += 997) {
            vob.setCurrentTime(vob.timeOf(frame));
            ASSERT_EQ(vob.currentFrame(), frame);
        }
    }
}

TEST_F(Viewer, ClientsHearOfParametersEffectsAndStructure)
{
    oribund::test::Listener<oribund::EffectChangeDescription> listener(vob.getEffectMonitor()->changes());
    const auto heardLast = [&](EffectChangeCode code, const oribund::IdStamp& effect) {
        const bool right =
            !listener.heard.empty() && listener.heard.back().code == code && listener.heard.back().effect == effect;
        listener.heard.clear();
        return right;
    };
    const auto level = param<double>(tint, kLevel);
    level->setConstant(10);
    EXPECT_EQ(listener.heard.size(), 1u);
    EXPECT_EQ(listener.heard.back().param, level->id());
    EXPECT_TRUE(heardLast(EffectChangeCode::ParamValueChanged, stampOf(tint)));
    level->setConstant(10);
    EXPECT_TRUE(listener.heard.empty());
    level->setFunctionType(oribund::EffectValParamFnType::Keyframed, 0.0);
    listener.heard.clear();
    level->addKeyframeAt(0.5, 20);
    EXPECT_TRUE(heardLast(EffectChangeCode::KeyframesChanged, stampOf(tint)));
    level->graph()->moveKeyframe(1, 0.6);
    EXPECT_TRUE(heardLast(EffectChangeCode::KeyframesMoved, stampOf(tint)));
    undo().undo();
    EXPECT_FALSE(listener.heard.empty());
    listener.heard.clear();
    editor.setEffectsEnabled({&tint, 1}, false);
    EXPECT_TRUE(heardLast(EffectChangeCode::EnabledChanged, stampOf(tint)));
    editor.removeEffect(tint);
    EXPECT_EQ(listener.heard.back().flags, oribund::EffectChangeDescription::kWholesaleRefresh);
    editor.addCue({{}, 1.0, L"", {}, {}, 4});
    listener.heard.clear();
    vob.setCurrentTime(3.0);
    EXPECT_TRUE(heardLast(EffectChangeCode::CurrentTimeMoved, oribund::IdStamp::wildcard()));
}

TEST_F(Viewer, ObserversSeeTheWholeOfAnOperation)
{
    struct Observer {
        EditModel& edit;
        int seen = 0;
        oribund::MethodCallback<Observer, oribund::EditModification> callback{this, &Observer::hear};

        int hear(const oribund::EditModification&)
        {
            ++seen;
            EXPECT_EQ(findFault(edit.snapshot()), "");
            EXPECT_EQ(edit.timeline().findTrack(kVideo)->segments.size(), 3u) << "half of it was told";
            return 0;
        }
    } observer{*edit};

    observer.callback.attach(edit->modifications());
    editor.addClip({media(), 0, 10, kVideo, kNoObject}, 80, Collision::Overwrite);
    EXPECT_GT(observer.seen, 0);
}

#include "tests/edit/KeyframesFixture.h"

#include "oribund/host/effects/curves/BezierCurve.h"
#include "oribund/host/effects/keyframes/KeyframeClip.h"

namespace oribund::test
{
namespace
{

class CopiedKeyframes : public Keyframes
{
protected:
    KeyframeClip copy()
    {
        vob.monitor->populateKeyframesForCompoundEffect(track, sets_);
        selectAll();
        const KeyframeClip clip = vob.monitor->copySelectedKeyframes(IdStamp::wildcard(), {});
        selectAll(false);
        return clip;
    }

    int pasteAt(double time, const KeyframeClip& clip,
                const std::optional<CompoundEffectMonitor::PasteTarget>& target = std::nullopt)
    {
        vob.setCurrentTime(time);
        heard.clear();
        return vob.monitor->pasteKeyframes(track, clip, target);
    }

private:
    CompoundEffectMonitor::KeyframeSets sets_;
};

TEST_F(CopiedKeyframes, ComeToTheCurrentTimeAsFarApartAsTheyWere)
{
    const auto effect = addEffect(1, 0.0, 10.0);
    const auto a = addParam(effect, "a", {0.1, 0.2});
    Keyframe shaped = a->graph()->channel(0).keyframe(0);
    shaped.type = KeyframeType::Smooth;
    shaped.value = 7.0;
    shaped.out = {0.05, 2.0, false};
    a->graph()->channel(0).setKeyframe(0, shaped);
    const KeyframeClip clip = copy();
    EXPECT_EQ(clip.size(), 2);

    EXPECT_EQ(pasteAt(5.0, clip), 2);
    EXPECT_EQ(timesOf(*a), (std::vector{0.1, 0.2, 0.5, 0.6}));
    shaped.time = 0.5;
    EXPECT_EQ(a->graph()->channel(0).keyframe(2), shaped);
    EXPECT_EQ(selected(), 2);
    EXPECT_EQ(heard.size(), 1u);
    EXPECT_EQ(vob.edit->steps, 1);
    EXPECT_EQ(vob.edit->title, L"Paste 2 keyframes");

    EXPECT_EQ(pasteAt(5.019, clip), 2);
    ASSERT_EQ(a->graph()->size(), 4) << "what is nearer than half a frame is replaced";
    EXPECT_DOUBLE_EQ(a->graph()->timeAt(2), 0.5019);
    EXPECT_EQ(pasteAt(9.5, clip), 1) << "the other one is beyond the end";
    EXPECT_EQ(vob.edit->title, L"Paste keyframe");
    vob.edit->readOnly = true;
    EXPECT_EQ(pasteAt(3.0, clip), 0);
}

TEST_F(CopiedKeyframes, FindTheParameterThatIsMostLikeTheirOwn)
{
    const auto source = addEffect(1, 0.0, 10.0, "blur");
    addParam(source, "a", {0.1, 0.2});
    addParam<Angle>(source, "turn", {0.1}, Angle{-90}, Angle{90});
    const KeyframeClip clip = copy();
    EXPECT_EQ(clip.size(), 3);

    vob.monitor->effects.clear();
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, source->id());
    const auto like = addParam(addEffect(2, 20.0, 40.0, "tint"), "a", {}, 0.0, 100.0);
    const auto same = addEffect(3, 20.0, 40.0, "blur");
    const auto a = addParam(same, "a");
    const auto turn = addParam<double>(same, "turn");
    EXPECT_EQ(pasteAt(24.0, clip), 2) << "an angle is no number";
    EXPECT_EQ(timesOf(*a), (std::vector{0.2, 0.25})) << "an effect of the same kind; in seconds";
    EXPECT_EQ(a->functionType(), EffectValParamFnType::Keyframed);
    EXPECT_EQ(like->functionType(), EffectValParamFnType::Constant);
    EXPECT_EQ(turn->functionType(), EffectValParamFnType::Constant);
    EXPECT_EQ(pasteAt(15.0, clip), 0) << "before all effects";
}

TEST_F(CopiedKeyframes, GoToATargetWithinItsRangeAndWhereTheyFitOnly)
{
    const auto effect = addEffect(1);
    const auto a = addParam(effect, "a", {0.1, 0.2});
    const auto twin = addParam(effect, "twin", {0.1, 0.3});
    a->setKeyframeValueAt(0, 80.0);
    const KeyframeClip clip = copy();
    const auto narrow = addParam(effect, "narrow", {}, 0.0, 10.0);
    const auto angle = addParam<Angle>(effect, "angle", {}, Angle{-90}, Angle{90});
    const auto point = addParam<Vector2d>(effect, "point", {}, Vector2d{-1, -1}, Vector2d{1, 1});
    EXPECT_EQ(pasteAt(5.0, clip, {{effect->id(), angle->id()}}), 0);
    EXPECT_EQ(pasteAt(5.0, clip, {{effect->id(), point->id()}}), 0);
    EXPECT_EQ(pasteAt(5.0, clip, {{effect->id(), narrow->id()}}), 3) << "two want to be at the same time";
    EXPECT_EQ(timesOf(*narrow), (std::vector{0.5, 0.6, 0.7}));
    EXPECT_EQ(narrow->getValue(0.5), 10.0);
    EXPECT_EQ(selected(), 3);
    EXPECT_EQ(timesOf(*twin), (std::vector{0.1, 0.3}));
}

} // namespace
} // namespace oribund::test

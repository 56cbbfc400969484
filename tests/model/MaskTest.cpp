#include "tests/support/SampleEdit.h"
#include "workbench/model/MaskDescription.h"
#include "workbench/model/host/ModelMonitor.h"
#include "workbench/model/host/ModelVob.h"

#include <gtest/gtest.h>

using namespace sample;
using oribund::EffectValParamFnType;

namespace
{
/** A picture of a hundred frames from frame 100 of its media, with a masked effect. */
struct Masked : Bench {
    ObjectId clip = addPicture(0, 100);
    ObjectId tint = editor.addEffect(clip, "tint").object;
    ObjectId mask = editor.setMask(tint, true).object;

    oribund::EffectInstance::ParamPtr maskParam(const char* property)
    {
        for (const auto& param : timeline().findEffect(mask)->params())
            if (param->name() == property)
                return param;
        return {};
    }

    /** The width goes from 20 % at frame 20 to 80 % at frame 80. */
    void animateWidth()
    {
        const auto width = oribund::Kt::dynamicCast<oribund::EffectValParam<double>>(maskParam(mask::kWidth));
        width->setFunctionType(EffectValParamFnType::Keyframed, 0.2);
        width->graph()->channel(0).setKeyframeValue(0, 20.0);
        width->addKeyframeAt(0.8, 80.0);
        undo().endGesture();
    }
};

std::vector<double> framesOf(const EffectData& mask, int length)
{
    std::vector<double> frames;
    for (const ParamData& param : mask.params)
        for (const oribund::Keyframe& key : param.channels.empty() ? ChannelData() : param.channels.front())
            frames.push_back(std::round(key.time * length * 1e6) / 1e6);
    return frames;
}
} // namespace

TEST(Mask, HasItsOwnIdIsRecordedUnderItAndComesBackWithItsEffect)
{
    Masked m;
    const EditData fresh = m.edit->snapshot();
    const auto effect = m.timeline().findEffect(m.tint);
    ASSERT_TRUE(effect->getMask());
    EXPECT_EQ(objectOf(effect->getMask()->id()), m.mask);
    EXPECT_EQ(m.timeline().segmentOfEffect(m.mask), m.timeline().findSegment(m.clip));
    EXPECT_TRUE(m.timeline().findEffect(m.mask)->getName() == L"Mask");

    // The first parameters of effect and mask have the same stamp: each step has to find its own.
    m.maskParam(mask::kSoftness)->setConstantValue(oribund::ParamValue(30.0));
    m.undo().endGesture();
    EXPECT_EQ(m.undoTitle(), "Softness 0 % to 30 %");
    m.param<double>(m.tint, kLevel)->setConstantValue(oribund::ParamValue(12.0));
    m.undo().endGesture();
    EXPECT_EQ(m.undoTitle(), "Level 50 % to 12 %");
    m.editor.setEffectsEnabled({&m.mask, 1}, false);
    EXPECT_EQ(m.undoTitle(), "Switch off Mask");
    EXPECT_TRUE(effect->isEnabled());

    const EditData set = m.edit->snapshot();
    m.editor.removeEffect(m.tint);
    EXPECT_FALSE(m.timeline().findEffect(m.mask));
    EXPECT_FALSE(m.timeline().segmentOfEffect(m.mask));
    m.undo().undo();
    EXPECT_EQ(m.edit->snapshot(), set);
    for (int i = 0; i < 3; ++i)
        m.undo().undo();
    EXPECT_EQ(m.edit->snapshot(), fresh);
    m.undo().undo();
    EXPECT_FALSE(m.timeline().findEffect(m.tint)->getMask());
    while (m.undo().redo()) {
    }
    EXPECT_FALSE(m.timeline().findEffect(m.tint));
    m.undo().undo();
    EXPECT_EQ(m.edit->snapshot(), set);
}

TEST(Mask, KeyframesStayAtTheirFramesThroughTrimsMovesAndSplits)
{
    Masked m;
    m.animateWidth();
    const auto frames = [&m](ObjectId clip) {
        const Segment& segment = *m.timeline().findSegment(clip);
        return framesOf(segment.effects.front()->mask()->data(), segment.data.length);
    };
    m.editor.trimStart(m.clip, 10);
    EXPECT_EQ(frames(m.clip), (std::vector<double>{10, 70}));
    m.editor.moveSegment(m.clip, kVideo, 200);
    EXPECT_EQ(frames(m.clip), (std::vector<double>{10, 70}));
    const ObjectId right = m.editor.splitSegment(m.clip, 240).object;
    EXPECT_EQ(frames(m.clip), (std::vector<double>{10, 40, 70}));
    EXPECT_EQ(frames(right), (std::vector<double>{-30, 0, 30}));
    const auto half = m.timeline().findSegment(right)->effects.front();
    EXPECT_NE(half->mask()->id(), stampOf(m.mask)) << "each half has a mask of its own";
    EXPECT_EQ(m.timeline().findEffect(objectOf(half->mask()->id())), half->mask());
    EXPECT_EQ(findFault(m.edit->snapshot()), "");
}

TEST(Mask, IsKnownToTheMonitorAsLongAsItIsThere)
{
    Masked m;
    ModelVob vob;
    vob.setEdit(m.edit);
    auto& monitor = *vob.getEffectMonitor();
    const auto region = monitor.getEditRegion(stampOf(m.mask));
    EXPECT_EQ(region.end(), 4.0);
    EXPECT_TRUE(monitor.findEffect(stampOf(m.mask)));
    m.editor.removeEffect(m.mask);
    EXPECT_EQ(m.undoTitle(), "Remove mask of Tint");
    EXPECT_FALSE(monitor.findEffect(stampOf(m.mask)));
    EXPECT_EQ(monitor.getEditRegion(stampOf(m.mask)).end(), 0.0);
}

TEST(EffectSettings, NamesOfAnyLengthAreKeptAndAnEmptyOneIsTheCataloguesAgain)
{
    Masked m;
    const auto name = [&m] { return std::string(oribund::toUTF8(m.timeline().findEffect(m.tint)->getName()).view()); };
    std::string longName;
    for (int i = 0; i < 5000; ++i)
        longName += "\xc3\xbc.";
    m.editor.renameEffect(m.tint, longName);
    EXPECT_EQ(name(), longName);
    EXPECT_LT(m.undoTitle().size(), 200u);
    m.editor.renameEffect(m.tint, "");
    EXPECT_EQ(name(), "Tint");
    m.editor.renameEffect(m.tint, "Tint");
    EXPECT_TRUE(m.edit->snapshot().tracks[0].segments[0].effects[0].name.empty());
}

TEST(EffectSettings, ResettingMakesAllConstantAndLeavesTheMaskAlone)
{
    Masked m;
    m.animateWidth();
    const EffectData fresh = m.timeline().findEffect(m.tint)->data();
    m.editor.keyframeAll(m.tint, 0.25);
    for (const ParamData& param : m.timeline().findEffect(m.tint)->data().params) {
        EXPECT_EQ(param.keyframed, m.edit->catalogue().find("tint")->find(param.property)->animatable);
        EXPECT_TRUE(!param.keyframed || param.channels.front().front().time == 0.25);
    }
    m.param<bool>(m.tint, kOn)->setConstantValue(oribund::ParamValue(true));
    m.editor.resetEffect(m.tint);
    EXPECT_EQ(m.timeline().findEffect(m.tint)->data(), fresh);
    EXPECT_TRUE(fresh.mask.front().params[2].keyframed);
    m.editor.resetEffect(m.mask);
    EXPECT_FALSE(m.timeline().findEffect(m.mask)->data().params[2].keyframed);
}

TEST(EffectSettings, PastingTakesWhatMeansTheSameAndSaysWhatDoesNot)
{
    Masked m;
    m.animateWidth();
    m.param<double>(m.tint, kLevel)->setConstantValue(oribund::ParamValue(12.0));
    const ObjectId other = m.editor.addEffect(m.clip, "tint").object;
    EffectData copied = m.timeline().findEffect(m.tint)->data();
    copied.params.push_back({"unknown", 3.0, false, {}});
    const EditOutcome outcome = m.editor.pasteSettings(copied, other);
    EXPECT_EQ(outcome.note, "Not pasted, as this effect has no such setting: \"unknown\".");
    const EffectData pasted = m.timeline().findEffect(other)->data();
    copied.params.pop_back();
    EXPECT_EQ(pasted.params, copied.params);
    ASSERT_EQ(pasted.mask.size(), 1u);
    EXPECT_EQ(pasted.mask[0].params, copied.mask[0].params);
    EXPECT_NE(pasted.mask[0].id, copied.mask[0].id);
    EXPECT_EQ(findFault(m.edit->snapshot()), "");

    // A value of another type, and curves for what cannot be animated.
    EffectData wrong{0, "tint", true, {}, {}};
    wrong.params = {{"Level", std::string("much"), false, {}}, {"On", true, true, {ChannelData{key(0.5, 1.0)}}}};
    EXPECT_FALSE(m.editor.pasteSettings(wrong, other));
    EXPECT_EQ(m.timeline().findEffect(other)->data(), pasted);
}

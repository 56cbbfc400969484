#include "tests/support/SampleEdit.h"
#include "workbench/model/MaskDescription.h"
#include "workbench/model/host/ModelMonitor.h"
#include "workbench/model/host/ModelVob.h"
#include "workbench/model/projection/Admission.h"
#include "workbench/model/projection/AllowList.h"
#include "workbench/model/projection/Projector.h"

#include "oribund/host/effects/keyframes/KeyframeClip.h"

#include <gtest/gtest.h>

#include <functional>

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

TEST(Mask, ItsKeyframesAreSelectedCopiedMovedAndFollowedLikeAnyOthers)
{
    Masked m;
    m.animateWidth();
    ModelVob vob;
    vob.setEdit(m.edit);
    auto& monitor = *vob.getEffectMonitor();
    const auto track = stampOf(kVideo);
    EXPECT_EQ(monitor.getNumKeyframedParams(track), 1);
    EXPECT_EQ(monitor.findAdjacentKeyframe(track, true), 0.8);

    monitor.selectAllKeyframes(oribund::IdStamp::wildcard(), {}, true);
    EXPECT_EQ(monitor.getNumKeyframesSelected(stampOf(m.mask), {}), 2);
    EXPECT_TRUE(monitor.trimSelectedKeyframes(track, 0.4));
    monitor.endTrim();
    EXPECT_EQ(framesOf(m.timeline().findEffect(m.mask)->data(), 100), (std::vector<double>{30, 90}));

    const auto copied = monitor.copySelectedKeyframes(oribund::IdStamp::wildcard(), {});
    EXPECT_EQ(copied.size(), 2);
    m.editor.resetEffect(m.mask);
    vob.setCurrentTime(0.2);
    EXPECT_EQ(monitor.pasteKeyframes(track, copied), 2);
    EXPECT_EQ(framesOf(m.timeline().findEffect(m.mask)->data(), 100), (std::vector<double>{5, 65}));

    // The later one is on the right half's mask from now on.
    const ObjectId right = m.editor.splitSegment(m.clip, 40).object;
    const auto half = m.timeline().findSegment(right)->effects.front()->mask();
    EXPECT_EQ(monitor.getNumKeyframesSelected(stampOf(m.mask), {}), 1);
    EXPECT_EQ(monitor.getNumKeyframesSelected(half->id(), {}), 1);
}

TEST(Mask, IsThreeFiltersAroundItsEffectThatComeAndGoWithIt)
{
    Masked m;
    m.animateWidth();
    const ObjectId plain = m.editor.addEffect(m.clip, "tint").object;
    const auto filters = [&m] { return project(*m.edit).clips.back().filters; };
    const auto value = [&](std::size_t index, const char* name) {
        const ProjectedFilter filter = filters()[index];
        for (const ProjectedProperty& property : filter.properties)
            if (property.name == name)
                return property.value;
        return std::string();
    };
    std::string order;
    for (const ProjectedFilter& filter : filters())
        order += filter.service + '(' + filter.partOf + ") ";
    const std::string id = filterId(m.tint);
    EXPECT_EQ(order, "mask_start(" + id + ") tint() frei0r.alphaspot(" + id + ") mask_apply(" + id + ") tint() ");
    EXPECT_EQ(filters()[4].id, filterId(plain));
    EXPECT_EQ(filters()[1].name, "Tint (1 of 2)");
    EXPECT_EQ(value(2, "3"), "0=0.1;20=0.1;80=0.4");

    const auto all = m.timeline().findEffect(m.mask)->params();
    m.maskParam(mask::kInvert)->setConstantValue(oribund::ParamValue(true));
    for (const auto& param : all)
        for (const PropertyUpdate& update : projectParam(*m.edit, stampOf(m.mask), param->id())) {
            EXPECT_EQ(update.service, filters()[2].id);
            EXPECT_EQ(update.value, value(2, update.property.c_str()));
        }
    EXPECT_EQ(value(2, "7") + value(2, "8"), "10");

    // A mask that is off shows all of the effect; with the effect all four are off.
    const auto disabled = [&] {
        return value(0, "disable") + value(1, "disable") + value(2, "disable") + value(3, "disable");
    };
    EXPECT_EQ(disabled(), "0000");
    m.editor.setEffectsEnabled({&m.mask, 1}, false);
    EXPECT_EQ(disabled(), "1011");
    m.editor.setEffectsEnabled({&m.mask, 1}, true);
    m.editor.setEffectsEnabled({&m.tint, 1}, false);
    EXPECT_EQ(disabled(), "1111");
    for (const ObjectId either : {m.tint, m.mask})
        EXPECT_EQ(projectEnabled(*m.edit, stampOf(either)).size(), 4u);
}

TEST(Mask, PassesTheGateAsItIsAndInNoOtherForm)
{
    Masked m;
    const AllowList allowed(catalogue());
    const Projection whole = project(*m.edit);
    EXPECT_TRUE(admit(whole, allowed).refusals.empty());
    const std::function<void(std::vector<ProjectedFilter>&)> forgeries[] = {
        [](auto& filters) { filters[0].properties[1].value = "shell"; },
        [](auto& filters) { filters[3].properties[1].value = "frei0r.other"; },
        [](auto& filters) {
            filters[2].properties.push_back({"resource", "/x.so"});
        },
        [](auto& filters) { filters[1].service = "frei0r.any", filters[1].partOf = filters[0].id; },
        [](auto& filters) { filters[0].partOf.clear(); },
    };
    for (const auto& forge : forgeries) {
        Projection forged = whole;
        forge(forged.clips.back().filters);
        EXPECT_EQ(admit(forged, allowed).refusals.size(), 1u) << &forge - forgeries;
    }
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

#include "tests/support/SampleEdit.h"

#include "workbench/model/projection/EffectInput.h"
#include "workbench/model/projection/ParamBaker.h"
#include "workbench/model/projection/Projector.h"

#include <gtest/gtest.h>

#include <charconv>
#include <map>
#include <random>

using namespace sample;
using oribund::EffectValParamFnType;
using oribund::KeyframeType;

namespace
{
double parse(std::string_view text)
{
    double value = NAN;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/** Reads an animation as a service does: straight or held between whole frames, level outside. */
class Animation
{
public:
    explicit Animation(const std::string& text)
    {
        for (std::size_t at = 0; at <= text.size();) {
            const std::size_t end = std::min(text.find(';', at), text.size());
            const std::string item = text.substr(at, end - at);
            const std::size_t sign = item.find('=');
            Key read{item.substr(sign + 1), item[sign - 1] == '|'};
            int frame = -1;
            std::from_chars(item.data(), item.data() + item.size(), frame);
            EXPECT_TRUE(keys_.empty() || keys_.rbegin()->first < frame) << text;
            keys_[frame] = read;
            at = end + 1;
        }
    }

    std::string textAt(int frame) const
    {
        const auto after = keys_.upper_bound(frame);
        return after == keys_.begin() ? after->second.text : std::prev(after)->second.text;
    }

    double at(int frame) const
    {
        const auto after = keys_.upper_bound(frame);
        if (after == keys_.begin() || after == keys_.end())
            return parse(textAt(frame));
        const auto before = std::prev(after);
        if (before->second.held)
            return parse(before->second.text);
        const double f = static_cast<double>(frame - before->first) / (after->first - before->first);
        return parse(before->second.text) + f * (parse(after->second.text) - parse(before->second.text));
    }

    std::size_t size() const { return keys_.size(); }

private:
    struct Key {
        std::string text;
        bool held = false;
    };

    std::map<int, Key> keys_;
};

class Projected : public testing::Test, public Bench
{
protected:
    ObjectId clip = addPicture(10, 50);
    ObjectId tint = editor.addEffect(clip, "tint").object;

    const ProjectedFilter filter()
    {
        for (const ProjectedClip& candidate : project(*edit).clips)
            if (candidate.id == clipId(clip))
                return candidate.filters.front();
        return {};
    }

    std::string property(const std::string& name)
    {
        for (const auto& [known, value] : filter().properties)
            if (known == name)
                return value;
        return "(none)";
    }

    template <class P>
    oribund::Graph1dBase& animate(int index)
    {
        const auto p = param<P>(tint, index);
        p->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
        return *p->graph();
    }

    void setKeys(const ChannelData& keys) { EXPECT_TRUE(animate<double>(kLevel).setKeyframes({&keys, 1})); }
};
} // namespace

TEST_F(Projected, ConstantsAreWrittenAsTheServiceReadsThem)
{
    param<double>(tint, kLevel)->setConstant(100.0 / 3);
    param<oribund::ColourData>(tint, kColour)->setConstant({{1.0, 0.5, 0.0, 0.25}});
    param<oribund::ColourData>(tint, kGrey)->setConstant({{1.0, 0.5, 0.0, 1.0}});
    param<oribund::Vector2d>(tint, kCentre)->setConstant({-0.0, 12.5});
    EXPECT_EQ(property("Level"), "0.333333333333");
    EXPECT_EQ(property("Colour"), "#40ff8000");
    EXPECT_EQ(property("r") + " " + property("g") + " " + property("b"), "0.5 0.25 0");
    EXPECT_EQ(property("Grey"), "(none)");
    EXPECT_EQ(property("Centre"), "0 12.5 0 0 1");
    EXPECT_EQ(property("On"), "0");
    EXPECT_EQ(property("Mode"), "10");
    EXPECT_EQ(property("quality"), "high");
    EXPECT_EQ(property("disable"), "0");
    editor.setEffectsEnabled({&tint, 1}, false);
    EXPECT_EQ(property("disable"), "1");
    EXPECT_EQ(projectEnabled(*edit, stampOf(tint)), (std::vector<PropertyUpdate>{{filterId(tint), "disable", "1"}}));
}

TEST_F(Projected, StraightPiecesAreWrittenAsTheirEnds)
{
    setKeys({key(10.0 / 50, 20.0), key(20.0 / 50, 60.0), key(40.0 / 50, 0.0)});
    EXPECT_EQ(property("Level"), "0=0.2;10=0.2;20=0.6;40=0");
    // Ends that lie outside are cut where the segment is.
    setKeys({key(-10.0 / 50, 0.0), key(70.0 / 50, 80.0)});
    EXPECT_EQ(property("Level"), "0=0.1;49=0.59");
    setKeys({key(0.5, 30.0)});
    EXPECT_EQ(Animation(property("Level")).at(40), 0.3);
    setKeys({key(-3.0, 30.0), key(-2.0, 40.0)});
    EXPECT_EQ(Animation(property("Level")).at(0), 0.4);
    setKeys({key(5e5, 30.0), key(9e5, 40.0)});
    EXPECT_EQ(Animation(property("Level")).at(49), 0.3);
}

TEST_F(Projected, EveryFrameIsExact)
{
    std::mt19937 random(7);
    const auto unit = [&random] { return static_cast<double>(random() % 10001) / 10000.0; };
    for (int round = 0; round < 200; ++round) {
        ChannelData keys;
        double time = unit() - 0.7;
        for (int i = 0; i < 1 + round % 6; ++i) {
            time += 0.001 + unit() * 0.4;
            oribund::Keyframe next = key(round % 2 ? std::round(time * 50) / 50 + i * 1e-4 : time, unit() * 100);
            next.type = unit() < 0.5 ? KeyframeType::Linear : KeyframeType::Smooth;
            if (unit() < 0.3)
                next.out = {unit() * 0.3, unit() * 100 - 50, false};
            keys.push_back(next);
        }
        setKeys(keys);
        const Animation animation(property("Level"));
        const auto level = param<double>(tint, kLevel);
        for (int frame = 0; frame < 50; ++frame)
            ASSERT_NEAR(animation.at(frame) * 100, level->getValue(frame / 50.0), 1e-9) << round << " " << frame;
    }
}

/** Nine days of one curve take no more than a few thousand keys, and look the same. */
TEST_F(Projected, LongCurvesAreShort)
{
    ChannelData keys{key(0.0, 20.0), key(0.3, 90.0), key(1.0, 10.0)};
    for (oribund::Keyframe& smooth : keys)
        smooth.type = KeyframeType::Smooth;
    setKeys(keys);
    const auto level = param<double>(tint, kLevel);
    const BakeSpan span{kMostFrames, 0, kMostFrames - 1};
    ParamDescription description = number("Level", 0, 100, 50);
    ProjectedProperties written;
    bakeParam(description, *level, span, written);
    description.integer = true;
    bakeParam(description, *level, span, written);
    const Animation smooth(written.at(0).value);
    const Animation whole(written.at(1).value);
    EXPECT_LT(smooth.size(), 20'000u);
    EXPECT_LT(whole.size(), 1'000u);
    std::mt19937 random(3);
    for (int i = 0; i < 10'000; ++i) {
        const int frame = static_cast<int>(random() % kMostFrames);
        const double value = level->getValue(static_cast<double>(frame) / kMostFrames);
        ASSERT_NEAR(smooth.at(frame), value, 1e-5) << frame;
        ASSERT_EQ(whole.textAt(frame), std::to_string(std::lround(value))) << frame;
    }
}

TEST_F(Projected, WhatCannotBeInterpolatedIsHeldFrameByFrame)
{
    auto& colour = animate<oribund::ColourData>(kColour);
    const double red[] = {1.0, 0.0, 0.0, 1.0};
    colour.addKeyframeWithValues(0.2, red);
    const Animation colours(property("Colour"));
    EXPECT_EQ(colours.textAt(0), "#ff000000");
    EXPECT_EQ(colours.textAt(5), "#ff800000");
    EXPECT_EQ(colours.textAt(10), "#ffff0000");
    EXPECT_EQ(colours.textAt(49), "#ffff0000");
    EXPECT_EQ(colours.size(), 11u);

    const ChannelData steps{key(0.0, 0.0), key(1.0, 4.0)};
    animate<double>(kWhole).setKeyframes({&steps, 1});
    const Animation whole(property("Whole"));
    EXPECT_EQ(whole.textAt(6), "0");
    EXPECT_EQ(whole.textAt(7), "1");
    EXPECT_EQ(whole.size(), 5u);

    auto& centre = animate<oribund::Vector2d>(kCentre);
    const double corner[] = {50.0, 25.0};
    centre.addKeyframeWithValues(1.0, corner);
    EXPECT_EQ(property("Centre"), "0=0 0 0 0 1;49=49 24.5 0 0 1");
}

TEST_F(Projected, AParameterIsUpdatedAsTheWholeWouldBe)
{
    setKeys({key(0.0, 20.0), key(0.5, 60.0)});
    const auto level = param<double>(tint, kLevel);
    EXPECT_EQ(projectParam(*edit, stampOf(tint), level->id()),
              (std::vector<PropertyUpdate>{{filterId(tint), "Level", property("Level")}}));
    EXPECT_EQ(projectParam(*edit, stampOf(tint), paramStamp(kGrey)).size(), 3u);
    EXPECT_TRUE(projectParam(*edit, stampOf(tint), paramStamp(99)).empty());
    EXPECT_TRUE(projectParam(*edit, stampOf(clip), level->id()).empty());
}

TEST_F(Projected, TracksAreFullAndInOrder)
{
    editor.addTrack(TrackKind::Video, 0, "V2");
    addPicture(80, 20);
    const Projection p = project(*edit);
    EXPECT_EQ(p.length, 100);
    ASSERT_EQ(p.tracks.size(), 5u);
    EXPECT_EQ(p.tracks[0].id, "background-track");
    EXPECT_EQ(p.tracks[1].name, "A2");
    EXPECT_EQ(p.tracks[4].name, "V2");
    for (const ProjectedTrack& track : p.tracks) {
        int length = 0;
        for (const ProjectedEntry& entry : track.entries)
            length += entry.length;
        EXPECT_EQ(length, 100) << track.id;
    }
    const ProjectedTrack& video = p.tracks[3];
    ASSERT_EQ(video.entries.size(), 4u);
    EXPECT_EQ(video.entries[0].length, 10);
    EXPECT_EQ(video.entries[1].first, (ProjectedCut{clipId(clip), 100, 149}));
    EXPECT_EQ(filter().in, 100);
    EXPECT_EQ(filter().out, 149);
    ASSERT_EQ(p.transitions.size(), 4u);
    EXPECT_EQ(p.transitions[3].service, "frei0r.cairoblend");
    EXPECT_EQ(p.transitions[3].bTrack, 4);
    EXPECT_EQ(p.transitions[0].service, "mix");

    Bench empty;
    EXPECT_EQ(project(*empty.edit).length, 1);
}

TEST_F(Projected, EffectsRunOnThroughTransitions)
{
    const ObjectId next = addPicture(60, 40, 500);
    const ObjectId later = editor.addEffect(next, "tint").object;
    const auto level = param<double>(later, kLevel);
    level->setFunctionType(EffectValParamFnType::Keyframed, -0.1);
    level->addKeyframeAt(0.5, 100.0);
    editor.addTransition(clip, {0, 0, 0, 7, "%luma04.pgm", true, 0.25});

    const Projection p = project(*edit);
    const auto& entries = p.tracks[3].entries;
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ(entries[1].first, (ProjectedCut{clipId(clip), 100, 146}));
    EXPECT_EQ(entries[2].kind, ProjectedEntry::Kind::Mix);
    EXPECT_EQ(entries[2].first, (ProjectedCut{clipId(clip), 147, 153}));
    EXPECT_EQ(entries[2].second, (ProjectedCut{clipId(next), 497, 503}));
    EXPECT_EQ(entries[3].first, (ProjectedCut{clipId(next), 504, 539}));
    const ProjectedTransition& luma = entries[2].transitions.front();
    EXPECT_EQ(luma.service, "luma");
    EXPECT_EQ(luma.properties,
              (ProjectedProperties{{"resource", "%luma04.pgm"}, {"softness", "0.25"}, {"invert", "1"}}));

    const ProjectedClip& second = p.clips.back();
    EXPECT_EQ(second.in, 497);
    EXPECT_EQ(second.filters[0].in, 497);
    const auto found = std::find_if(second.filters[0].properties.begin(), second.filters[0].properties.end(),
                                    [](const auto& property) { return property.name == "Level"; });
    const Animation animation(found->value);
    for (int frame = 497; frame < 540; ++frame)
        EXPECT_NEAR(animation.at(frame - 497) * 100, level->getValue((frame - 500) / 40.0), 1e-9) << frame;
}

TEST(EffectInputs, HoldOneClipWithTheEffectsBeforeAtItsOwnFrame)
{
    Bench b;
    b.addPicture(0, 20);
    const ObjectId clip = b.addPicture(50, 100, 300);
    const ObjectId first = b.editor.addEffect(clip, "tint").object;
    const ObjectId second = b.editor.addEffect(clip, "tint").object;
    const Projection whole = project(*b.edit);
    const auto input = inputOf(whole, filterId(second), 60);
    ASSERT_TRUE(input);
    ASSERT_EQ(input->edit.clips.size(), 1u) << "no other clip is opened for it";
    const ProjectedClip& only = input->edit.clips.front();
    ASSERT_EQ(only.filters.size(), 1u);
    EXPECT_EQ(only.filters.front().id, filterId(first));
    EXPECT_EQ(only.in + input->frame, 310) << "the tenth frame after its start";
    EXPECT_EQ(input->edit.length, 100);
    EXPECT_EQ(input->edit.tracks.front().entries.front().first, (ProjectedCut{clipId(clip), only.in, only.out}));
    EXPECT_TRUE(inputOf(whole, filterId(first), 60)->edit.clips.front().filters.empty());
    EXPECT_FALSE(inputOf(whole, filterId(first), 49));
    EXPECT_FALSE(inputOf(whole, filterId(first), 150));
    EXPECT_FALSE(inputOf(whole, "effect999", 60));
    ASSERT_TRUE(b.editor.setMask(second, true));
    EXPECT_EQ(inputOf(project(*b.edit), filterId(second), 60)->edit.clips.front().filters.size(), 1u)
        << "nothing of its mask is left";

    // Where two clips overlap, each is at its own frame.
    const ObjectId next = b.addPicture(150, 50, 500);
    const ObjectId onNext = b.editor.addEffect(next, "tint").object;
    TransitionData dissolve;
    dissolve.length = 10;
    ASSERT_TRUE(b.editor.addTransition(clip, dissolve));
    const Projection mixed = project(*b.edit);
    for (const auto& [effect, frame] : {std::pair(second, 397), std::pair(onNext, 497)}) {
        const auto inMix = inputOf(mixed, filterId(effect), 147);
        ASSERT_TRUE(inMix);
        EXPECT_EQ(inMix->edit.clips.front().in + inMix->frame, frame);
    }
}

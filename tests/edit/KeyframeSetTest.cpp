#include "tests/edit/KeyframesFixture.h"

#include <cmath>
#include <map>
#include <random>

namespace oribund::test
{
namespace
{

TEST_F(Keyframes, OfASetAreThoseWithinTheEffectAndFollowIt)
{
    const auto effect = addEffect(1);
    const auto first = addParam(effect, "first", {-0.5, 0.0, 0.25, 0.5, 1.25});
    const auto second = addParam(effect, "second", {0.25, 1.0});
    addParam(effect, "constant");
    const Set set = setOf(effect);
    EXPECT_EQ(set.size(), 5);
    EXPECT_EQ(set.keyframedParamCount(), 2);
    EXPECT_EQ(set.times(), (std::vector{0.0, 0.25, 0.5, 1.0}));
    EXPECT_EQ(set.countAt(0.25), 2);
    EXPECT_EQ(set.countAt(-0.5), 0);
    EXPECT_EQ(set.nearest(0.375), 0.25) << "the earlier of two";
    EXPECT_EQ(set.next(0.5 + 1e-10), 1.0) << "the same time is not later";
    EXPECT_EQ(set.previous(0.25), 0.0);
    EXPECT_FALSE(set.next(1.0));
    EXPECT_FALSE(set.previous(0.0));

    select(effect, *second, 0.25);
    const auto both = set.at(0.25);
    ASSERT_EQ(both.size(), 2u);
    EXPECT_FALSE(both[0].selected);
    EXPECT_TRUE(both[1].selected);
    EXPECT_EQ(both[1].param, second->id());

    first->graph()->moveKeyframe(2, 0.75);
    tellOf(effect);
    EXPECT_EQ(set.times(), (std::vector{0.0, 0.25, 0.5, 0.75, 1.0}));
    EXPECT_EQ(vob.monitor->getNumKeyframedParams(track), 2);
    vob.monitor->effects.clear();
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, effect->id());
    EXPECT_TRUE(set.empty());
    EXPECT_TRUE(set.times().empty());
    EXPECT_TRUE(Set().empty());
}

TEST_F(Keyframes, AreDrawnOncePerCellASelectedOneFirst)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(-0.1, 1.1);
    const auto effect = addEffect(1);
    const std::vector params{addParam(effect, "a", {0.0}), addParam(effect, "b", {0.5})};
    for (int i = 0; i < 300; ++i)
        params[i % 2]->graph()->addKeyframe(anywhere(random));
    tellOf(effect);
    const Set set = setOf(effect);
    for (int i = 0; i < params[0]->graph()->size(); i += 7)
        select(effect, *params[0], params[0]->graph()->timeAt(i));

    for (const int cells : {1, 10, 333, 5000}) {
        const double from = anywhere(random) / 2;
        const double width = 0.6 / cells;
        std::map<int, bool> expected;
        for (const double time : set.times()) {
            const int cell = static_cast<int>(std::floor((time - from) / width));
            if (cell >= 0 && cell < cells)
                for (const auto& keyframe : set.at(time))
                    expected[cell] = expected[cell] || keyframe.selected;
        }
        std::map<int, bool> drawn;
        double last = from - 1;
        set.visitCells(from, from + 0.6, cells, [&](double time, bool selected) {
            EXPECT_GT(time, last);
            last = time;
            EXPECT_EQ(set.countAt(time), 1);
            EXPECT_TRUE(drawn.emplace(static_cast<int>(std::floor((time - from) / width)), selected).second);
        });
        EXPECT_EQ(drawn, expected) << cells;
    }
    set.visitCells(0.5, 0.5, 10, [](double, bool) { FAIL() << "nothing is drawn on no span"; });
}

TEST_F(Keyframes, AreSelectedWhereTheyAreAndToldOnce)
{
    const auto effect = addEffect(1);
    const auto other = addEffect(2);
    const auto param = addParam(effect, "a", {-0.5, 0.0, 0.5});
    const auto theirs = addParam(other, "a", {0.25});
    select(effect, *param, 0.3);
    select(effect, *param, -0.5);
    vob.monitor->selectKeyframe({IdStamp(9, 9, 9), param->id(), 0.5}, true);
    EXPECT_TRUE(heard.empty()) << "none of these is a keyframe that anybody sees";

    select(effect, *param, 0.5 + 1e-10);
    select(effect, *param, 0.5);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].code, EffectChangeCode::SelectionChanged);
    EXPECT_EQ(heard[0].flags, EffectChangeDescription::kSelectionOnly);
    EXPECT_TRUE(vob.monitor->keyframeSelection().contains(effect->id(), param->id(), 0.5));

    setOf(effect);
    vob.monitor->selectAllKeyframes(IdStamp::wildcard(), {}, true);
    vob.monitor->selectAllKeyframes(IdStamp::wildcard(), {}, true);
    EXPECT_EQ(heard.size(), 2u);
    EXPECT_EQ(selected(), 3);
    EXPECT_EQ(vob.monitor->getNumKeyframesSelected(effect->id(), {}), 2);

    param->graph()->removeKeyframe(1);
    theirs->setKeyframeValueAt(0, 7.0);
    tellOf(effect);
    tellOf(other);
    EXPECT_EQ(selected(), 2) << "only what has gone is dropped";
    vob.monitor->selectAllKeyframes(other->id(), {}, false);
    EXPECT_EQ(selected(), 1);
}

TEST_F(Keyframes, AreFoundNextToTheCurrentTimeOnWhateverSegmentItIs)
{
    const auto early = addEffect(1, 0.0, 10.0);
    const auto late = addEffect(2, 5.0, 10.0);
    const auto param = addParam(early, "a", {0.1, 0.6, 1.5});
    addParam(late, "a", {0.2});
    const auto adjacent = [&](double time, bool forward) {
        vob.setCurrentTime(time);
        return vob.monitor->findAdjacentKeyframe(track, forward);
    };
    EXPECT_FALSE(adjacent(1.0, false)) << "the current time is not before itself";
    EXPECT_DOUBLE_EQ(adjacent(1.0, true).value_or(-1), 6.0) << "both effects have one there";
    EXPECT_DOUBLE_EQ(adjacent(9.0, false).value_or(-1), 6.0);
    EXPECT_FALSE(adjacent(6.0, true)) << "what lies outside its effect is not walked to";

    vob.monitor->effects[1].second = {6.0, 11.0};
    vob.monitor->tell(EffectChangeCode::None, IdStamp::wildcard(), EffectChangeDescription::kWholesaleRefresh);
    EXPECT_DOUBLE_EQ(adjacent(6.5, true).value_or(-1), 7.0);
    param->graph()->addKeyframe(0.65);
    tellOf(early);
    EXPECT_DOUBLE_EQ(adjacent(6.3, true).value_or(-1), 6.5);

    vob.monitor->effects.erase(vob.monitor->effects.begin());
    EXPECT_DOUBLE_EQ(adjacent(6.2, true).value_or(-1), 7.0) << "another segment, by the time having moved";
    EXPECT_TRUE(vob.monitor->moveToAdjacentKeyframe(track, true));
    EXPECT_DOUBLE_EQ(vob.getCurrentTime(), 7.0);
    EXPECT_FALSE(vob.monitor->moveToAdjacentKeyframe(track, true));
    EXPECT_DOUBLE_EQ(getCurrentFXTime(late).normalised, 0.2);
}

TEST_F(Keyframes, AreAddedWithoutAChangeOfTheCurve)
{
    const auto effect = addEffect(1);
    const auto a = addParam(effect, "a", {0.0, 1.0});
    const auto b = addParam(effect, "b", {0.5});
    a->setKeyframeValueAt(1, 10.0);
    a->graph()->setKeyframeType(0, KeyframeType::Smooth);
    const double before = a->getValue(0.25);
    EXPECT_TRUE(vob.monitor->addKeyframesAt(track, effect->id(), FXTime{0.5}));
    EXPECT_DOUBLE_EQ(a->getValue(0.25), before);
    EXPECT_EQ(timesOf(*a), (std::vector{0.0, 0.5, 1.0}));
    EXPECT_EQ(b->graph()->size(), 1) << "it has one there";
    EXPECT_FALSE(vob.monitor->addKeyframesAt(track, effect->id(), FXTime{0.5})) << "all have one there";
    vob.edit->readOnly = true;
    EXPECT_FALSE(vob.monitor->addKeyframesAt(track, effect->id(), FXTime{0.2}));
    selectAll();
    EXPECT_FALSE(vob.monitor->removeSelectedKeyframes(IdStamp::wildcard(), {}));
    EXPECT_EQ(a->graph()->size(), 3);
}

} // namespace
} // namespace oribund::test

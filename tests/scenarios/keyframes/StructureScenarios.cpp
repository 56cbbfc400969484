#include "tests/scenarios/keyframes/KeyframeScene.h"

#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <cmath>

namespace workbench::scenes
{
namespace
{

class StructureScenario : public KeyframeScene
{
protected:
    /** The level at each frame of the edit. */
    std::vector<double> values(int from, int to) const
    {
        std::vector<double> all;
        for (int frame = from; frame < to; ++frame)
            all.push_back(levelAt(frame));
        return all;
    }

    static void expectSame(const std::vector<double>& a, const std::vector<double>& b)
    {
        ASSERT_EQ(a.size(), b.size());
        for (std::size_t i = 0; i < a.size(); ++i)
            ASSERT_NEAR(a[i], b[i], 1e-6) << "frame " << i;
    }

    void expectSpan(int from, int to)
    {
        EXPECT_NEAR(bar->geometry().start, vob.timeOf(kClipStart + from), 1e-9);
        EXPECT_NEAR(bar->geometry().end, vob.timeOf(kClipStart + to), 1e-9);
    }

    double shown() const { return in<oribund::ValSlider>(*levelRow).getValue(); }
};

TEST_P(StructureScenario, ASplitLeavesTheCurveAndTheBarWithTheLeftHalf)
{
    const auto before = content();
    const auto curve = values(0, 250);
    goTo(110);
    const double here = shown();
    ASSERT_TRUE(editor.splitSegment(clip, kClipStart + 125));
    expectSame(values(0, 250), curve);
    expectSpan(0, 125);
    // 125 frames on 250 pixels.
    EXPECT_EQ(marks({50, 100, 150, 200}), "-k-k");
    EXPECT_NEAR(shown(), here, 1e-6);
    EXPECT_EQ(steps(), 1);
    undo().undo();
    EXPECT_EQ(content(), before);
    expectSpan(0, 250);
    EXPECT_EQ(marks({50, 75, 200}), "k-k");
}

TEST_P(StructureScenario, ATrimKeepsKeyframesAtTheirPictures)
{
    const auto before = content();
    const auto curve = values(25, 225);
    goTo(110);
    const double here = shown();
    ASSERT_TRUE(editor.trimStart(clip, kClipStart + 25));
    ASSERT_TRUE(editor.trimEnd(clip, kClipStart + 225));
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");
    expectSame(values(25, 225), curve);
    expectSpan(25, 225);
    EXPECT_NEAR(shown(), here, 1e-6);
    // 200 frames on 250 pixels.
    EXPECT_EQ(marks({31, 50, 94, 219}), "k-kk");
    undoAll();
    EXPECT_EQ(content(), before);
    expectSpan(0, 250);
}

TEST_P(StructureScenario, ATrimInADragOfAKeyframeLosesNeither)
{
    const auto before = content();
    grab(100, {104, 120});
    ASSERT_TRUE(editor.trimEnd(clip, kClipStart + 225));
    moveTo({130, 140});
    stage->key(Key::Escape);
    release(140);
    expectSpan(0, 225);
    EXPECT_EQ(keys(), "Level 50 120 200 | Colour 120");
    EXPECT_EQ(steps(), 2);
    undoAll();
    EXPECT_EQ(content(), before);
}

ON_BOTH_STAGES(StructureScenario);

} // namespace
} // namespace workbench::scenes

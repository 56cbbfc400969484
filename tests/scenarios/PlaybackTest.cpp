#include "workbench/app/session/Playback.h"
#include "tests/engine/SampleMedia.h"
#include "tests/support/TestHost.h"
#include "workbench/app/files/MediaImporter.h"
#include "workbench/app/session/Workspace.h"

#include "oribund/host/effects/params/EffectValParam.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>

namespace workbench
{
namespace
{

using Kind = EngineProblem::Kind;

/** The viewer on the sample clip, without a window. */
class PlaybackTest : public testing::Test
{
protected:
    PlaybackTest()
    {
        EXPECT_TRUE(MediaImporter::importNow(workspace, {SampleMedia::clip()}));
        segment = workspace.selection().get();
        Playback::Display display;
        display.picture = [this](const FrameImagePtr& shown) { picture = shown; };
        display.problem = [this](const EngineProblem& problem) { problems.push_back(problem); };
        playback = std::make_unique<Playback>(workspace.engine(), workspace.vob(), std::move(display));
        playback->setPictureSize(320, 180);
    }

    bool settle()
    {
        return QTest::qWaitFor([&] { return playback->isUpToDate(); }, 20000);
    }

    /** An effect of which the catalogue knows nothing, or nothing good: the edit holds it all the same. */
    void addAnyway(const char* service)
    {
        EffectData effect;
        effect.service = service;
        EXPECT_TRUE(workspace.editor().addEffect(segment, effect));
    }

    const EngineProblem* problemOf(Kind kind) const
    {
        const auto found = std::find_if(problems.begin(), problems.end(),
                                        [kind](const EngineProblem& problem) { return problem.kind == kind; });
        return found == problems.end() ? nullptr : &*found;
    }

    std::ptrdiff_t missingReports() const
    {
        return std::count_if(problems.begin(), problems.end(),
                             [](const EngineProblem& problem) { return problem.kind == Kind::EffectMissing; });
    }

    oribund::test::TestHost host;
    Workspace workspace{testEngine()};
    ObjectId segment = kNoObject;
    FrameImagePtr picture;
    std::vector<EngineProblem> problems;
    std::unique_ptr<Playback> playback;
};

TEST_F(PlaybackTest, ValuesAreUpdatedAndOnlyStructureIsLoadedAnew)
{
    const ObjectId brightness = workspace.editor().addEffect(segment, "brightness").object;
    addAnyway("no.such.effect"); // reported by every load, and by no update
    ASSERT_TRUE(settle());
    ASSERT_EQ(missingReports(), 1);
    const auto plain = picture->rgba;

    const auto& effect = *workspace.edit().timeline().findEffect(brightness);
    const auto level = oribund::Kt::dynamicCast<oribund::EffectValParam<double>>(effect.paramAt(0));
    ASSERT_TRUE(level);
    const double value = level->getValue(0.0);
    level->setConstant((value + level->getMin()) / 2.0, oribund::ChangeKind::Start);
    level->setConstant(level->getMin(), oribund::ChangeKind::Continuation);
    EXPECT_FALSE(playback->isUpToDate());
    ASSERT_TRUE(settle());
    EXPECT_NE(picture->rgba, plain);
    workspace.edit().undoStack().undo();
    ASSERT_TRUE(settle());
    EXPECT_EQ(picture->rgba, plain);
    EXPECT_EQ(missingReports(), 1) << "moving a value builds nothing anew";

    ASSERT_TRUE(workspace.editor().removeEffect(brightness));
    ASSERT_TRUE(settle());
    EXPECT_EQ(missingReports(), 2);
    // However much is changed in one go, it is loaded once.
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(workspace.editor().addEffect(segment, "brightness"));
    ASSERT_TRUE(settle());
    EXPECT_EQ(missingReports(), 3);
}

TEST_F(PlaybackTest, ThePictureFollowsTimeEditAndTheOtherEdit)
{
    ASSERT_TRUE(settle());
    ASSERT_TRUE(picture);
    ModelVob& vob = workspace.vob();
    for (const int frame : {10, 60, 30})
        vob.setCurrentTime(vob.timeOf(frame));
    ASSERT_TRUE(settle());
    EXPECT_EQ(picture->frame, 30);
    ASSERT_TRUE(workspace.editor().removeSegment(segment));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !picture; }, 5000)) << "of an empty edit nothing is shown";
    workspace.edit().undoStack().undo();
    ASSERT_TRUE(settle());
    EXPECT_TRUE(picture);

    workspace.show(oribund::Kt::makePtr<EditModel>(emptyEdit({}, FormatData()), workspace.catalogue()));
    playback->editReplaced();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !picture; }, 5000));
    vob.startPlay();
    QTest::qWait(100);
    EXPECT_FALSE(picture) << "no picture of the edit before";
}

TEST_F(PlaybackTest, AHangingEffectIsNamedAndBypassedWhileTheUserGoesOn)
{
    ASSERT_TRUE(settle());
    const auto plain = picture->rgba;
    addAnyway(kHanging.c_str());
    // The event loop never stands still for long, though the rendering does.
    qint64 longest = 0;
    QElapsedTimer sinceTick;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, [&] { longest = std::max(longest, sinceTick.restart()); });
    sinceTick.start();
    ticks.start(10);
    ASSERT_TRUE(settle());
    EXPECT_LT(longest, 1000);
    const EngineProblem* const hung = problemOf(Kind::EffectHung);
    ASSERT_NE(hung, nullptr);
    EXPECT_NE(hung->message.find(kHanging), std::string::npos) << hung->message;
    EXPECT_EQ(picture->rgba, plain);

    // It stays bypassed through what is edited next, and is tried again only when asked for.
    problems.clear();
    QElapsedTimer quick;
    quick.start();
    ASSERT_TRUE(workspace.editor().addEffect(segment, "brightness"));
    workspace.vob().setCurrentTime(workspace.vob().timeOf(20));
    ASSERT_TRUE(settle());
    EXPECT_LT(quick.elapsed(), 1900) << "less than it takes to find out that it hangs";
    EXPECT_EQ(problemOf(Kind::EffectHung), nullptr);
    EXPECT_EQ(picture->frame, 20);
    playback->retryEffects();
    EXPECT_TRUE(QTest::qWaitFor([&] { return problemOf(Kind::EffectHung) != nullptr; }, 20000));
    ASSERT_TRUE(settle());
}

} // namespace
} // namespace workbench

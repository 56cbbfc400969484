#include "tests/scenarios/Scenario.h"
#include "workbench/app/files/ExportBar.h"

#include "oribund/host/toolkit/widgets/ValButton.h"

#include <fstream>

namespace workbench
{
namespace
{

TEST_F(Scenario, ADragInThePanelChangesThePictureAsOneStep)
{
    openClip();
    ASSERT_NE(window_->viewer().picture(), nullptr);
    const auto before = pixels();
    ASSERT_NE(addEffect("brightness"), nullptr);
    EXPECT_EQ(pixels(), before) << "the effect's default changes nothing";
    auto* slider = findInPanel<oribund::Slider>();
    ASSERT_NE(slider, nullptr);

    const std::size_t steps = workspace_->edit().undoStack().position();
    const double plain = brightness();
    drag(*slider, 0.9);
    settle();
    EXPECT_GT(brightness(), plain + 10.0);
    EXPECT_EQ(workspace_->edit().undoStack().position(), steps + 1);
    EXPECT_TRUE(window_->action(Command::Undo).text().contains(QStringLiteral("Brightness 0 % to")));
    EXPECT_TRUE(document_->isModified());

    const auto bright = pixels();
    press(Command::Undo);
    EXPECT_EQ(pixels(), before);
    press(Command::Redo);
    EXPECT_EQ(pixels(), bright);

    drag(*findInPanel<oribund::Slider>(), 0.1, true);
    settle();
    EXPECT_EQ(pixels(), bright) << "Escape takes the drag back";
    EXPECT_EQ(workspace_->edit().undoStack().position(), steps + 1);
}

TEST_F(Scenario, AnAnimatedValueIsSavedReopenedAndExported)
{
    openClip();
    const auto effect = addEffect("brightness");
    ASSERT_NE(effect, nullptr);
    findInPanel<oribund::ValButton>()->userClick(); // a keyframe here makes it animated
    press(Command::ToEnd);
    drag(*findInPanel<oribund::Slider>(), 0.05);
    settle();
    const double dark = brightness();
    press(Command::ToStart);
    EXPECT_GT(brightness(), dark + 10.0);
    EXPECT_EQ(effect->animatedParams().size(), 1u);
    press(Command::Split); // at the start there is nothing to cut
    goTo(30);
    press(Command::Split);
    ASSERT_EQ(segments(), 2u);

    const EditData saved = workspace_->edit().snapshot();
    const auto picture = pixels();
    ASSERT_TRUE(document_->save((folder_ / "film").string()));
    EXPECT_FALSE(document_->isModified());
    document_->startNew();
    settle();
    EXPECT_EQ(window_->viewer().picture(), nullptr);
    ASSERT_TRUE(document_->open((folder_ / "film.mlt").string()));
    settle();
    EditData reopened = workspace_->edit().snapshot();
    reopened.name = saved.name;
    EXPECT_EQ(reopened, saved);
    EXPECT_EQ(workspace_->vob().currentFrame(), 30);
    EXPECT_EQ(pixels(), picture);

    ExportRequest request;
    request.path = (folder_ / "film.mp4").string();
    ASSERT_TRUE(window_->exportBar().start(workspace_->edit(), document_->path(), request));
    EXPECT_TRUE(window_->exportBar().isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window_->exportBar().isVisible(); }, 60000));
    ASSERT_EQ(host_.shown.size(), 2u);
    EXPECT_NE(host_.shown.back().find("Exported"), std::string::npos) << host_.shown.back();
    EXPECT_EQ(workspace_->engine()->probeMedia(request.path).info.value_or(MediaInfo()).frames, kSampleFrames);
}

TEST_F(Scenario, WhatCannotBeOpenedIsNamedAndNothingIsLost)
{
    openClip();
    const EditData before = workspace_->edit().snapshot();
    std::ofstream(folder_ / "empty.mp4");
    std::ofstream(folder_ / "text.mp4") << "this is no film";
    std::ofstream(folder_ / "broken.mlt") << "<mlt><tractor";
    window_->files().open(
        {(folder_ / "missing.mp4").string(), (folder_ / "empty.mp4").string(), (folder_ / "text.mp4").string()});
    EXPECT_EQ(window_->viewer().status(), QStringLiteral("Loading media: 1 of 3"));
    settle();
    EXPECT_EQ(window_->viewer().status(), QString());
    EXPECT_FALSE(document_->open((folder_ / "broken.mlt").string()));
    EXPECT_FALSE(document_->save("/proc/nowhere/film.mlt"));
    EXPECT_EQ(workspace_->edit().snapshot().tracks, before.tracks);
    ASSERT_EQ(host_.shown.size(), 5u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NE(host_.shown[i].find(std::vector{"missing.mp4", "empty.mp4", "text.mp4"}[i]), std::string::npos);
    EXPECT_NE(host_.shown[3].find("broken.mlt"), std::string::npos);
    EXPECT_TRUE(document_->isModified());
}

} // namespace
} // namespace workbench

#include "workbench/app/timeline/TimelineGeometry.h"
#include "tests/support/SampleEdit.h"

#include <gtest/gtest.h>

namespace workbench
{
namespace
{

using Kind = TimelineGeometry::Hit::Kind;

/** Two segments of 100 frames with a gap of 50 between them, on the first video track. */
class TimelineGeometryTest : public testing::Test
{
protected:
    TimelineGeometryTest()
    {
        Editor::Clip clip;
        clip.media = sample::media();
        clip.length = 100;
        clip.videoTrack = edit.timeline().tracks().front()->id();
        first = Editor(edit).addClip(clip, 0).object;
        second = Editor(edit).addClip(clip, 150).object;
        geometry.setWidth(TimelineGeometry::kHeaderWidth + 500);
        geometry.setEdit(edit);
        geometry.showAll();
    }

    double middleOf(std::size_t row) const { return geometry.rows()[row].top + geometry.rows()[row].height / 2.0; }

    EditModel edit{emptyEdit("e", FormatData()), sample::catalogue()};
    TimelineGeometry geometry;
    ObjectId first = kNoObject;
    ObjectId second = kNoObject;
};

TEST_F(TimelineGeometryTest, FramesAndPixelsAgreeAtEveryZoom)
{
    EXPECT_LT(geometry.xOf(250), TimelineGeometry::kHeaderWidth + 500);
    EXPECT_GT(geometry.xOf(250), TimelineGeometry::kHeaderWidth + 400);
    for (int i = 0; i < 30; ++i) {
        for (int frame = static_cast<int>(geometry.firstFrame()) + 1; frame < 250; frame += 7) {
            EXPECT_EQ(geometry.frameAt(geometry.xOf(frame)), frame);
            EXPECT_EQ(geometry.frameAt(geometry.xOf(frame + 0.99)), frame);
        }
        geometry.zoom(1.25, 300.0);
    }
    EXPECT_EQ(geometry.frameAt(-1000.0), std::max(0, geometry.frameAt(-1000.0)));
}

TEST_F(TimelineGeometryTest, ZoomingKeepsTheFrameUnderThePointer)
{
    geometry.zoom(8.0, 300.0);
    const double frame = geometry.firstFrame() + (300.0 - TimelineGeometry::kHeaderWidth) / geometry.pixelsPerFrame();
    geometry.zoom(1.5, 300.0);
    EXPECT_NEAR(geometry.xOf(frame), 300.0, 1e-6);
    geometry.zoom(1e9, 300.0);
    EXPECT_EQ(geometry.pixelsPerFrame(), TimelineGeometry::kMostPixels);
    geometry.zoom(1e-9, 300.0);
    EXPECT_EQ(geometry.firstFrame(), 0.0);
    EXPECT_GT(geometry.framesInView(), 250.0);
}

TEST_F(TimelineGeometryTest, ShowsWhatIsAskedForAsFarAsItGoes)
{
    geometry.show(60.0, 50.0, 70.0);
    EXPECT_NEAR(geometry.firstFrame(), 60.0, 1e-9);
    EXPECT_NEAR(geometry.framesInView(), 50.0, 1e-9);
    const double x = geometry.xOf(70.0);
    geometry.show(68.0, 10.0, 70.0); // closer than it gets
    EXPECT_EQ(geometry.pixelsPerFrame(), TimelineGeometry::kMostPixels);
    EXPECT_NEAR(geometry.xOf(70.0), x, 1e-6);
    geometry.show(200.0, 100.0, 0.0);
    EXPECT_NEAR(geometry.firstFrame(), geometry.lastFirstFrame(), 1e-9);
    geometry.show(10.0, 0.0, 10.0);
    EXPECT_NEAR(geometry.framesInView(), 100.0, 1e-9);
    geometry.show(-1e6, 1e7, 10.0);
    EXPECT_EQ(geometry.firstFrame(), 0.0);
}

TEST_F(TimelineGeometryTest, FindsWhatLiesUnderThePointer)
{
    const auto at = [&](double frame, double y) { return geometry.hitTest(edit, geometry.xOf(frame), y); };
    EXPECT_EQ(at(40, 5).kind, Kind::Ruler);
    EXPECT_EQ(at(40, 5).frame, 40);
    EXPECT_EQ(at(99.5, middleOf(0)).object, first);
    EXPECT_EQ(at(150, middleOf(0)).object, second);
    EXPECT_EQ(at(120, middleOf(0)).kind, Kind::Track);
    EXPECT_EQ(at(40, middleOf(1)).object, edit.timeline().tracks()[1]->id());
    EXPECT_EQ(geometry.hitTest(edit, 10, middleOf(0)).kind, Kind::Header);
    EXPECT_EQ(at(40, geometry.height() + 10).kind, Kind::Nothing);
}

TEST_F(TimelineGeometryTest, TurnsThePageOnlyWhenTheTimeLeavesTheView)
{
    geometry.zoom(10.0, TimelineGeometry::kHeaderWidth);
    const int last = static_cast<int>(geometry.framesInView()) - 1;
    EXPECT_FALSE(geometry.follow(last));
    EXPECT_TRUE(geometry.follow(last + 2));
    EXPECT_GE(last + 2, geometry.firstFrame());
    EXPECT_LT(geometry.xOf(last + 3), TimelineGeometry::kHeaderWidth + 500);
    EXPECT_TRUE(geometry.follow(0));
    EXPECT_EQ(geometry.firstFrame(), 0.0);
}

TEST_F(TimelineGeometryTest, LabelsNeverTouch)
{
    for (int i = 0; i < 40; ++i) {
        double before = -1e9;
        int labels = 0;
        for (const TimelineGeometry::Tick& tick : geometry.ticks()) {
            if (tick.label.empty())
                continue;
            EXPECT_GT(tick.x - before, 80.0);
            before = tick.x;
            ++labels;
        }
        EXPECT_GE(labels, 1);
        EXPECT_LE(labels, 10);
        geometry.zoom(1.2, 200.0);
    }
}

} // namespace
} // namespace workbench

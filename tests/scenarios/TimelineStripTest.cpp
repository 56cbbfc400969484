#include "workbench/app/timeline/TimelineStrip.h"
#include "tests/engine/SampleMedia.h"
#include "tests/support/SampleEdit.h"
#include "tests/support/TestHost.h"

#include <QImage>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <algorithm>

namespace workbench
{
namespace
{

/** The strip on two segments of 100 frames, with a gap of 50 between them, on the first video track. */
class TimelineStripTest : public testing::Test
{
protected:
    TimelineStripTest()
    {
        Editor::Clip clip;
        clip.media = sample::media();
        clip.length = 100;
        clip.videoTrack = edit().timeline().tracks().front()->id();
        first = workspace.editor().addClip(clip, 0).object;
        second = workspace.editor().addClip(clip, 150).object;
        strip.resize(TimelineGeometry::kHeaderWidth + 600, strip.sizeHint().height());
        strip.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&strip));
        paint();
    }

    EditModel& edit() { return workspace.edit(); }

    int frame() { return workspace.vob().currentFrame(); }

    ObjectId selected() { return workspace.selection().get(); }

    const TimelineGeometry& geometry() const { return strip.geometryOfEdit(); }

    double xOf(double frame) const { return geometry().xOf(frame); }

    /** The middle of a frame on a track's row; row -1 is the ruler. */
    QPoint at(int frame, int row) const
    {
        const int y =
            row < 0 ? TimelineGeometry::kRulerHeight / 2 : geometry().rows()[static_cast<std::size_t>(row)].top + 10;
        return {static_cast<int>(xOf(frame + 0.5)), y};
    }

    void click(const QPoint& place, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(&strip, button, Qt::NoModifier, place);
    }

    void wheel(const QPoint& place, const QPoint& turn, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QWheelEvent event(place, strip.mapToGlobal(place), {}, turn, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&strip, &event);
    }

    /** Paints the strip anew and yields what is not as it was painted last; an invalid rectangle for nothing. */
    QRect paint()
    {
        const QImage before = painted_;
        painted_ = strip.grab().toImage().convertToFormat(QImage::Format_RGB32);
        QRect changed;
        for (int y = 0; y < before.height(); ++y)
            for (int x = 0; x < before.width(); ++x)
                if (before.pixel(x, y) != painted_.pixel(x, y))
                    changed |= QRect(x, y, 1, 1);
        return changed;
    }

    /** Where the first or second segment is painted, its border included. */
    QRect boxOf(ObjectId segment)
    {
        const SegmentData& data = edit().timeline().findSegment(segment)->data;
        const TimelineGeometry::Row& row = geometry().rows().front();
        const QPoint topLeft(static_cast<int>(xOf(data.start)) - 1, row.top);
        return {topLeft, QPoint(static_cast<int>(xOf(data.end())) + 1, row.top + row.height)};
    }

    oribund::test::TestHost host;
    Workspace workspace{testEngine()};
    TimelineStrip strip{workspace};
    ObjectId first = kNoObject;
    ObjectId second = kNoObject;

private:
    QImage painted_;
};

TEST_F(TimelineStripTest, AClickSetsTheTimeAndSelectsWhatLiesThere)
{
    click(at(40, 0));
    EXPECT_EQ(frame(), 40);
    EXPECT_EQ(selected(), first);
    EXPECT_TRUE(strip.accessibleDescription().contains(QStringLiteral("cup.mp4")));
    click(at(90, -1));
    EXPECT_EQ(frame(), 90);
    EXPECT_EQ(selected(), first) << "the ruler only moves the time";
    click(at(20, 0), Qt::RightButton);
    EXPECT_EQ(frame(), 90);
    click(at(120, 0));
    EXPECT_EQ(selected(), kNoObject) << "between the segments";
    EXPECT_EQ(frame(), 120);
    EXPECT_EQ(edit().undoStack().position(), 2u) << "nothing of that is an edit";
}

TEST_F(TimelineStripTest, ADragScrubsUntilTheButtonIsReleased)
{
    QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, at(10, -1));
    for (const int to : {30, 60, 200, 45}) {
        QTest::mouseMove(&strip, at(to, 0));
        EXPECT_EQ(frame(), to);
    }
    EXPECT_EQ(selected(), kNoObject) << "what the pointer passes is not selected";
    QTest::mouseMove(&strip, {-500, 5});
    EXPECT_EQ(frame(), 0);
    QTest::mouseRelease(&strip, Qt::LeftButton, Qt::NoModifier, at(70, -1));

    // Zoomed in, a drag beyond the edge takes the view along.
    strip.zoom(6.0);
    QTest::mousePress(&strip, Qt::LeftButton, Qt::NoModifier, at(3, -1));
    QTest::mouseMove(&strip, {strip.width() + 20, 5});
    EXPECT_GT(geometry().firstFrame(), 0.0);
    EXPECT_LT(xOf(frame()), strip.width());
    QTest::mouseRelease(&strip, Qt::LeftButton);
}

TEST_F(TimelineStripTest, TheWheelZoomsAboutThePointerAndScrolls)
{
    strip.zoom(3.0);
    const QPoint pointer(TimelineGeometry::kHeaderWidth + 350, 60);
    strip.scrollTo(40);
    const auto underPointer = [&] { return geometry().firstFrame() + 350.0 / geometry().pixelsPerFrame(); };
    const double held = underPointer();
    const double scale = geometry().pixelsPerFrame();
    wheel(pointer, {0, 120});
    EXPECT_GT(geometry().pixelsPerFrame(), scale);
    for (int i = 0; i < 4; ++i)
        wheel(pointer, {0, -30}); // a fine wheel turns less at a time
    EXPECT_NEAR(geometry().pixelsPerFrame(), scale, 1e-9);
    EXPECT_NEAR(underPointer(), held, 1e-6);

    const double from = geometry().firstFrame();
    wheel(pointer, {0, -120}, Qt::ShiftModifier);
    EXPECT_GT(geometry().firstFrame(), from);
    wheel(pointer, {120, 0});
    EXPECT_NEAR(geometry().firstFrame(), from, 1e-6);
    EXPECT_NEAR(geometry().pixelsPerFrame(), scale, 1e-9);

    // What the user has zoomed into stays in view when the edit changes.
    ASSERT_TRUE(workspace.editor().splitSegment(second, 200));
    EXPECT_NEAR(geometry().pixelsPerFrame(), scale, 1e-9);
}

TEST_F(TimelineStripTest, WhatIsPaintedFollowsTimeSelectionAndEdit)
{
    EXPECT_FALSE(paint().isValid()) << "without a change the picture is the same";

    // The time moves from its old to its new place, and touches nothing beyond the two.
    workspace.vob().setCurrentTime(workspace.vob().timeOf(110));
    paint();
    workspace.vob().setCurrentTime(workspace.vob().timeOf(140));
    const QRect moved = paint();
    EXPECT_NEAR(moved.left(), xOf(110), 7.0);
    EXPECT_NEAR(moved.right(), xOf(140), 7.0);
    EXPECT_GT(moved.bottom(), geometry().rows().back().top) << "the line crosses all tracks";

    workspace.selection().set(second);
    const QRect chosen = paint();
    EXPECT_TRUE(boxOf(second).contains(chosen)) << "only the selected segment looks selected";
    EXPECT_GT(chosen.width(), boxOf(second).width() * 9 / 10);

    const ObjectId effect = workspace.editor().addEffect(first, "brightness").object;
    const QRect added = paint();
    ASSERT_TRUE(added.isValid());
    EXPECT_TRUE(boxOf(first).contains(added));
    EXPECT_LT(added.height(), boxOf(first).height() / 2) << "a bar, below the name";
    edit().timeline().findEffect(effect)->setEnabled(false);
    EXPECT_EQ(paint(), added) << "the bar of an effect that is off looks otherwise";

    // A click on a track's header switches it, as a step that can be undone.
    const TimelineGeometry::Row& row = geometry().rows().front();
    click({20, row.top + row.height / 2});
    EXPECT_FALSE(edit().timeline().tracks().front()->data.enabled);
    EXPECT_LE(paint().bottom(), row.top + row.height);

    strip.clearFocus();
    paint();
    strip.activateWindow();
    strip.setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return strip.hasFocus(); }, 2000));
    EXPECT_EQ(paint(), strip.rect()) << "who has the keyboard is seen";
}

} // namespace
} // namespace workbench

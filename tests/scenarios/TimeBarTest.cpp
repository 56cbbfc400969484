#include "workbench/app/timeline/TimeBar.h"
#include "tests/scenarios/Scenario.h"
#include "workbench/app/timeline/TimeBarPane.h"

#include <QAccessible>
#include <QApplication>
#include <QWheelEvent>

namespace workbench
{
namespace
{

using oribund::NumRange;

/** The time bar below the picture, on the sample clip four times over. */
class TimeBarScenario : public Scenario
{
protected:
    void openClips()
    {
        window_->files().open(std::vector<std::string>(4, SampleMedia::clip()));
        settle();
    }

    TimeBar& bar() { return window_->timeBar().bar(); }

    TimelineStrip& strip() { return window_->timeline().strip(); }

    ModelVob& vob() { return workspace_->vob(); }

    QPoint at(double time) { return {bar().geometry().f2xi(time), bar().getHeight() / 2}; }

    double end() { return workspace_->edit().getEndTime(); }

    void press(const QPoint& place) { hand_.press(bar(), place); }

    void move(const QPoint& place) { hand_.moveTo(place); }

    void release() { hand_.release({}); }

    void wheel(int turn) { hand_.wheel(bar(), {50, 5}, turn); }

    /** That the bar's window is the part of the edit that the timeline paints. */
    void expectInStep()
    {
        const double frame = workspace_->edit().getCelResolution();
        const TimelineGeometry& shown = strip().geometryOfEdit();
        EXPECT_NEAR(bar().geometry().windowStart, shown.firstFrame() * frame, 1e-9);
        EXPECT_NEAR(bar().geometry().windowEnd, std::min(end(), (shown.firstFrame() + shown.framesInView()) * frame),
                    1e-9);
    }

    double pixel() { return end() / bar().getWidth(); }
};

TEST_F(TimeBarScenario, ItsWindowAndTheTimelineMoveAndZoomEachOther)
{
    openClips();
    EXPECT_NEAR(bar().geometry().windowEnd, end(), 1e-9) << "all of the edit is in view at first";
    vob().setCurrentTime(end() / 2);
    strip().zoom(3.0);
    expectInStep();
    strip().scrollTo(100);
    expectInStep();

    // Held by its middle, the window goes as far as the pointer, wherever the time stands.
    const NumRange<double> before = vob().getViewRange();
    const QPoint middle = at(before.start() + before.length() / 4);
    press(middle);
    move(middle + QPoint(5, 0));
    move(middle + QPoint(20, 0));
    EXPECT_NEAR(vob().getViewRange().start() - before.start(), 20 * pixel(), 1e-6);
    EXPECT_NEAR(vob().getViewRange().length(), before.length(), 1e-6);
    expectInStep();
    release();

    // By an edge, it zooms about the time, which stays where it is in the view.
    const double x = strip().geometryOfEdit().xOf(vob().currentFrame());
    const double now = vob().getCurrentTime();
    const QPoint edge = at(vob().getViewRange().end());
    press(edge);
    move(edge + QPoint(-15, 0));
    move(edge + QPoint(-30, 0));
    release();
    EXPECT_LT(vob().getViewRange().length(), before.length() * 0.9);
    EXPECT_EQ(vob().getCurrentTime(), now);
    EXPECT_NEAR(strip().geometryOfEdit().xOf(vob().currentFrame()), x, 0.01);
    expectInStep();

    // So does the wheel, and back again.
    const NumRange<double> zoomed = vob().getViewRange();
    wheel(120);
    EXPECT_NEAR(vob().getViewRange().length(), zoomed.length() * 0.8, 1e-6);
    wheel(-120);
    EXPECT_NEAR(vob().getViewRange().start(), zoomed.start(), 1e-6);
    for (int i = 0; i < 40; ++i)
        wheel(120);
    EXPECT_EQ(strip().geometryOfEdit().pixelsPerFrame(), TimelineGeometry::kMostPixels);
    EXPECT_NEAR(strip().geometryOfEdit().xOf(vob().currentFrame()), x, 0.01) << "nor does it drift at the closest";
}

TEST_F(TimeBarScenario, EscapeGivesBackTheViewWithTheRoomBehindTheEdit)
{
    openClips();
    vob().setCurrentTime(end() * 0.9);
    strip().zoom(3.0);
    strip().scrollTo(1e9);
    const NumRange<double> view = vob().getViewRange();
    ASSERT_GT(view.end(), end());
    for (const double held : {view.start(), view.start() + view.length() / 3}) { // the edge, and the middle
        press(at(held));
        move(at(held) - QPoint(15, 0));
        move(at(held) - QPoint(30, 0));
        EXPECT_GT(std::abs(vob().getViewRange().start() - view.start()), pixel());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        release();
        EXPECT_NEAR(vob().getViewRange().start(), view.start(), 1e-9);
        EXPECT_NEAR(vob().getViewRange().end(), view.end(), 1e-9);
        EXPECT_NEAR(vob().getCurrentTime(), end() * 0.9, 1e-9);
    }
}

TEST_F(TimeBarScenario, TheKeyboardReachesItAndMovesTheTimeFromThere)
{
    openClip();
    strip().setFocus();
    for (int i = 0; i < 40 && !bar().hasFocus(); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(bar().hasFocus());
    const auto key = [&](Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), code, modifiers);
        return vob().currentFrame();
    };
    EXPECT_EQ(key(Qt::Key_Right), 1);
    EXPECT_EQ(key(Qt::Key_Right, Qt::ShiftModifier), 26) << "a second";
    EXPECT_EQ(key(Qt::Key_Up), 0) << "what it has no use for is a command of the window";

    QAccessibleInterface* const told = PanelSurface::showing(bar())->accessibles().of(bar());
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->role(), QAccessible::Slider);
    EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("Time in the whole edit"));
    key(Qt::Key_Right);
    EXPECT_EQ(told->text(QAccessible::Value), QStringLiteral("00:00:00:01"));
    told->valueInterface()->setCurrentValue(1.0);
    EXPECT_EQ(vob().currentFrame(), 25);
}

TEST_F(TimeBarScenario, AnEditWithoutLengthIsABarOnWhichNothingHappens)
{
    openClips();
    EXPECT_EQ(bar().geometry().end, end());
    press(at(end() / 2));
    document_->startNew(); // in the midst of a drag
    move({10, 5});
    release();
    EXPECT_EQ(bar().dragState(), 0u);
    EXPECT_EQ(bar().geometry().end, 0.0);
    press({40, 5});
    move({90, 5});
    wheel(-360);
    release();
    Hand::key(Qt::Key_End);
    EXPECT_EQ(vob().getCurrentTime(), 0.0);
    Hand::picture(bar());
}

} // namespace
} // namespace workbench

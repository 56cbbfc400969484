#include "oribund/controls/bars/ThermGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

namespace oribund
{
namespace
{

ThermGeometry bar(double start, double end, double windowStart, double windowEnd, int width = 100)
{
    ThermGeometry geometry;
    geometry.set(start, end, windowStart, windowEnd);
    geometry.width = width;
    return geometry;
}

TEST(ThermGeometry, TimesAndPixelsAreMappedBothWays)
{
    const ThermGeometry geometry = bar(10, 30, 10, 30, 200);
    EXPECT_EQ(geometry.f2x(15.0), 50.0);
    EXPECT_EQ(geometry.x2f(50.0), 15.0);
    EXPECT_EQ(geometry.f2xi(10.25), 3) << "2.5 pixels";
    EXPECT_EQ(geometry.f2xi(9.75), -3);
    EXPECT_EQ(geometry.f2xClipped(31.0), 200.0);
    EXPECT_EQ(geometry.f2xClipped(9.0), -10.0);
    EXPECT_EQ(geometry.f2xClippedI(10.25), 3);
    EXPECT_EQ(geometry.f2x(0.5, 10.0, 20.0, 5.0, 25.0), 100.0);
    EXPECT_EQ(geometry.clamp(31.0), 30.0);
    EXPECT_EQ(geometry.clamp(-1.0), 10.0);
}

TEST(ThermGeometry, TimesFarAwayAndNoTimesAtAllHavePixelsToo)
{
    const ThermGeometry geometry = bar(0, 1, 0, 1);
    for (const double time : {1e300, -1e300, 1e30, -1e30, HUGE_VAL, -HUGE_VAL}) {
        const int far = time > 0 ? 1000000000 : -1000000000;
        EXPECT_EQ(geometry.f2xi(time), far);
        EXPECT_EQ(geometry.wholePixel(time), far);
        EXPECT_EQ(geometry.f2xClippedI(time), time > 0 ? 100 : far + 1);
    }
    EXPECT_EQ(geometry.f2xi(std::nan("")), 0);
    EXPECT_EQ(geometry.f2xClippedI(std::nan("")), 0);
    EXPECT_EQ(geometry.wholePixel(std::nan("")), 0);
}

TEST(ThermGeometry, TheMarkerWinsThenTheNearerEdgeThenTheWindow)
{
    const ThermGeometry geometry = bar(0, 100, 20, 80);
    const auto hit = [&](int x, double t) { return geometry.hitTest(x, t, true, true, 6); };
    EXPECT_EQ(hit(25, 20.0), ThermHit::CurrentTime);
    EXPECT_EQ(hit(26, 20.0), ThermHit::WindowBody) << "the edge on which the time stands cannot be grabbed";
    EXPECT_EQ(hit(14, 50.0), ThermHit::LeftEdge);
    EXPECT_EQ(hit(13, 50.0), ThermHit::None);
    EXPECT_EQ(hit(86, 50.0), ThermHit::RightEdge);
    EXPECT_EQ(hit(80, 80.0), ThermHit::CurrentTime);
    EXPECT_EQ(hit(35, 50.0), ThermHit::WindowBody);
    EXPECT_EQ(geometry.hitTest(20, 50.0, true, false, 6), ThermHit::None);
    EXPECT_EQ(geometry.hitTest(50, 50.0, false, true, 6), ThermHit::WindowBody);
    EXPECT_EQ(bar(0, 100, 0, 100).hitTest(35, 50.0, true, true, 6), ThermHit::None) << "there is nowhere to move it";
    const ThermGeometry closed = bar(0, 100, 50, 50);
    EXPECT_EQ(closed.hitTest(48, 90.0, true, true, 6), ThermHit::LeftEdge);
    EXPECT_EQ(closed.hitTest(50, 90.0, true, true, 6), ThermHit::RightEdge);
}

TEST(ThermGeometry, DraggedEdgesZoomAboutTheCurrentTime)
{
    const ThermGeometry geometry = bar(0, 100, 20, 60);
    EXPECT_EQ(geometry.draggedEdge(ThermHit::LeftEdge, 10.0, 30.0, 0.0), NumRange<double>(10.0, 90.0));
    EXPECT_EQ(geometry.draggedEdge(ThermHit::LeftEdge, -10.0, 30.0, 0.0), NumRange<double>(0.0, 100.0));
    EXPECT_EQ(geometry.draggedEdge(ThermHit::RightEdge, 45.0, 30.0, 0.0), NumRange<double>(25.0, 45.0));
    EXPECT_EQ(geometry.draggedEdge(ThermHit::RightEdge, 120.0, 30.0, 0.0).end(), 100.0);
    const NumRange<double> least = geometry.draggedEdge(ThermHit::LeftEdge, 55.0, 30.0, 0.4);
    EXPECT_DOUBLE_EQ(least.start(), 29.9) << "it does not pass the time";
    EXPECT_DOUBLE_EQ(least.end(), 30.3);
    EXPECT_DOUBLE_EQ(geometry.draggedEdge(ThermHit::RightEdge, 10.0, 30.0, 0.4).end(), 30.3);

    const NumRange<double> closer = geometry.zoomedAbout(30.0, 40.0 * 0.8);
    EXPECT_DOUBLE_EQ((30.0 - closer.start()) / closer.length(), 0.25);
    const NumRange<double> back = bar(0, 100, closer.start(), closer.end()).zoomedAbout(30.0, closer.length() * 1.25);
    EXPECT_DOUBLE_EQ(back.start(), 20.0);
    EXPECT_DOUBLE_EQ(back.end(), 60.0);
}

} // namespace
} // namespace oribund

#pragma once

#include "workbench/app/timeline/TimelineGeometry.h"

#include <QFont>
#include <QPalette>
#include <QSize>

class QPainter;
class QRectF;

namespace workbench
{

class ClipPictures;

/** Paints the strip that shows the edit. Made for one painting. */
class TimelinePainter
{
public:
    TimelinePainter(QPainter& painter, const TimelineGeometry& geometry, const EditModel& edit, const QSize& size,
                    const QPalette& palette, ClipPictures& pictures);

    void paint(int currentFrame, ObjectId selected, bool focused);

private:
    void paintRows();
    void paintHeader(const TimelineGeometry::Row& row, const Track& track);
    void paintSegment(const TimelineGeometry::Row& row, const Track& track, const Segment& segment, bool selected);
    double paintFirstFrame(const QRectF& box, const Segment& segment, const MediaInfo& media);
    void paintSound(const QRectF& box, const QRectF& seen, const Segment& segment, const MediaInfo& media);
    void paintEffects(const QRectF& box, const Segment& segment);
    void paintTransitions(const TimelineGeometry::Row& row, const Track& track);
    void paintRuler();
    void paintCues();
    void paintCurrentTime(int frame);

    QPainter& painter_;
    const TimelineGeometry& geometry_;
    const EditModel& edit_;
    QSize size_;
    QPalette palette_;
    ClipPictures& pictures_;
    QFont small_;
};

} // namespace workbench

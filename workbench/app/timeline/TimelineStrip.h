#pragma once

#include "oribund/host/edit/Cue.h"
#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/app/timeline/ClipPictures.h"
#include "workbench/app/timeline/TimelineGeometry.h"

#include <QPoint>
#include <QWidget>

#include <functional>

namespace workbench
{

/** The edit along the time: a ruler, the tracks with their segments, effects and cuts, and the current time. */
class TimelineStrip final : public QWidget
{
public:
    /** The workspace outlives the strip. */
    explicit TimelineStrip(Workspace& workspace, QWidget* parent = nullptr);

    const TimelineGeometry& geometryOfEdit() const { return geometry_; }

    void scrollTo(double firstFrame);
    void zoom(double factor);
    void showAll();

    /** Called when another part of the edit is in view, or the edit has another length. */
    std::function<void()> viewChanged;

    /** Called when the menu of the cues is asked for: for a time of the edit, at a point of the screen. */
    std::function<void(double editTime, const QPoint& at)> cueMenuWanted;

    /** Whether all that it shows of pictures and sound has come. */
    bool isSettled() const { return pictures_.isComplete(); }

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return {320, 120}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;

private:
    int handleReplaced(const EditReplaced&);
    int handleModification(const oribund::EditModification&);
    int handleTime(const oribund::ValServerEvent<double>& event);
    int handleSelection(const oribund::ValServerEvent<ObjectId>& event);
    int handleView(const oribund::ValServerEvent<oribund::NumRange<double>>& event);

    void viewMoved();
    void goToPointer(double x);
    void goToRuler(double x);
    oribund::Cue cueAt(double x) const;
    QString tipAt(const QPoint& place) const;
    void describe();

    Workspace& workspace_;
    TimelineGeometry geometry_;
    ClipPictures pictures_;
    bool scrubbing_ = false;
    bool tellingView_ = false;
    bool wholeInView_ = true; ///< until the user zooms, the whole edit is kept in view
    oribund::MethodCallback<TimelineStrip, EditReplaced> replacedCallback_;
    oribund::MethodCallback<TimelineStrip, oribund::EditModification> editCallback_;
    oribund::MethodCallback<TimelineStrip, oribund::ValServerEvent<double>> timeCallback_;
    oribund::MethodCallback<TimelineStrip, oribund::ValServerEvent<ObjectId>> selectionCallback_;
    oribund::MethodCallback<TimelineStrip, oribund::ValServerEvent<oribund::NumRange<double>>> viewCallback_;
};

} // namespace workbench

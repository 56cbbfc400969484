#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/TimelineGeometry.h"
#include "workbench/app/Workspace.h"

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

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return {320, 120}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;

private:
    int handleReplaced(const EditReplaced&);
    int handleModification(const oribund::EditModification&);
    int handleTime(const oribund::ValServerEvent<double>& event);
    int handleSelection(const oribund::ValServerEvent<ObjectId>& event);

    void viewMoved();
    void goToPointer(double x);
    void describe();

    Workspace& workspace_;
    TimelineGeometry geometry_;
    bool scrubbing_ = false;
    bool wholeInView_ = true; ///< until the user zooms, the whole edit is kept in view
    oribund::MethodCallback<TimelineStrip, EditReplaced> replacedCallback_;
    oribund::MethodCallback<TimelineStrip, oribund::EditModification> editCallback_;
    oribund::MethodCallback<TimelineStrip, oribund::ValServerEvent<double>> timeCallback_;
    oribund::MethodCallback<TimelineStrip, oribund::ValServerEvent<ObjectId>> selectionCallback_;
};

} // namespace workbench

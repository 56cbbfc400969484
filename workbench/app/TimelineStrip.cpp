#include "workbench/app/TimelineStrip.h"

#include "workbench/app/TimeCode.h"
#include "workbench/app/TimelinePainter.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace workbench
{

TimelineStrip::TimelineStrip(Workspace& workspace, QWidget* parent)
    : QWidget(parent)
    , workspace_(workspace)
    , replacedCallback_(this, &TimelineStrip::handleReplaced)
    , editCallback_(this, &TimelineStrip::handleModification)
    , timeCallback_(this, &TimelineStrip::handleTime)
    , selectionCallback_(this, &TimelineStrip::handleSelection)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Timeline"));
    replacedCallback_.attach(workspace_.replaced());
    timeCallback_.attach(workspace_.vob().getCurrentTimeServer().notifier());
    selectionCallback_.attach(workspace_.selection().notifier());
    handleReplaced({});
}

QSize TimelineStrip::sizeHint() const
{
    return {800, geometry_.height()};
}

void TimelineStrip::scrollTo(double firstFrame)
{
    geometry_.scrollTo(firstFrame);
    viewMoved();
}

void TimelineStrip::zoom(double factor)
{
    wholeInView_ = false;
    geometry_.zoom(factor, geometry_.xOf(workspace_.vob().currentFrame()));
    viewMoved();
}

void TimelineStrip::showAll()
{
    wholeInView_ = true;
    geometry_.showAll();
    viewMoved();
}

void TimelineStrip::viewMoved()
{
    ModelVob& vob = workspace_.vob();
    const int first = static_cast<int>(geometry_.firstFrame());
    vob.setViewRange({vob.timeOf(first), vob.timeOf(first + static_cast<int>(geometry_.framesInView()))});
    update();
    if (viewChanged)
        viewChanged();
}

// What the edit tells

int TimelineStrip::handleReplaced(const EditReplaced&)
{
    editCallback_.detach();
    editCallback_.attach(workspace_.edit().modifications());
    wholeInView_ = true;
    return handleModification({});
}

int TimelineStrip::handleModification(const oribund::EditModification&)
{
    geometry_.setEdit(workspace_.edit());
    if (wholeInView_)
        geometry_.showAll();
    updateGeometry();
    viewMoved();
    describe();
    return 0;
}

int TimelineStrip::handleTime(const oribund::ValServerEvent<double>& event)
{
    if (event.kind != oribund::ValEventKind::Changed)
        return 0;
    if (!scrubbing_ && geometry_.follow(workspace_.vob().currentFrame()))
        viewMoved();
    update();
    return 0;
}

int TimelineStrip::handleSelection(const oribund::ValServerEvent<ObjectId>& event)
{
    if (event.kind == oribund::ValEventKind::Changed) {
        describe();
        update();
    }
    return 0;
}

void TimelineStrip::describe()
{
    const Segment* const segment = workspace_.edit().timeline().findSegment(workspace_.selection().get());
    setAccessibleDescription(segment ? QStringLiteral("Selected: %1").arg(QString::fromStdString(segment->data.name))
                                     : QStringLiteral("Nothing is selected"));
}

// Painting and the pointer

void TimelineStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    TimelinePainter(painter, geometry_, workspace_.edit(), size(), palette())
        .paint(workspace_.vob().currentFrame(), workspace_.selection().get(), hasFocus());
}

void TimelineStrip::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    geometry_.setWidth(width());
    if (wholeInView_)
        geometry_.showAll();
    viewMoved();
}

void TimelineStrip::goToPointer(double x)
{
    workspace_.vob().setCurrentTime(workspace_.vob().timeOf(geometry_.frameAt(x)));
}

void TimelineStrip::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const EditModel& edit = workspace_.edit();
    const auto hit = geometry_.hitTest(edit, event->position().x(), event->position().y());
    using Kind = TimelineGeometry::Hit::Kind;
    if (hit.kind == Kind::Header) {
        const Track* const track = edit.timeline().findTrack(hit.object);
        workspace_.editor().setTrackEnabled(hit.object, !track->data.enabled);
        return;
    }
    if (hit.kind == Kind::Nothing)
        return;
    if (hit.kind != Kind::Ruler)
        workspace_.selection().set(hit.kind == Kind::Segment ? hit.object : kNoObject);
    scrubbing_ = true;
    goToPointer(event->position().x());
}

void TimelineStrip::mouseMoveEvent(QMouseEvent* event)
{
    if (!scrubbing_)
        return;
    const double x = event->position().x();
    goToPointer(x);
    // Dragged past its edges, the view goes along.
    if ((x > width() || x < TimelineGeometry::kHeaderWidth) && geometry_.follow(workspace_.vob().currentFrame()))
        viewMoved();
}

void TimelineStrip::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        scrubbing_ = false;
}

void TimelineStrip::wheelEvent(QWheelEvent* event)
{
    const QPoint turn = event->angleDelta();
    if (turn.x() != 0 || (event->modifiers() & Qt::ShiftModifier)) {
        const int by = turn.x() != 0 ? turn.x() : turn.y();
        scrollTo(geometry_.firstFrame() - by / 120.0 * geometry_.framesInView() / 10.0);
    } else if (turn.y() != 0) {
        wholeInView_ = false;
        geometry_.zoom(std::pow(1.25, turn.y() / 120.0), event->position().x());
        viewMoved();
    }
    event->accept();
}

bool TimelineStrip::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const EditModel& edit = workspace_.edit();
    const auto hit = geometry_.hitTest(edit, help->pos().x(), help->pos().y());
    QString tip;
    if (hit.kind == TimelineGeometry::Hit::Kind::Header)
        tip = QStringLiteral("Click to switch the track on or off");
    if (const Segment* segment =
            hit.kind == TimelineGeometry::Hit::Kind::Segment ? edit.timeline().findSegment(hit.object) : nullptr) {
        tip = QString::fromStdString(segment->data.name + "\n" + timeCodeOf(segment->data.length, edit.format()));
        for (const auto& effect : segment->effects)
            tip += QLatin1Char('\n') + QString::fromWCharArray(effect->getName().c_str());
    }
    QToolTip::showText(help->globalPos(), tip, this);
    return true;
}

} // namespace workbench

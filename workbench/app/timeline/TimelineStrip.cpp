#include "workbench/app/timeline/TimelineStrip.h"

#include "oribund/controls/bars/ThermBase.h"
#include "oribund/cues/CueSearch.h"
#include "skin/QtConversions.h"
#include "workbench/app/session/PlainTexts.h"
#include "workbench/app/timeline/TimeCode.h"
#include "workbench/app/timeline/TimelinePainter.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace workbench
{

using oribund::qt::toQt;

TimelineStrip::TimelineStrip(Workspace& workspace, QWidget* parent)
    : QWidget(parent)
    , workspace_(workspace)
    , pictures_(workspace.pictures(), [this] { update(); })
    , replacedCallback_(this, &TimelineStrip::handleReplaced)
    , editCallback_(this, &TimelineStrip::handleModification)
    , timeCallback_(this, &TimelineStrip::handleTime)
    , selectionCallback_(this, &TimelineStrip::handleSelection)
    , viewCallback_(this, &TimelineStrip::handleView)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Timeline"));
    replacedCallback_.attach(workspace_.replaced());
    timeCallback_.attach(workspace_.vob().getCurrentTimeServer().notifier());
    selectionCallback_.attach(workspace_.selection().notifier());
    viewCallback_.attach(workspace_.vob().viewRangeServer().notifier());
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
    const double frame = workspace_.edit().getCelResolution();
    const double first = geometry_.firstFrame() * frame;
    const bool before = std::exchange(tellingView_, true);
    vob.setViewRange({first, first + geometry_.framesInView() * frame});
    tellingView_ = before;
    update();
    if (viewChanged)
        viewChanged();
}

// What the edit tells

int TimelineStrip::handleReplaced(const EditReplaced&)
{
    editCallback_.detach();
    editCallback_.attach(workspace_.edit().modifications());
    pictures_.clear();
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

int TimelineStrip::handleView(const oribund::ValServerEvent<oribund::NumRange<double>>& event)
{
    if (event.kind != oribund::ValEventKind::Changed || tellingView_)
        return 0;
    const double frame = workspace_.edit().getCelResolution();
    wholeInView_ = false;
    geometry_.show(event.value->start() / frame, event.value->length() / frame, workspace_.vob().currentFrame());
    viewMoved(); // what came of it may be less
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
    pictures_.begin();
    TimelinePainter(painter, geometry_, workspace_.edit(), size(), palette(), pictures_)
        .paint(workspace_.vob().currentFrame(), workspace_.selection().get(), hasFocus());
    pictures_.end();
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

oribund::Cue TimelineStrip::cueAt(double x) const
{
    const int header = TimelineGeometry::kHeaderWidth;
    return findCueNearestPos(workspace_.vob().getEdit(), static_cast<int>(x) - header, width() - header,
                             oribund::ThermBase::cueTolerance(), workspace_.vob().getViewRange());
}

void TimelineStrip::goToRuler(double x)
{
    if (const oribund::Cue cue = cueAt(x); cue.valid())
        workspace_.goToCue(cue);
    else
        goToPointer(x);
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
    scrubbing_ = true;
    if (hit.kind == Kind::Ruler)
        return goToRuler(event->position().x());
    workspace_.selection().set(hit.kind == Kind::Segment ? hit.object : kNoObject);
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

void TimelineStrip::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const ModelVob& vob = workspace_.vob();
    const int x = byKey ? static_cast<int>(geometry_.xOf(vob.currentFrame())) : event->x();
    const QPoint place(x, byKey ? 0 : event->y());
    if (geometry_.hitTest(workspace_.edit(), place.x(), place.y()).kind != TimelineGeometry::Hit::Kind::Ruler)
        return event->ignore();
    const oribund::Cue cue = cueAt(place.x());
    const double pointed = cue.valid() ? cue.time : vob.timeOf(geometry_.frameAt(place.x()));
    if (cueMenuWanted)
        cueMenuWanted(byKey ? vob.timeOf(vob.currentFrame()) : pointed, mapToGlobal(place));
}

QString TimelineStrip::tipAt(const QPoint& place) const
{
    using Kind = TimelineGeometry::Hit::Kind;
    const EditModel& edit = workspace_.edit();
    const auto hit = geometry_.hitTest(edit, place.x(), place.y());
    if (hit.kind == Kind::Header)
        return QStringLiteral("Click to switch the track on or off");
    if (hit.kind == Kind::Ruler) {
        const oribund::Cue cue = cueAt(place.x());
        return cue.valid() ? toQt(getCueTooltip(cue, workspace_.vob().getEdit())) : QString();
    }
    const Segment* const segment = hit.kind == Kind::Segment ? edit.timeline().findSegment(hit.object) : nullptr;
    if (!segment)
        return {};
    QString tip = QString::fromStdString(segment->data.name + "\n" + timeCodeOf(segment->data.length, edit.format()));
    for (const auto& effect : segment->effects)
        tip += QLatin1Char('\n') + toQt(effect->getName());
    return tip;
}

bool TimelineStrip::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), plainTip(tipAt(help->pos())), this);
    return true;
}

} // namespace workbench

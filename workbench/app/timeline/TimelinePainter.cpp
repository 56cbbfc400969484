#include "workbench/app/timeline/TimelinePainter.h"

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/Cue.h"
#include "skin/QtConversions.h"
#include "skin/theme/Glyphs.h"
#include "workbench/app/timeline/ClipPictures.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <utility>

namespace workbench
{

using oribund::qt::Glyph;
using oribund::qt::paintGlyph;
using oribund::qt::toQt;

namespace
{

using oribund::UifStd;

constexpr int kEffectHeight = 14;
const QColor kNameGround(0, 0, 0, 130);
constexpr double kRoomForName = 60.0;
constexpr double kLeastRoom = 24.0; // of a segment, in which a picture or sound is to be made out

// Of segments: quiet, so that the picture stays what is looked at; pictures and sound told apart at a glance.
const QColor kPicture(66, 88, 118);
const QColor kSound(58, 96, 82);

QColor groundOf(const QPalette& palette)
{
    return palette.color(QPalette::Base);
}

} // namespace

TimelinePainter::TimelinePainter(QPainter& painter, const TimelineGeometry& geometry, const EditModel& edit,
                                 const QSize& size, const QPalette& palette, ClipPictures& pictures)
    : painter_(painter)
    , geometry_(geometry)
    , edit_(edit)
    , size_(size)
    , palette_(palette)
    , pictures_(pictures)
    , small_(painter.font())
{
    small_.setPixelSize(std::max(9, painter.font().pixelSize() - 2));
}

void TimelinePainter::paint(int currentFrame, ObjectId selected, bool focused)
{
    painter_.fillRect(QRect(QPoint(), size_), groundOf(palette_));
    paintRows();
    painter_.save();
    painter_.setClipRect(TimelineGeometry::kHeaderWidth, 0, size_.width(), size_.height());
    for (const TimelineGeometry::Row& row : geometry_.rows()) {
        const Track* const track = edit_.timeline().findTrack(row.track);
        for (const Segment* segment : track->segments)
            paintSegment(row, *track, *segment, segment->id() == selected);
        paintTransitions(row, *track);
    }
    paintRuler();
    paintCues();
    paintCurrentTime(currentFrame);
    painter_.restore();
    if (focused) {
        painter_.setPen(toQt(UifStd::getColourScheme().focus()));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(QRectF(0.5, 0.5, size_.width() - 1.0, size_.height() - 1.0));
    }
}

void TimelinePainter::paintRows()
{
    const QColor lane = palette_.color(QPalette::Window).darker(112);
    for (const TimelineGeometry::Row& row : geometry_.rows()) {
        painter_.fillRect(QRect(TimelineGeometry::kHeaderWidth, row.top, size_.width(), row.height), lane);
        paintHeader(row, *edit_.timeline().findTrack(row.track));
    }
}

void TimelinePainter::paintHeader(const TimelineGeometry::Row& row, const Track& track)
{
    const QRect box(0, row.top, TimelineGeometry::kHeaderWidth - 2, row.height);
    painter_.fillRect(box, palette_.color(QPalette::Window));
    const bool on = track.data.enabled;
    const QColor text = palette_.color(on ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    const bool video = track.data.kind == TrackKind::Video;
    const Glyph glyph = video ? Glyph::Film : on ? Glyph::Volume : Glyph::Mute;
    paintGlyph(painter_, glyph, QRectF(8, row.top + (row.height - 16) / 2.0, 16, 16), text);
    painter_.setPen(text);
    painter_.drawText(
        box.adjusted(32, 0, -4, 0), Qt::AlignVCenter | Qt::AlignLeft,
        painter_.fontMetrics().elidedText(QString::fromStdString(track.data.name), Qt::ElideRight, box.width() - 36));
    if (!on)
        painter_.drawLine(QPointF(8, row.top + row.height / 2.0 + 8), QPointF(24, row.top + row.height / 2.0 - 8));
}

void TimelinePainter::paintSegment(const TimelineGeometry::Row& row, const Track& track, const Segment& segment,
                                   bool selected)
{
    const double left = geometry_.xOf(segment.data.start);
    const double right = geometry_.xOf(segment.data.end());
    if (right < TimelineGeometry::kHeaderWidth || left > size_.width())
        return;
    QColor fill = track.data.kind == TrackKind::Video ? kPicture : kSound;
    if (!track.data.enabled)
        fill = fill.darker(170);
    if (selected)
        fill = fill.lighter(135);
    // A gap of a pixel on the right is what makes a cut visible.
    const QRectF box(left, row.top + 1, std::max(right - left - 1.0, 1.0), row.height - 2);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(selected ? QPen(toQt(UifStd::getColourScheme().accent()), 1.5) : QPen(fill.darker(150), 1.0));
    painter_.setBrush(fill);
    painter_.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter_.setRenderHint(QPainter::Antialiasing, false);

    // The name stays in view while any of the segment does.
    double pictureEnd = box.left();
    QRectF seen = box.intersected(QRectF(TimelineGeometry::kHeaderWidth, box.top(), size_.width(), box.height()));
    if (const MediaData* const media = edit_.timeline().findMedia(segment.data.media)) {
        if (track.data.kind == TrackKind::Audio)
            paintSound(box, seen, segment, media->info);
        else if (pictureEnd = paintFirstFrame(box, segment, media->info); pictureEnd < seen.right() - kRoomForName)
            seen.setLeft(std::max(seen.left(), pictureEnd));
    }
    const QRectF line(seen.left() + 6, box.top() + 2, seen.width() - 12, painter_.fontMetrics().height() + 2);
    if (line.width() > 12) {
        // Where there is no room beside the picture, it stands on it.
        if (pictureEnd > line.left())
            painter_.fillRect(QRectF(seen.left() + 2, line.top(), seen.width() - 4, line.height()), kNameGround);
        painter_.setPen(QColor(235, 238, 242));
        painter_.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                          painter_.fontMetrics().elidedText(QString::fromStdString(segment.data.name), Qt::ElideRight,
                                                            static_cast<int>(line.width())));
    }
    paintEffects(seen.adjusted(4, 0, -4, -4), segment);
}

/** Returns where it ends. */
double TimelinePainter::paintFirstFrame(const QRectF& box, const Segment& segment, const MediaInfo& media)
{
    if (!media.hasVideo || box.width() < kLeastRoom)
        return box.left();
    const QRectF inside = box.adjusted(2, 2, -2, -2);
    const double ratio = painter_.device()->devicePixelRatioF();
    const QPixmap* const picture =
        pictures_.frame(media, edit_.format(), segment.data.in, static_cast<int>(std::ceil(inside.height() * ratio)));
    if (!picture)
        return box.left();
    const double width = inside.height() * picture->width() / picture->height();
    painter_.save();
    painter_.setClipRect(inside, Qt::IntersectClip);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
    painter_.drawPixmap(QRectF(inside.topLeft(), QSizeF(width, inside.height())), *picture, picture->rect());
    painter_.restore();
    return inside.left() + width;
}

/** A line for each pixel, from the lowest to the highest sample of all channels. */
void TimelinePainter::paintSound(const QRectF& box, const QRectF& seen, const Segment& segment, const MediaInfo& media)
{
    if (!media.hasAudio || seen.width() < kLeastRoom)
        return;
    constexpr int kPartsInPiece = static_cast<int>(ClipPictures::kPieceLength) * ClipPictures::kPartsPerSecond;
    const double partsPerFrame = edit_.format().frameLength() * ClipPictures::kPartsPerSecond;
    const auto partAt = [&](double x) {
        return (segment.data.in + (x - box.left()) / geometry_.pixelsPerFrame()) * partsPerFrame;
    };
    const double half = (box.height() - 4.0) / 2.0;
    const double middle = box.center().y();
    int piece = -1;
    const WaveformPeaks* sound = nullptr; // of that piece
    painter_.setPen(QColor(255, 255, 255, 70));
    for (double x = std::ceil(seen.left()); x < seen.right(); x += 1.0) {
        const int from = static_cast<int>(partAt(x));
        int low = 0;
        int high = 0;
        for (int part = from; part < std::max(from + 1, static_cast<int>(partAt(x + 1.0))); ++part) {
            if (part / kPartsInPiece != std::exchange(piece, part / kPartsInPiece))
                sound = pictures_.sound(media, piece);
            const auto at = static_cast<std::size_t>(part % kPartsInPiece);
            for (int channel = 0; sound && at < sound->parts() && channel < sound->channels; ++channel) {
                low = std::min<int>(low, sound->lowest(at, channel));
                high = std::max<int>(high, sound->highest(at, channel));
            }
        }
        if (high > low)
            painter_.drawLine(QPointF(x, middle - half * high / 32768.0), QPointF(x, middle - half * low / 32768.0));
    }
}

void TimelinePainter::paintEffects(const QRectF& box, const Segment& segment)
{
    constexpr double kRoomForText = 24.0;
    const QFontMetrics metrics(small_);
    painter_.save();
    painter_.setFont(small_);
    double left = box.left();
    for (const auto& effect : segment.effects) {
        const QString name = toQt(effect->getName());
        const double wanted = metrics.horizontalAdvance(name) + 10.0;
        const double width = std::min(wanted, box.right() - left);
        if (width < 3.0)
            break;
        const QRectF bar(left, box.bottom() - kEffectHeight, width, kEffectHeight);
        const QColor on = toQt(UifStd::getColourScheme().accent());
        painter_.fillRect(bar, effect->isEnabled() ? on.darker(115) : QColor(0, 0, 0, 70));
        if (width >= kRoomForText) {
            painter_.setPen(effect->isEnabled() ? toQt(UifStd::getColourScheme().accentText())
                                                : palette_.color(QPalette::Disabled, QPalette::WindowText));
            painter_.drawText(bar.adjusted(5, 0, -3, 0), Qt::AlignLeft | Qt::AlignVCenter,
                              metrics.elidedText(name, Qt::ElideRight, static_cast<int>(width - 6)));
        }
        left += width + 2.0;
    }
    painter_.restore();
}

void TimelinePainter::paintTransitions(const TimelineGeometry::Row& row, const Track& track)
{
    for (const TransitionData& transition : track.data.transitions) {
        const Segment* const left = edit_.timeline().findSegment(transition.left);
        if (!left)
            continue;
        const int cut = left->data.end();
        const QRectF box(geometry_.xOf(cut - transition.before()), row.top + 2,
                         transition.length * geometry_.pixelsPerFrame(), row.height - 4);
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.setPen(QColor(240, 240, 240, 170));
        painter_.setBrush(QColor(240, 240, 240, 40));
        painter_.drawRect(box);
        painter_.drawLine(box.bottomLeft(), box.topRight());
        painter_.setRenderHint(QPainter::Antialiasing, false);
    }
}

void TimelinePainter::paintRuler()
{
    const int height = TimelineGeometry::kRulerHeight;
    painter_.fillRect(QRect(0, 0, size_.width(), height), palette_.color(QPalette::Window));
    painter_.setFont(small_);
    const QColor line = palette_.color(QPalette::Disabled, QPalette::WindowText);
    for (const TimelineGeometry::Tick& tick : geometry_.ticks()) {
        const bool labelled = !tick.label.empty();
        painter_.fillRect(QRectF(std::round(tick.x), height - (labelled ? 10 : 5), 1, labelled ? 10 : 5), line);
        if (labelled) {
            painter_.setPen(palette_.color(QPalette::WindowText));
            painter_.drawText(QPointF(std::round(tick.x) + 4, height - 10), QString::fromStdString(tick.label));
        }
    }
    painter_.fillRect(QRect(0, height - 1, size_.width(), 1), line.darker(160));
}

void TimelinePainter::paintCues()
{
    painter_.setRenderHint(QPainter::Antialiasing);
    for (const oribund::Cue& cue : edit_.getCues()) {
        if ((cue.flags & oribund::Cue::kVisible) == 0)
            continue;
        const double x = geometry_.xOf(cue.time / edit_.getCelResolution());
        const double y = TimelineGeometry::kRulerHeight - 2;
        QPainterPath flag;
        flag.addPolygon(QPolygonF({{x - 4, y - 10}, {x + 4, y - 10}, {x + 4, y - 4}, {x, y}, {x - 4, y - 4}}));
        painter_.fillPath(flag, toQt(cue.colour));
    }
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void TimelinePainter::paintCurrentTime(int frame)
{
    const QColor colour = toQt(UifStd::getColourScheme().currentTime);
    const double x = std::round(geometry_.xOf(frame));
    painter_.fillRect(QRectF(x, TimelineGeometry::kRulerHeight - 8, 1, size_.height()), colour);
    QPainterPath head;
    const double y = TimelineGeometry::kRulerHeight;
    head.addPolygon(QPolygonF({{x - 5, y - 12}, {x + 6, y - 12}, {x + 6, y - 7}, {x + 0.5, y - 1}, {x - 5, y - 7}}));
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.fillPath(head, colour);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

} // namespace workbench

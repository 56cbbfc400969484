#include "workbench/app/timeline/TimelineGeometry.h"

#include "workbench/app/timeline/TimeCode.h"

#include <algorithm>
#include <cmath>

namespace workbench
{

namespace
{
constexpr double kLabelRoom = 104.0; // between two labels
constexpr double kRoomBehind = 1.05; // of the edit's length, when all of it is shown
constexpr int kSecondsWhenEmpty = 10;
} // namespace

void TimelineGeometry::setEdit(const EditModel& edit)
{
    format_ = edit.format();
    frames_ = edit.timeline().endFrame();
    rows_.clear();
    int top = kRulerHeight + kRowGap;
    for (const auto& track : edit.timeline().tracks()) {
        const int height = track->data.kind == TrackKind::Video ? kVideoHeight : kAudioHeight;
        rows_.push_back({track->id(), top, height});
        top += height + kRowGap;
    }
    scrollTo(first_);
}

void TimelineGeometry::setWidth(int width)
{
    width_ = std::max(width, kHeaderWidth + 1);
    scale_ = std::max(scale_, leastScale());
    scrollTo(first_);
}

int TimelineGeometry::height() const
{
    return rows_.empty() ? kRulerHeight : rows_.back().top + rows_.back().height + kRowGap;
}

double TimelineGeometry::framesInView() const
{
    return (width_ - kHeaderWidth) / scale_;
}

double TimelineGeometry::lastFirstFrame() const
{
    return std::max(0.0, frames_ * kRoomBehind - framesInView());
}

int TimelineGeometry::frameAt(double x) const
{
    // A hair before a frame is that frame.
    return std::max(0, static_cast<int>(std::floor(first_ + (x - kHeaderWidth) / scale_ + 1e-9)));
}

TimelineGeometry::Hit TimelineGeometry::hitTest(const EditModel& edit, double x, double y) const
{
    Hit hit;
    hit.frame = frameAt(x);
    if (y < kRulerHeight) {
        hit.kind = x < kHeaderWidth ? Hit::Kind::Nothing : Hit::Kind::Ruler;
        return hit;
    }
    const auto row = std::find_if(rows_.begin(), rows_.end(),
                                  [y](const Row& one) { return y >= one.top && y < one.top + one.height; });
    if (row == rows_.end())
        return hit;
    hit.object = row->track;
    hit.kind = x < kHeaderWidth ? Hit::Kind::Header : Hit::Kind::Track;
    if (const Segment* segment = edit.timeline().segmentAt(row->track, hit.frame); segment && x >= kHeaderWidth) {
        hit.kind = Hit::Kind::Segment;
        hit.object = segment->id();
    }
    return hit;
}

int TimelineGeometry::tickDistance() const
{
    // Round numbers of frames within a second, then round numbers of seconds.
    const int rate = framesPerSecond(format_);
    for (const int frames : {1, 2, 5, 10})
        if (frames < rate && frames * scale_ >= kLabelRoom)
            return frames;
    for (const int seconds : {1, 2, 5, 10, 30, 60, 120, 300, 600, 1800, 3600, 7200, 21600})
        if (seconds * rate * scale_ >= kLabelRoom)
            return seconds * rate;
    return 86400 * rate;
}

std::vector<TimelineGeometry::Tick> TimelineGeometry::ticks() const
{
    constexpr int kBetween = 5; // lines for each label
    const int distance = tickDistance();
    const int parts = distance % kBetween == 0 ? kBetween : 1;
    const int step = distance / parts;
    std::vector<Tick> ticks;
    const int last = static_cast<int>(std::ceil(first_ + framesInView()));
    // From the label left of the view: the end of its text may still be seen.
    for (int frame = static_cast<int>(first_) / distance * distance; frame <= last; frame += step)
        ticks.push_back({xOf(frame), frame % distance == 0 ? timeCodeOf(frame, format_) : std::string()});
    return ticks;
}

void TimelineGeometry::scrollTo(double firstFrame)
{
    first_ = std::clamp(firstFrame, 0.0, lastFirstFrame());
}

double TimelineGeometry::leastScale() const
{
    const double frames = frames_ > 0 ? frames_ * kRoomBehind : kSecondsWhenEmpty * framesPerSecond(format_);
    return std::min((width_ - kHeaderWidth) / frames, kMostPixels);
}

void TimelineGeometry::zoom(double factor, double aboutX)
{
    const double x = std::max(aboutX, static_cast<double>(kHeaderWidth));
    const double frame = first_ + (x - kHeaderWidth) / scale_;
    scale_ = std::clamp(scale_ * factor, leastScale(), kMostPixels);
    scrollTo(frame - (x - kHeaderWidth) / scale_);
}

void TimelineGeometry::show(double first, double frames, double about)
{
    if (!(frames > 0.0))
        return;
    scale_ = std::clamp((width_ - kHeaderWidth) / frames, leastScale(), kMostPixels);
    scrollTo(about - (about - first) / frames * framesInView());
}

void TimelineGeometry::showAll()
{
    scale_ = leastScale();
    scrollTo(0.0);
}

bool TimelineGeometry::follow(int frame)
{
    const double before = first_;
    if (frame < first_)
        scrollTo(frame - framesInView() * 0.1);
    else if (frame + 1 > first_ + framesInView())
        scrollTo(frame - framesInView() * 0.05);
    return first_ != before;
}

} // namespace workbench

#pragma once

#include "workbench/model/EditModel.h"

#include <string>
#include <vector>

namespace workbench
{

/**
 * Where things stand in the strip that shows the edit: frames to pixels and back, tracks, what lies under the pointer.
 * Logical pixels from the strip's top left corner; needs no window.
 */
class TimelineGeometry
{
public:
    static constexpr int kRulerHeight = 26;
    static constexpr int kHeaderWidth = 92;
    static constexpr int kVideoHeight = 58;
    static constexpr int kAudioHeight = 42;
    static constexpr int kRowGap = 2;
    static constexpr double kMostPixels = 24.0; ///< for one frame, at the closest

    struct Row {
        ObjectId track = kNoObject;
        int top = 0;
        int height = 0;

        bool operator==(const Row&) const = default;
    };

    /** A line of the ruler. */
    struct Tick {
        double x = 0.0;
        std::string label; ///< empty for the lines between those that are labelled
    };

    /** What lies at a place. */
    struct Hit {
        enum class Kind { Nothing, Ruler, Header, Track, Segment };

        Kind kind = Kind::Nothing;
        ObjectId object = kNoObject; ///< the track or segment
        int frame = 0;               ///< not before the start of the edit
    };

    void setEdit(const EditModel& edit);
    void setWidth(int width);

    const std::vector<Row>& rows() const { return rows_; }

    /** The height that all tracks and the ruler need. */
    int height() const;

    double pixelsPerFrame() const { return scale_; }

    /** The frame at the left end of the tracks; not whole while scrolled between two. */
    double firstFrame() const { return first_; }

    /** How many frames are in view. */
    double framesInView() const;

    /** The last first frame that scrolling allows. */
    double lastFirstFrame() const;

    double xOf(double frame) const { return kHeaderWidth + (frame - first_) * scale_; }

    /** The frame under a pixel; not before the start of the edit. */
    int frameAt(double x) const;

    Hit hitTest(const EditModel& edit, double x, double y) const;

    std::vector<Tick> ticks() const;

    void scrollTo(double firstFrame);

    /** Makes frames `factor` times as wide, and keeps the one under the pixel where it is. */
    void zoom(double factor, double aboutX);

    /** Shows `frames` from `first` on, as far as scale and edit allow. Where they do not, `about` stays at its place.
     */
    void show(double first, double frames, double about);

    /** Shows the whole edit, with a little room behind it. */
    void showAll();

    /** Turns the page when the frame is not in view; true when it did. */
    bool follow(int frame);

private:
    double leastScale() const;
    int tickDistance() const;

    FormatData format_;
    std::vector<Row> rows_;
    int frames_ = 0;
    int width_ = 800;
    double first_ = 0.0;
    double scale_ = 1.0;
};

} // namespace workbench

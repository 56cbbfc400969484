#pragma once

#include "oribund/colour/ColEyeDropBase.h"
#include "oribund/colour/StripPainter.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/edit/iFrameStatistics.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

#include <array>
#include <vector>

namespace oribund
{

class ColourGrabberButton;
class ColourRangeRow;
class EffectValParamBase;
class Label;
class TolerantRangeEditor;

/**
 * The rows of a colour range: soft ranges of hue, saturation and luminance, each with a keyframe button, its name and a
 * strip that shows its axis and how the picture's colours are distributed on it. Beside them an eye-dropper, where the
 * viewer has one.
 *
 * A colour range is three ColourData parameters that follow each other in the effect's list. Where there are fewer, the
 * rows of the others are left out. Hue is in degrees, saturation and luminance run from 0 to 1. User-interface thread.
 */
class ORIBUND_API ColourRangePanel : public StandardPanel
{
public:
    static constexpr std::size_t kRows = 3;

    /** `paramIndex` is that of the hue in the effect's list of parameters. */
    ColourRangePanel(const FXViewHandle& handle, unsigned paramIndex, unsigned short width, const Palette& palette,
                     Canvas* canvas);
    ~ColourRangePanel() override;

    /** Of three rows with the gaps between them. */
    static int calcHeight();

    /** The parameters of the colour range whose hue stands at an index: up to three, none if that is no such one. */
    static std::vector<Kt::Ptr<EffectValParamBase>> paramsOf(const Kt::Ptr<EffectInstance>& effect,
                                                             unsigned paramIndex);

    /** Room for the names of the rows, as of others in the panel. */
    void setLabelWidth(int width);

    /** Selects a colour with the usual softness; with `store` as one edit, else only for show until the next refresh.
     */
    void setCol(const Colour& colour, bool store);

    /** Writes a range to the parameters, as one undo step. False when that was refused. */
    static bool setColourRange(const ColEyeDropBase::ColourRange& range, const FXViewHandle& handle,
                               unsigned paramIndex);

    // Paint the strip of a row for what its parameter is at the current time. In one-pixel columns.
    static void drawHueSlider(TolerantRangeEditor& editor, CanvasRenderer& renderer, const Kt::Box<double>& strip,
                              ColourRangePanel& panel);
    static void drawSatSlider(TolerantRangeEditor& editor, CanvasRenderer& renderer, const Kt::Box<double>& strip,
                              ColourRangePanel& panel);
    static void drawLumSlider(TolerantRangeEditor& editor, CanvasRenderer& renderer, const Kt::Box<double>& strip,
                              ColourRangePanel& panel);

    /** The strip of a row, 0 for the hue; null where it is left out. */
    TolerantRangeEditor* editorOf(std::size_t row) const;

    using StandardPanel::resize;
    void resize(double width, double height) override;
    void setActive(bool active, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;

protected:
    void layoutChildren() override;
    bool handleMessageEvent(const String& message, Glob* sender) override;

private:
    friend class ColourRangeRow;

    ColEyeDropBase::ColourRange shownRange() const;
    double hueMiddle() const;
    void drawStrip(CanvasRenderer& renderer, const Kt::Box<double>& strip, ColourAxis axis);
    int handleStatistics(const iFrameStatistics& statistics);

    FXViewHandle handle_;
    unsigned paramIndex_;
    std::array<ColourRangeRow*, kRows> rows_{};
    std::array<StripPainter, kRows> painters_{StripPainter(ColourAxis::Hue), StripPainter(ColourAxis::Saturation),
                                              StripPainter(ColourAxis::Luminance)};
    ColourGrabberButton* grabber_ = nullptr;
    Label* label_ = nullptr;
    MethodCallback<ColourRangePanel, iFrameStatistics> statisticsCallback_{this, &ColourRangePanel::handleStatistics};
};

} // namespace oribund

#include "workbench/app/effects/EffectTimePanel.h"

#include "oribund/controls/bars/CompoundEffectTherm.h"
#include "oribund/controls/keyframes/CompoundEffectKeyframeButtons.h"
#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"

#include <algorithm>
#include <memory>

namespace workbench
{

using namespace oribund;

EffectTimePanel::EffectTimePanel(const InitArgs& args, Vob& vob)
    : WidgetGroup(args)
    , vob_(vob)
{
    const int gap = UifStd::getWidgetGap();
    const auto width = static_cast<unsigned short>(std::clamp(getUserArea().width() - 2 * gap, 0, 65535));
    WidgetSurround surround;
    surround.followWidth = true;
    surround.left = surround.right = surround.bottom = gap;

    CompoundEffectKeyframeButtons::InitArgs buttons(width, 0);
    buttons.vob = &vob;
    buttons_ = addWidget(std::make_unique<CompoundEffectKeyframeButtons>(buttons), UserTopLeft(gap, gap), surround);

    CompoundEffectTherm::InitArgs bar(width, 0);
    bar.vob = &vob;
    bar_ = addWidget(std::make_unique<CompoundEffectTherm>(bar), WidgetPosition::below(*buttons_, 0), surround);
    bar_->setAllowZoom(true);
}

EffectTimePanel::~EffectTimePanel() = default;

void EffectTimePanel::setTrack(const IdStamp& track)
{
    setZoomed(false);
    buttons_->setTrackID(track);
    bar_->setTrackID(track);
}

void EffectTimePanel::setZoomed(bool zoomed)
{
    bar_->setZoomed(zoomed);
    buttons_->setZoomActive(zoomed, eRedrawFlag::Yes);
}

bool EffectTimePanel::handleMessageEvent(const String& message, Glob* sender)
{
    if (message == CompoundEffectTherm::timeDragEndedMsg) {
        if (timeDragEnded)
            timeDragEnded();
        return true;
    }
    const bool zoomsIn = message == CompoundEffectKeyframeButtons::zoomInMsg;
    if (!zoomsIn && message != CompoundEffectKeyframeButtons::zoomOutMsg)
        return WidgetGroup::handleMessageEvent(message, sender);
    if (zoomsIn)
        chooseRegion();
    setZoomed(zoomsIn);
    return true;
}

void EffectTimePanel::chooseRegion()
{
    using Region = NumRange<FXTime, Unordered>;
    constexpr double kPart = 0.25;
    CompoundEffectMonitor* const monitor = vob_.getEffectMonitor();
    const NumRange<double> region = monitor ? monitor->getCompoundEditRegion(bar_->getTrackID()) : NumRange<double>();
    const Region chosen = monitor ? monitor->getSignificantRegionServer().get() : Region();
    if (region.length() <= 0.0 || (chosen.high() - chosen.low()).normalised > kValueTolerance)
        return;
    const double now = clampNormalisedTime(toFXTime(region, vob_.getCurrentTime()).normalised);
    const double from = std::clamp(now - kPart / 2.0, 0.0, 1.0 - kPart);
    monitor->getSignificantRegionServer().set({FXTime{from}, FXTime{from + kPart}});
}

} // namespace workbench

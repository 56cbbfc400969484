#include "workbench/model/host/ModelVob.h"

#include "workbench/model/Ids.h"
#include "workbench/model/host/ModelFXEditor.h"
#include "workbench/model/host/ModelMonitor.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace workbench
{

ModelVob::ModelVob()
    : effects_(std::make_unique<ModelFXEditor>(*this))
{
}

ModelVob::~ModelVob() = default;

void ModelVob::setEdit(const EditModelPtr& edit)
{
    stopPlay();
    monitor_.reset();
    edit_ = edit;
    selected_.clear();
    selectedSegment_ = kNoObject;
    viewRange_.set(edit_ ? oribund::NumRange<double>(0.0, edit_->getEndTime()) : oribund::NumRange<double>());
    time_.set(0.0);
    if (!edit_)
        return;
    monitor_ = std::make_unique<ModelMonitor>(*this, *edit_);
    if (!edit_->timeline().tracks().empty())
        selected_.push_back(stampOf(edit_->timeline().tracks().front()->id()));
}

void ModelVob::setCurrentTime(double editTime)
{
    if (edit_ && std::isfinite(editTime))
        time_.set(std::clamp(editTime, 0.0, std::max(edit_->getEndTime(), 0.0)));
}

bool ModelVob::isOutside(const oribund::NumRange<double>& region) const
{
    const int frame = currentFrame();
    // At the end of the edit its last frame is shown.
    const bool isAtEnd = edit_ && frame == edit_->timeline().endFrame() && frame == frameOf(region.end());
    return !isAtEnd && (frame < frameOf(region.start()) || frame >= frameOf(region.end()));
}

void ModelVob::prepareEdit(const oribund::NumRange<double>& region)
{
    if (!(region.start() < region.end()) || !isOutside(region))
        return;
    const int first = frameOf(region.start());
    stopPlay();
    setCurrentTime(timeOf(std::clamp(currentFrame(), first, std::max(first, frameOf(region.end()) - 1))));
}

oribund::CompoundEffectMonitor* ModelVob::getEffectMonitor()
{
    return monitor_.get();
}

oribund::FXEditor* ModelVob::fxEditor()
{
    return effects_.get();
}

void ModelVob::startPlay()
{
    if (transport_ && edit_ && !isPlaying())
        transport_->startPlay();
}

void ModelVob::stopPlay()
{
    if (transport_ && isPlaying())
        transport_->stopPlay();
}

void ModelVob::setViewRange(const oribund::NumRange<double>& range)
{
    if (std::isfinite(range.start()) && std::isfinite(range.end()))
        viewRange_.set(range);
}

void ModelVob::setSelectedChans(std::vector<oribund::IdStamp> tracks)
{
    if (selected_ == tracks)
        return;
    selected_ = std::move(tracks);
    tellPanels();
}

void ModelVob::setSelectedSegment(ObjectId segment)
{
    if (selectedSegment_ == segment)
        return;
    selectedSegment_ = segment;
    tellPanels();
}

void ModelVob::tellPanels()
{
    if (!monitor_)
        return;
    oribund::EffectChangeDescription change;
    change.flags = oribund::EffectChangeDescription::kWholesaleRefresh;
    change.effect = oribund::IdStamp::wildcard();
    monitor_->effectChanged(change);
}

int ModelVob::frameOf(double editTime) const
{
    // Times are sums and products of frame lengths: what is a hair before a frame is that frame.
    constexpr double kHair = 1e-6;
    return edit_ ? static_cast<int>(std::floor(editTime / edit_->getCelResolution() + kHair)) : 0;
}

double ModelVob::timeOf(int frame) const
{
    return edit_ ? frame * edit_->getCelResolution() : 0.0;
}

} // namespace workbench

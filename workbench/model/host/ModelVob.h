#pragma once

#include "oribund/host/edit/Vob.h"
#include "workbench/model/EditModel.h"

#include <memory>
#include <vector>

namespace workbench
{

class ModelFXEditor;
class ModelMonitor;

/** What moves the current time by itself: the engine, through whoever wires it. */
class iTransport
{
public:
    virtual void startPlay() = 0;
    virtual void stopPlay() = 0;

protected:
    ~iTransport() = default;
};

/** The edit in the workbench's viewer: current time, play state, view range, selected tracks. */
class ModelVob : public oribund::Vob
{
public:
    ModelVob();
    ~ModelVob() override;

    /** Shows another edit, from its start; what follows this viewer has to bind again. Empty for none. */
    void setEdit(const EditModelPtr& edit);

    const EditModelPtr& editModel() const { return edit_; }

    /** Who plays; null for nobody. Outlives the viewer or is taken off again. */
    void setTransport(iTransport* transport) { transport_ = transport; }

    /** What it offers to panels besides; null for nothing. They outlive the viewer or are taken off again. */
    void setFrameStatistics(oribund::iFrameStatistics* statistics) { statistics_ = statistics; }

    void setColourPicker(oribund::iColourPicker* picker) { picker_ = picker; }

    oribund::iFrameStatistics* frameStatistics() override { return statistics_; }

    oribund::iColourPicker* colourPicker() override { return picker_; }

    oribund::EditPtr getEdit() const override { return edit_; }

    oribund::ValServer<double>& getCurrentTimeServer() override { return time_; }

    void setCurrentTime(double editTime) override;

    /** To the nearest frame that shows the effect. */
    void prepareEdit(const oribund::NumRange<double>& region) override;

    /** Whether the picture at the current time is none of the region's. */
    bool isOutside(const oribund::NumRange<double>& region) const;

    oribund::CompoundEffectMonitor* getEffectMonitor() override;

    oribund::FXEditor* fxEditor() override;

    bool isPlaying() const override { return playing_.get(); }

    void stopPlay() override;

    oribund::NumRange<double> getViewRange() const override { return viewRange_.get(); }

    void setViewRange(const oribund::NumRange<double>& range) override;

    /** The same, served: what scrolls and zooms, and what shows how far, are in step by it. */
    oribund::ValServer<oribund::NumRange<double>>& viewRangeServer() { return viewRange_; }

    std::vector<oribund::IdStamp> getSelectedChans() const override { return selected_; }

    void startPlay();

    /** For the transport: play has begun or ended. */
    void playStateChanged(bool playing) { playing_.set(playing); }

    oribund::ValServer<bool>& playServer() { return playing_; }

    void setSelectedChans(std::vector<oribund::IdStamp> tracks);

    /** The segment whose effects the panels of its track show, whatever the current time; kNoObject for none. */
    ObjectId selectedSegment() const { return selectedSegment_; }

    void setSelectedSegment(ObjectId segment);

    /** The current frame, the frame in which a time lies, and the time of a frame. */
    int currentFrame() const { return frameOf(time_.get()); }

    int frameOf(double editTime) const;
    double timeOf(int frame) const;

private:
    void tellPanels();

    EditModelPtr edit_;
    std::unique_ptr<ModelMonitor> monitor_;
    std::unique_ptr<ModelFXEditor> effects_;
    iTransport* transport_ = nullptr;
    oribund::iFrameStatistics* statistics_ = nullptr;
    oribund::iColourPicker* picker_ = nullptr;
    std::vector<oribund::IdStamp> selected_;
    ObjectId selectedSegment_ = kNoObject;
    oribund::ValServer<oribund::NumRange<double>> viewRange_;
    oribund::ValServer<bool> playing_{false};
    oribund::ValServer<double> time_{0.0};
};

} // namespace workbench

#pragma once

#include "oribund/host/edit/EditModification.h"
#include "oribund/host/edit/iFrameStatistics.h"
#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/overlay/ColourCount.h"
#include "workbench/app/overlay/InputPicture.h"
#include "workbench/app/session/Workspace.h"

#include <QTimer>

#include <map>
#include <memory>
#include <optional>

namespace workbench
{

/**
 * How the colours of the inputs of those effects are distributed that somebody asks about. While the user is at work it
 * lags a little behind; while the edit is played it stays as it was.
 */
class FrameStatistics final : public oribund::iFrameStatistics
{
public:
    /** The workspace outlives it, and its viewer has it as long as it is there. */
    explicit FrameStatistics(Workspace& workspace);
    ~FrameStatistics();

    FrameStatistics(const FrameStatistics&) = delete;
    FrameStatistics& operator=(const FrameStatistics&) = delete;

    const Histogram* histogram(const oribund::IdStamp& effect, oribund::ColourAxis axis) override;

    oribund::Notifier<oribund::iFrameStatistics>& changes() override { return changes_; }

private:
    /** What is known of one effect. */
    struct Known {
        std::unique_ptr<InputPicture> input;
        std::optional<ColourCount> count;
        bool isWanted = true; ///< since the last change was told
    };

    int handleReplaced(const EditReplaced&);
    int handleTime(const oribund::ValServerEvent<double>& event);
    int handlePlaying(const oribund::ValServerEvent<bool>& event);
    int handleModification(const oribund::EditModification&);
    int handleParam(const ParamEdited&);

    void askSoon();
    void ask();
    void receive(const oribund::IdStamp& effect, const FrameImagePtr& picture);

    Workspace& workspace_;
    std::map<oribund::IdStamp, Known> known_;
    QTimer timer_;
    oribund::Notifier<oribund::iFrameStatistics> changes_;
    oribund::MethodCallback<FrameStatistics, EditReplaced> replaced_;
    oribund::MethodCallback<FrameStatistics, oribund::ValServerEvent<double>> time_;
    oribund::MethodCallback<FrameStatistics, oribund::ValServerEvent<bool>> playing_;
    oribund::MethodCallback<FrameStatistics, oribund::EditModification> edit_;
    oribund::MethodCallback<FrameStatistics, ParamEdited> params_;
};

} // namespace workbench

#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "workbench/engine/client/Engine.h"
#include "workbench/model/host/ModelVob.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace workbench
{

/**
 * Keeps the engine in step with the viewer: what is edited is loaded or updated, the frame at the current time is asked
 * for, and what plays moves the current time. Changes are gathered and handed on once for each turn of the event loop.
 */
class Playback final : private iTransport
{
public:
    struct Display {
        std::function<void(const FrameImagePtr&)> picture; ///< null when the edit is empty
        std::function<void(const EngineProblem&)> problem;
        std::function<void()> leftOutMayDiffer = [] {}; ///< what leftOut() gives
    };

    /** The viewer outlives the playback. */
    Playback(std::shared_ptr<EngineHost> host, ModelVob& vob, Display display);
    ~Playback();

    /** The viewer shows another edit. */
    void editReplaced();

    /** The size in which pictures are wanted, in pixels of the screen. */
    void setPictureSize(int width, int height);

    /** An effect that was left out is tried again; all of them for an empty id. */
    void retryEffects(const std::string& id = {});

    /** The effects that are left out of the picture for now. */
    std::vector<LeftOutEffect> leftOut() const { return engine_.leftOut(); }

    /** Whether the last picture shows all that has been edited. */
    bool isUpToDate() const;

private:
    struct Mail;

    void startPlay() override;
    void stopPlay() override;

    int handleTime(const oribund::ValServerEvent<double>& event);
    int handleModification(const oribund::EditModification& modification);
    int handleParam(const ParamEdited& edited);

    void flush();
    void requestFrame();
    void deliver();
    EngineCallbacks callbacks();

    ModelVob& vob_;
    Display display_;
    QTimer flushTimer_;
    bool structureChanged_ = false;
    std::set<std::pair<oribund::IdStamp, oribund::IdStamp>> changedParams_;
    bool enginePlays_ = false; // as it told
    bool following_ = false;
    int requested_ = -1;
    int width_ = 0;
    int height_ = 0;
    std::uint64_t revision_ = 0;
    std::uint64_t shownRevision_ = 0;
    int shownFrame_ = -1;
    oribund::MethodCallback<Playback, oribund::ValServerEvent<double>> timeCallback_;
    oribund::MethodCallback<Playback, oribund::EditModification> editCallback_;
    oribund::MethodCallback<Playback, ParamEdited> paramCallback_;
    std::shared_ptr<Mail> mail_;
    Engine engine_; // last: no callback after it
};

} // namespace workbench

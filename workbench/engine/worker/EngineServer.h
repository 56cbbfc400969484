#pragma once

#include "workbench/engine/protocol/FramePool.h"
#include "workbench/engine/protocol/MessageChannel.h"
#include "workbench/engine/protocol/Messages.h"
#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/RenderWorker.h"

#include <memory>

namespace workbench
{

class MltSession;
class StillRenderer;
class WaveformReader;

/**
 * A worker's side of the conversation: does what it is asked for, one request after the other, until its client hangs
 * up. Showing goes on beside that, on a thread of its own; an export, a probe or a thumbnail holds up what comes
 * after it, and a client has a worker for each kind of work.
 */
class EngineServer
{
public:
    /** All of it was made by the client that started this process. The marks are there as long as the process. */
    EngineServer(Descriptor socket, std::unique_ptr<FrameSlots> slots, TraceMarks& marks);
    ~EngineServer();

    void run();

private:
    bool greet();
    void tell(const Event& event);
    bool takeRequest(Request& request);
    EngineCallbacks callbacks();

    void handle(const request::Hello& hello);
    void handle(request::Load& load);
    void handle(request::Update& update);
    void handle(const request::RequestFrame& wanted);
    void handle(const request::Play& play);
    void handle(const request::Pause& pause);
    void handle(request::StartExport& wanted);
    void handle(const request::ProbeMedia& probe);
    void handle(const request::ProbeEffect& probe);
    void handle(const request::ReadCatalogue& read);
    void handle(const request::MakeThumbnail& wanted);
    void handle(const request::MakeWaveform& wanted);

    MessageChannel channel_;
    const std::unique_ptr<FrameSlots> slots_;
    TraceMarks& marks_;
    EngineOptions options_;
    std::shared_ptr<MltSession> session_;
    std::unique_ptr<RenderWorker> renderer_; // once there is something to show
    std::unique_ptr<StillRenderer> stills_;  // once a thumbnail was asked for
    std::unique_ptr<WaveformReader> sounds_; // once a waveform was
};

} // namespace workbench

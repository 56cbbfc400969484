#include "workbench/engine/worker/EngineServer.h"

#include "workbench/engine/protocol/MessageCodec.h"
#include "workbench/engine/worker/EffectProbe.h"
#include "workbench/engine/worker/ExportJob.h"
#include "workbench/engine/worker/ExportPreset.h"
#include "workbench/engine/worker/MediaProbe.h"
#include "workbench/engine/worker/StillRenderer.h"
#include "workbench/engine/worker/WaveformReader.h"
#include "workbench/engine/worker/catalogue/CatalogueReader.h"
#include "workbench/engine/worker/containment/Containment.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/projection/AllowList.h"

#include <poll.h>
#include <sys/prctl.h>

#include <cstdlib>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace workbench
{

namespace
{

// A client that has stopped reading is gone for good.
constexpr std::chrono::seconds kPatience{30};

// A picture that nobody takes in that time is left out. The client has fewer in use than there are.
constexpr std::chrono::milliseconds kSlotPatience{200};

/** Gives the process the name that lists of processes show, at most 15 letters. */
void callProcess(const char* name)
{
    prctl(PR_SET_NAME, name, 0, 0, 0);
}

/** Ends the process when the client hangs up, whatever the other threads are in the middle of. */
void endWithClient(int socket)
{
    std::thread([socket] {
        pollfd client{socket, POLLRDHUP, 0};
        while (poll(&client, 1, -1) <= 0) {
        }
        std::_Exit(0);
    }).detach();
}

} // namespace

EngineServer::EngineServer(Descriptor socket, std::unique_ptr<FrameSlots> slots, TraceMarks& marks)
    : channel_(std::move(socket))
    , slots_(std::move(slots))
    , marks_(marks)
{
}

EngineServer::~EngineServer() = default;

void EngineServer::run()
{
    if (!greet())
        return;
    Request request;
    while (takeRequest(request))
        std::visit([this](auto& asked) { handle(asked); }, request);
}

bool EngineServer::greet()
{
    // The framework is there by the time that the client has put together what it wants.
    event::Ready ready;
    session_ = MltSession::open(&ready.problem);
    Request request;
    if (!takeRequest(request) || !std::holds_alternative<request::Hello>(request))
        return false;
    const auto& hello = std::get<request::Hello>(request);
    if (hello.version == kProtocolVersion && session_) {
        options_ = hello.options;
        ready.containment = contain(hello.rules);
        endWithClient(channel_.descriptor());
        if (!hello.effects.empty()) {
            EffectCatalogue installed;
            for (const EffectDescription& effect : hello.effects)
                installed.add(effect);
            session_->setAllowList(std::make_shared<const AllowList>(std::move(installed)));
        }
    }
    tell(ready);
    return hello.version == kProtocolVersion && session_;
}

bool EngineServer::takeRequest(Request& request)
{
    std::vector<std::uint8_t> message;
    MessageChannel::Outcome outcome{};
    do
        outcome = channel_.receive(message, kPatience);
    while (outcome == MessageChannel::Outcome::TimedOut);
    if (outcome != MessageChannel::Outcome::Done)
        return false;
    std::optional<Request> decoded = decodeRequest(message);
    marks_.countTaken();
    if (decoded)
        request = std::move(*decoded);
    return decoded.has_value();
}

void EngineServer::tell(const Event& event)
{
    if (channel_.send(encode(event), kPatience) != MessageChannel::Outcome::Done)
        channel_.shutDown();
}

EngineCallbacks EngineServer::callbacks()
{
    EngineCallbacks callbacks;
    callbacks.frame = [this](const FrameImagePtr& picture) {
        if (const std::optional<event::FrameReady> ready = slots_->handOver(*picture))
            tell(*ready);
    };
    callbacks.position = [this](int frame) { tell(event::Position{frame}); };
    callbacks.playing = [this](bool playing) { tell(event::Playing{playing}); };
    callbacks.problem = [this](const EngineProblem& problem) { tell(event::Problem{problem}); };
    return callbacks;
}

void EngineServer::handle(const request::Hello&)
{
    channel_.shutDown(); // a second one: the client is no client
}

void EngineServer::handle(request::Load& load)
{
    if (!renderer_) {
        callProcess("oribund-viewer");
        renderer_ =
            std::make_unique<RenderWorker>(session_, callbacks(), options_, marks_, [this](int width, int height) {
                return slots_->reserve(width, height, kSlotPatience);
            });
    }
    renderer_->load(std::make_shared<const Projection>(std::move(load.projection)),
                    {load.bypassed.begin(), load.bypassed.end()}, load.revision);
}

void EngineServer::handle(request::Update& update)
{
    if (renderer_)
        renderer_->update(std::move(update.updates), update.revision);
}

void EngineServer::handle(const request::RequestFrame& wanted)
{
    if (renderer_)
        renderer_->request({wanted.frame, wanted.maxWidth, wanted.maxHeight});
}

void EngineServer::handle(const request::Play&)
{
    if (renderer_)
        renderer_->setPlaying(true);
}

void EngineServer::handle(const request::Pause&)
{
    if (renderer_)
        renderer_->setPlaying(false);
}

void EngineServer::handle(request::StartExport& wanted)
{
    callProcess("oribund-export");
    const ExportResult result =
        runExport(session_, std::move(wanted.projection), wanted.settings, marks_, [this](int done, int total) {
            tell(event::ExportProgress{done, total});
        });
    tell(event::ExportFinished{result});
}

void EngineServer::handle(const request::ProbeMedia& probe)
{
    tell(event::MediaProbed{probeMedia(*session_, probe.path)});
}

void EngineServer::handle(const request::ProbeEffect& probe)
{
    tell(event::EffectProbed{tryEffect(*session_, probe.service, probe.properties)});
}

void EngineServer::handle(const request::ReadCatalogue&)
{
    const CatalogueResult installed = readCatalogue(*session_);
    event::CatalogueRead read{{}, installed.problems, exportPresets(*session_)};
    for (const EffectCatalogue::Entry& effect : installed.catalogue.all())
        read.effects.push_back(*effect);
    tell(read);
}

void EngineServer::handle(const request::MakeThumbnail& wanted)
{
    if (!stills_)
        stills_ = std::make_unique<StillRenderer>(
            session_, [this](int width, int height) { return slots_->reserve(width, height, kSlotPatience); });
    const std::shared_ptr<FrameImage> picture =
        stills_->render(wanted.projection, wanted.frame, wanted.maxWidth, wanted.maxHeight);
    event::ThumbnailMade made;
    made.problem = stills_->problem();
    if (!picture && made.problem.empty())
        made.problem = "There is no picture.";
    if (made.problem.empty())
        made.picture = slots_->handOver(*picture);
    tell(made);
}

void EngineServer::handle(const request::MakeWaveform& wanted)
{
    if (!sounds_)
        sounds_ = std::make_unique<WaveformReader>(session_);
    tell(sounds_->read(wanted));
}

} // namespace workbench

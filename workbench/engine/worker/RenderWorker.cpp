#include "workbench/engine/worker/RenderWorker.h"

#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <mlt++/Mlt.h>

#include <iterator>
#include <utility>

namespace workbench
{

/** While it exists, the thread has until the deadline to come back. */
class RenderWorker::Busy
{
public:
    Busy(RenderWorker& worker, std::chrono::milliseconds limit)
        : worker_(worker)
    {
        worker_.deadline_ = Clock::now() + limit;
    }

    ~Busy() { worker_.deadline_ = Clock::time_point::max(); }

    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    RenderWorker& worker_;
};

RenderWorker::RenderWorker(std::shared_ptr<MltSession> session, EngineCallbacks callbacks, EngineOptions options,
                           std::set<std::string> bypassed)
    : session_(std::move(session))
    , callbacks_(std::move(callbacks))
    , options_(options)
    , bypassed_(std::move(bypassed))
{
}

RenderWorker::~RenderWorker()
{
    if (thread_.joinable())
        thread_.detach();
}

void RenderWorker::start()
{
    thread_ = std::thread([self = shared_from_this()] { self->run(); });
}

template <class Change>
void RenderWorker::post(Change&& change)
{
    {
        const std::lock_guard lock(mailMutex_);
        change(mail_);
        mail_.any = true;
    }
    mailArrived_.notify_one();
}

void RenderWorker::load(std::shared_ptr<const Projection> projection, std::uint64_t revision)
{
    post([&](Mail& mail) {
        mail.projection = std::move(projection);
        mail.updates.clear(); // they were for the edit before
        mail.revision = revision;
    });
}

void RenderWorker::update(std::vector<PropertyUpdate> updates, std::uint64_t revision)
{
    post([&](Mail& mail) {
        std::move(updates.begin(), updates.end(), std::back_inserter(mail.updates));
        mail.revision = revision;
    });
}

void RenderWorker::request(FrameRequest request)
{
    post([&](Mail& mail) { mail.request = request; });
}

void RenderWorker::setPlaying(bool playing)
{
    post([&](Mail& mail) { mail.playing = playing; });
}

void RenderWorker::report(EngineProblem problem)
{
    post([&](Mail& mail) { mail.problems.push_back(std::move(problem)); });
}

void RenderWorker::setBypassed(std::set<std::string> bypassed)
{
    post([&](Mail& mail) { mail.bypassed = std::move(bypassed); });
}

std::optional<RenderWorker::Stall> RenderWorker::findStall() const
{
    const Clock::time_point now = Clock::now();
    bool stalled = now > deadline_.load();
    if (!stalled) {
        const std::lock_guard lock(playerMutex_);
        stalled = player_ && now - player_->lastShown() > options_.frameTimeout;
    }
    return stalled ? std::optional(Stall{trace_.current(), frame_}) : std::nullopt;
}

bool RenderWorker::finish(std::chrono::milliseconds patience)
{
    post([](Mail& mail) { mail.quit = true; });
    std::unique_lock lock(endMutex_);
    if (!ended_.wait_for(lock, patience, [&] { return hasEnded_; }))
        return false;
    lock.unlock();
    thread_.join();
    return true;
}

void RenderWorker::abandon()
{
    MltSession::noteAbandonedThread();
    {
        const std::lock_guard lock(callbackMutex_);
        silent_ = true;
    }
    post([](Mail& mail) { mail.quit = true; });
    if (thread_.joinable())
        thread_.detach();
}

template <class Callback, class... Arguments>
void RenderWorker::call(const Callback& callback, Arguments&&... arguments)
{
    const std::lock_guard lock(callbackMutex_);
    if (!silent_ && callback)
        callback(std::forward<Arguments>(arguments)...);
}

void RenderWorker::run()
{
    for (;;) {
        Mail mail = takeMail();
        if (mail.quit)
            break;
        handle(mail);
    }
    stopPlaying();
    graph_.reset();
    const std::lock_guard lock(endMutex_);
    hasEnded_ = true;
    ended_.notify_all();
}

RenderWorker::Mail RenderWorker::takeMail()
{
    std::unique_lock lock(mailMutex_);
    mailArrived_.wait(lock, [&] { return mail_.any; });
    return std::exchange(mail_, Mail());
}

void RenderWorker::handle(Mail& mail)
{
    for (const EngineProblem& problem : mail.problems)
        call(callbacks_.problem, problem);
    if (mail.bypassed)
        bypassed_ = std::move(*mail.bypassed);
    if (mail.revision != 0)
        revision_ = mail.revision;
    if (mail.projection)
        rebuild(mail);
    if (!graph_)
        return;
    if (!mail.updates.empty())
        applyUpdates(mail.updates);
    if (mail.request)
        size_ = *mail.request;
    if (mail.playing && !*mail.playing)
        stopPlaying();
    if (mail.request)
        render(*mail.request);
    if (mail.playing && *mail.playing)
        startPlaying();
    if (mail.shown && player_)
        handleShown(*mail.shown);
}

void RenderWorker::rebuild(const Mail& mail)
{
    const bool wasPlaying = player_ != nullptr;
    stopPlaying();
    {
        const Busy busy(*this, options_.loadTimeout);
        MltGraph::Options options{bypassed_, &trace_, std::move(graph_)};
        graph_ = MltGraph::build(session_, *mail.projection, std::move(options));
    }
    for (const EngineProblem& problem : graph_->problems())
        call(callbacks_.problem, problem);
    if (wasPlaying && !mail.playing)
        startPlaying();
}

void RenderWorker::applyUpdates(const std::vector<PropertyUpdate>& updates)
{
    const bool interrupt = player_ && graph_->makesAnew(updates);
    if (interrupt)
        stopPlaying();
    {
        const Busy busy(*this, options_.frameTimeout);
        for (const PropertyUpdate& update : updates)
            graph_->apply(update);
        if (player_)
            player_->discardAhead();
    }
    if (interrupt)
        startPlaying();
}

void RenderWorker::render(const FrameRequest& request)
{
    frame_ = request.frame;
    if (player_) {
        const Busy busy(*this, options_.frameTimeout);
        player_->seek(request.frame);
        return;
    }
    std::shared_ptr<FrameImage> image;
    {
        const Busy busy(*this, options_.frameTimeout);
        image = renderFrame(graph_->producer(), request.frame,
                            fitFrame(graph_->profile(), request.maxWidth, request.maxHeight));
    }
    if (!image)
        return;
    image->revision = revision_;
    call(callbacks_.frame, FrameImagePtr(std::move(image)));
}

void RenderWorker::startPlaying()
{
    if (player_)
        return;
    const Busy busy(*this, options_.frameTimeout);
    if (!Player::prepareSound(options_.sound) && options_.sound)
        call(callbacks_.problem,
             EngineProblem{
                 EngineProblem::Kind::SoundUnavailable, "There is no sound device; playing without sound.", {}, {}});
    const FrameSize size = fitFrame(graph_->profile(), size_.maxWidth, size_.maxHeight);
    auto player = std::make_unique<Player>(graph_->profile(), graph_->producer(), size, [this](Player::Shown shown) {
        post([&](Mail& mail) { mail.shown = std::move(shown); });
    });
    const int last = graph_->length() - 1;
    if (!player->start(frame_ >= last ? 0 : frame_.load()))
        return call(callbacks_.playing, false);
    {
        const std::lock_guard lock(playerMutex_);
        player_ = std::move(player);
    }
    call(callbacks_.playing, true);
}

void RenderWorker::stopPlaying()
{
    if (!player_)
        return;
    {
        const Busy busy(*this, options_.frameTimeout);
        std::unique_ptr<Player> player;
        {
            const std::lock_guard lock(playerMutex_);
            player = std::move(player_);
        }
        player.reset();
    }
    call(callbacks_.playing, false);
}

void RenderWorker::handleShown(const Player::Shown& shown)
{
    frame_ = shown.frame;
    call(callbacks_.position, shown.frame);
    if (shown.image) {
        shown.image->frame = shown.frame;
        shown.image->revision = revision_;
        call(callbacks_.frame, FrameImagePtr(shown.image));
    }
    if (shown.atEnd || shown.frame >= graph_->length() - 1)
        stopPlaying();
}

} // namespace workbench

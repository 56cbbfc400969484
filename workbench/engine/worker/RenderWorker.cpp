#include "workbench/engine/worker/RenderWorker.h"

#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <mlt++/Mlt.h>

#include <iterator>
#include <utility>

namespace workbench
{

namespace
{

constexpr int kPieces = 5; // of work, at most, that one mail gives

} // namespace

/** While it exists, the thread has until the deadline to come back. Afterwards that of what is around it counts. */
class RenderWorker::Busy
{
public:
    Busy(RenderWorker& worker, std::chrono::milliseconds limit)
        : worker_(worker)
        , around_(worker.deadline_)
    {
        set(TraceMarks::Clock::now() + limit);
    }

    ~Busy() { set(around_); }

    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    void set(TraceMarks::Clock::time_point deadline) const
    {
        worker_.deadline_ = deadline;
        worker_.marks_.setDeadline(TraceMarks::Work::Command, deadline);
    }

    RenderWorker& worker_;
    const TraceMarks::Clock::time_point around_;
};

RenderWorker::RenderWorker(std::shared_ptr<MltSession> session, EngineCallbacks callbacks, EngineOptions options,
                           TraceMarks& marks, PictureMemory memory)
    : session_(std::move(session))
    , callbacks_(std::move(callbacks))
    , options_(options)
    , marks_(marks)
    , memory_(std::move(memory))
    , thread_([this] { run(); })
{
}

RenderWorker::~RenderWorker()
{
    post([](Mail& mail) { mail.quit = true; });
    thread_.join();
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

void RenderWorker::load(std::shared_ptr<const Projection> projection, std::set<std::string> bypassed,
                        std::uint64_t revision)
{
    post([&](Mail& mail) {
        mail.projection = std::move(projection);
        mail.bypassed = std::move(bypassed);
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
}

RenderWorker::Mail RenderWorker::takeMail()
{
    std::unique_lock lock(mailMutex_);
    mailArrived_.wait(lock, [&] { return mail_.any; });
    return std::exchange(mail_, Mail());
}

void RenderWorker::handle(Mail& mail)
{
    // Each piece of work has its own time. What is between them takes none, unless something is badly wrong.
    const Busy busy(*this, 2 * (options_.loadTimeout + kPieces * options_.frameTimeout));
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

void RenderWorker::rebuild(Mail& mail)
{
    const bool wasPlaying = player_ != nullptr;
    stopPlaying();
    {
        const Busy busy(*this, options_.loadTimeout);
        MltGraph::Options options{std::move(mail.bypassed), &marks_, std::move(graph_)};
        graph_ = MltGraph::build(session_, *mail.projection, std::move(options));
    }
    tellProblems();
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
    setFrame(request.frame);
    if (player_) {
        const Busy busy(*this, options_.frameTimeout);
        player_->seek(request.frame);
        return;
    }
    std::shared_ptr<FrameImage> image;
    {
        const Busy busy(*this, options_.frameTimeout);
        image = renderFrame(graph_->producer(), request.frame,
                            fitFrame(graph_->profile(), request.maxWidth, request.maxHeight), memory_);
    }
    tellProblems();
    if (!image)
        return;
    image->revision = revision_;
    callbacks_.frame(std::move(image));
}

void RenderWorker::startPlaying()
{
    if (player_)
        return;
    const Busy busy(*this, options_.frameTimeout);
    if (!Player::prepareSound(options_.sound) && options_.sound)
        callbacks_.problem(
            {EngineProblem::Kind::SoundUnavailable, "There is no sound device; playing without sound.", {}, {}});
    const FrameSize size = fitFrame(graph_->profile(), size_.maxWidth, size_.maxHeight);
    auto player = std::make_unique<Player>(
        graph_->profile(), graph_->producer(), size, Player::Surroundings{marks_, options_.frameTimeout, memory_},
        [this](Player::Shown shown) { post([&](Mail& mail) { mail.shown = std::move(shown); }); });
    const int last = graph_->length() - 1;
    if (!player->start(frame_ >= last ? 0 : frame_))
        return callbacks_.playing(false);
    player_ = std::move(player);
    callbacks_.playing(true);
}

void RenderWorker::stopPlaying()
{
    if (!player_)
        return;
    {
        const Busy busy(*this, options_.frameTimeout);
        player_.reset();
    }
    callbacks_.playing(false);
}

/** Some come up only when a clip is reached. */
void RenderWorker::tellProblems()
{
    for (const EngineProblem& problem : graph_->takeProblems())
        callbacks_.problem(problem);
}

void RenderWorker::handleShown(const Player::Shown& shown)
{
    setFrame(shown.frame);
    tellProblems();
    callbacks_.position(shown.frame);
    if (shown.image) {
        shown.image->frame = shown.frame;
        shown.image->revision = revision_;
        callbacks_.frame(shown.image);
    }
    if (shown.atEnd || shown.frame >= graph_->length() - 1)
        stopPlaying();
}

void RenderWorker::setFrame(int frame)
{
    frame_ = frame;
    marks_.setFrame(frame);
}

} // namespace workbench

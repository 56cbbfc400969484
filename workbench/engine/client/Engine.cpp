#include "workbench/engine/client/Engine.h"

#include "workbench/engine/worker/RenderWorker.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <utility>

namespace workbench
{

/** The state that a new worker needs to go on where one was left behind, and the watchdog that notices. */
class Engine::Impl
{
public:
    Impl(std::shared_ptr<MltSession> session, EngineCallbacks callbacks, EngineOptions options)
        : session_(std::move(session))
        , callbacks_(std::move(callbacks))
        , options_(options)
    {
        // The worker's own word that playing ended must not restart it after a stall.
        callbacks_.playing = [this, told = std::move(callbacks_.playing)](bool playing) {
            playing_ = playing;
            if (told)
                told(playing);
        };
        callbacks_.position = [this, told = std::move(callbacks_.position)](int frame) {
            playedTo_ = frame;
            if (told)
                told(frame);
        };
        startWorker();
        watchdog_ = std::thread([this] { watch(); });
    }

    ~Impl()
    {
        {
            const std::lock_guard lock(mutex_);
            quit_ = true;
        }
        wake_.notify_all();
        watchdog_.join();
        if (!worker_->finish(options_.frameTimeout))
            worker_->abandon();
    }

    std::uint64_t load(Projection projection)
    {
        const std::lock_guard lock(mutex_);
        projection_ = std::make_shared<const Projection>(std::move(projection));
        updates_.clear();
        worker_->load(projection_, ++revision_);
        return revision_;
    }

    std::uint64_t update(std::vector<PropertyUpdate> updates)
    {
        const std::lock_guard lock(mutex_);
        for (const PropertyUpdate& update : updates)
            updates_[{update.service, update.property}] = update.value;
        worker_->update(std::move(updates), ++revision_);
        return revision_;
    }

    void request(FrameRequest request)
    {
        const std::lock_guard lock(mutex_);
        request_ = request;
        playedTo_ = request.frame;
        worker_->request(request);
    }

    void setPlaying(bool playing)
    {
        const std::lock_guard lock(mutex_);
        playing_ = playing;
        worker_->setPlaying(playing);
    }

    void forgive()
    {
        const std::lock_guard lock(mutex_);
        bypassed_.clear();
        worker_->setBypassed({});
    }

private:
    void startWorker()
    {
        worker_ = std::make_shared<RenderWorker>(session_, callbacks_, options_, bypassed_);
        worker_->start();
    }

    void watch()
    {
        const auto pause = std::max(options_.frameTimeout / 10, std::chrono::milliseconds(5));
        std::unique_lock lock(mutex_);
        while (!wake_.wait_for(lock, pause, [&] { return quit_; }))
            if (const std::optional<RenderWorker::Stall> stall = worker_->findStall())
                recover(*stall);
    }

    void recover(const RenderWorker::Stall& stall)
    {
        worker_->abandon();
        const bool wasPlaying = playing_;
        const EngineProblem problem = describe(stall);
        if (!stall.effect.empty())
            bypassed_.insert(stall.effect);
        startWorker();
        worker_->report(problem);
        if (!projection_)
            return;
        worker_->load(projection_, revision_);
        if (!updates_.empty()) {
            std::vector<PropertyUpdate> updates;
            for (const auto& [key, value] : updates_)
                updates.push_back({key.first, key.second, value});
            worker_->update(std::move(updates), revision_);
        }
        // Without a suspect the same frame would only hang again.
        if (stall.effect.empty())
            return;
        worker_->request({playedTo_, request_.maxWidth, request_.maxHeight});
        if (wasPlaying)
            worker_->setPlaying(true);
    }

    EngineProblem describe(const RenderWorker::Stall& stall) const
    {
        EngineProblem problem;
        problem.subject = stall.effect;
        const ProjectedFilter* effect = projection_ ? findEffect(*projection_, stall.effect) : nullptr;
        if (projection_)
            problem.effects = serviceNames(effectsAt(*projection_, stall.frame));
        const std::string at = " at frame " + std::to_string(stall.frame);
        if (effect) {
            problem.kind = EngineProblem::Kind::EffectHung;
            problem.message = "The effect " + inQuotes(effect->service) + " did not answer" + at + "; it is bypassed.";
        } else {
            problem.kind = EngineProblem::Kind::MediaHung;
            problem.message = "The picture" + at + " did not come in time.";
        }
        return problem;
    }

    const std::shared_ptr<MltSession> session_;
    EngineCallbacks callbacks_;
    const EngineOptions options_;

    std::mutex mutex_;
    std::shared_ptr<RenderWorker> worker_;
    std::shared_ptr<const Projection> projection_;
    std::map<std::pair<std::string, std::string>, std::string> updates_; // since the load, by effect and property
    std::set<std::string> bypassed_;
    FrameRequest request_;
    std::atomic<int> playedTo_{0};
    std::atomic<bool> playing_{false};
    std::uint64_t revision_ = 0;

    std::condition_variable wake_;
    bool quit_ = false;
    std::thread watchdog_;
};

Engine::Engine(std::shared_ptr<MltSession> session, EngineCallbacks callbacks, EngineOptions options)
    : impl_(std::make_unique<Impl>(std::move(session), std::move(callbacks), options))
{
}

Engine::~Engine() = default;

std::uint64_t Engine::load(Projection projection)
{
    return impl_->load(std::move(projection));
}

std::uint64_t Engine::update(std::vector<PropertyUpdate> updates)
{
    return impl_->update(std::move(updates));
}

void Engine::requestFrame(int frame, int maxWidth, int maxHeight)
{
    impl_->request({frame, maxWidth, maxHeight});
}

void Engine::play()
{
    impl_->setPlaying(true);
}

void Engine::pause()
{
    impl_->setPlaying(false);
}

void Engine::forgiveEffects()
{
    impl_->forgive();
}

} // namespace workbench

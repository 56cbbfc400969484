#include "workbench/engine/client/Engine.h"

#include "workbench/engine/client/BypassedEffects.h"
#include "workbench/engine/client/EngineHost.h"
#include "workbench/engine/client/EngineProcess.h"
#include "workbench/engine/client/WakeUp.h"
#include "workbench/engine/client/WorkerEndText.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace workbench
{

/**
 * What the worker is to show, kept by whoever asks, and the thread that keeps a worker in step with it. Only that
 * thread knows the worker.
 */
class Engine::Impl
{
    /** The whole state: what a new worker is told. */
    struct Wanted {
        std::shared_ptr<const Projection> projection;
        BypassedEffects::Updates updates; // since the load
        request::RequestFrame frame;
        bool playing = false;
        std::uint64_t revision = 0;
    };

    /** What of it the worker has not been told yet. */
    struct Unsent {
        bool load = false;
        std::vector<PropertyUpdate> updates;
        bool frame = false;
        bool playing = false;

        bool any() const { return load || !updates.empty() || frame || playing; }
    };

    template <class Change>
    auto change(Change&& change)
    {
        const WakeUp::AtEnd wake(wake_);
        const std::lock_guard lock(mutex_);
        return change(wanted_, unsent_);
    }

public:
    Impl(std::shared_ptr<EngineHost> host, EngineCallbacks callbacks, EngineOptions options)
        : host_(std::move(host))
        , callbacks_(std::move(callbacks))
        , options_(options)
        , thread_([this] { run(); })
    {
    }

    ~Impl()
    {
        quit_ = true;
        wake_.wake();
        thread_.join();
    }

    std::uint64_t load(Projection projection)
    {
        return change([&](Wanted& wanted, Unsent& unsent) {
            wanted.projection = std::make_shared<const Projection>(std::move(projection));
            wanted.updates.clear();
            unsent.load = true;
            unsent.updates.clear(); // they were for the edit before
            return ++wanted.revision;
        });
    }

    std::uint64_t update(std::vector<PropertyUpdate> updates)
    {
        return change([&](Wanted& wanted, Unsent& unsent) {
            for (PropertyUpdate& update : updates) {
                wanted.updates[{update.service, update.property}] = update.value;
                unsent.load = bypassed_.retryAfterChange(update.service) || unsent.load;
                unsent.updates.push_back(std::move(update));
            }
            return ++wanted.revision;
        });
    }

    void request(request::RequestFrame frame)
    {
        change([&](Wanted& wanted, Unsent& unsent) {
            wanted.frame = frame;
            unsent.frame = true;
        });
    }

    void setPlaying(bool playing)
    {
        change([&](Wanted& wanted, Unsent& unsent) {
            wanted.playing = playing;
            unsent.playing = true;
        });
    }

    void retry(const std::string& id)
    {
        change([&](Wanted&, Unsent& unsent) {
            bypassed_.forgive(id);
            unsent.load = unsent.frame = true;
        });
    }

    std::vector<LeftOutEffect> leftOut()
    {
        const std::lock_guard lock(mutex_);
        return wanted_.projection ? bypassed_.in(*wanted_.projection, wanted_.updates) : std::vector<LeftOutEffect>();
    }

private:
    static constexpr int kMostFruitless = 5;
    static constexpr const char* kTriedAgain = " It is tried again with the next picture that is wanted.";

    // All below is the thread's.

    void run()
    {
        for (;;) {
            waitForSomething();
            if (quit_)
                return;
            bringUpToDate(false);
            if (worker_)
                listen();
            if (worker_ && worker_->hasEnded())
                replaceWorker();
        }
    }

    void waitForSomething()
    {
        // How late a worker may be noticed to be late.
        const auto pause = std::max(options_.frameTimeout / 10, std::chrono::milliseconds(5));
        wake_.wait(worker_ ? worker_->descriptor() : -1, pause);
    }

    /** Tells the worker what it has not been told, and a new one everything. `anew`: also where nothing has changed. */
    void bringUpToDate(bool anew)
    {
        Unsent unsent;
        Wanted wanted;
        std::vector<std::string> bypassed;
        {
            const std::lock_guard lock(mutex_);
            if (!anew && !unsent_.any())
                return;
            unsent = std::exchange(unsent_, Unsent());
            // Nothing to show, or nobody to see it.
            if (!wanted_.projection || (!worker_ && wanted_.frame.maxWidth <= 0))
                return;
            wanted = wanted_;
            for (LeftOutEffect& effect : bypassed_.in(*wanted_.projection, wanted_.updates))
                bypassed.push_back(std::move(effect.id));
        }
        // A worker cannot be allowed more than it was at first.
        const bool fits = worker_ && (!unsent.load || covers(rules_, *wanted.projection));
        if (!fits) {
            if (!startWorker(*wanted.projection))
                return;
            unsent.load = unsent.frame = unsent.playing = true;
        }
        if (unsent.load) {
            worker_->send(request::Load{*wanted.projection, std::move(bypassed), wanted.revision});
            unsent.updates.clear();
            for (const auto& [key, value] : wanted.updates)
                unsent.updates.push_back({key.first, key.second, value});
        }
        if (!unsent.updates.empty())
            worker_->send(request::Update{std::move(unsent.updates), wanted.revision});
        if (unsent.playing && !wanted.playing)
            worker_->send(request::Pause{});
        if (unsent.frame && wanted.frame.maxWidth > 0)
            worker_->send(wanted.frame);
        if (unsent.playing && wanted.playing)
            worker_->send(request::Play{});
    }

    bool startWorker(const Projection& projection)
    {
        rules_ = {};
        rules_.readable = placesOf(projection);
        rules_.sound = options_.sound;
        worker_.reset(); // the sound device may be had once only
        hasShown_ = false;
        std::string problem;
        worker_ = host_->start(rules_, options_, problem);
        if (!worker_)
            tellUnavailable(problem);
        return worker_ != nullptr;
    }

    void listen()
    {
        while (std::optional<Event> event = worker_->receive(std::chrono::milliseconds(0)))
            std::visit([this](auto& told) { handle(told); }, *event);
    }

    void handle(const event::FrameReady& ready)
    {
        FrameImagePtr picture = worker_->pool().take(ready);
        if (!picture)
            return;
        hasShown_ = true;
        if (callbacks_.frame)
            callbacks_.frame(std::move(picture));
    }

    void handle(const event::Position& position)
    {
        {
            const std::lock_guard lock(mutex_);
            if (wanted_.playing && !unsent_.frame)
                wanted_.frame.frame = position.frame;
        }
        if (callbacks_.position)
            callbacks_.position(position.frame);
    }

    void handle(const event::Playing& playing)
    {
        // The worker's own word that playing ended must not restart it when it is replaced.
        {
            const std::lock_guard lock(mutex_);
            if (!unsent_.playing)
                wanted_.playing = playing.playing;
        }
        tellPlaying(playing.playing);
    }

    void handle(const event::Problem& problem) { tell(problem.problem); }

    /** Not an answer to anything that is asked here. */
    template <class Other>
    void handle(const Other&)
    {
    }

    void replaceWorker()
    {
        const std::optional<event::Ready> ready = worker_->ready();
        const WorkerEnd end = worker_->finish();
        worker_.reset();
        if (!end.wasReady) {
            const bool byChance = !ready && end.way != WorkerEnd::Way::Crashed;
            if (byChance && ++fruitless_ < kMostFruitless)
                return bringUpToDate(true);
            return tellUnavailable(EngineProcess::describeStart(ready, end) + (byChance ? kTriedAgain : ""));
        }
        const bool goesOn = takeBlame(end);
        if (!goesOn)
            return stopPlaying();
        tellIfPaused();
        bringUpToDate(true);
    }

    /** The worker that was to pause is gone, and the next one has nothing to tell of that. */
    void tellIfPaused()
    {
        bool paused = false;
        {
            const std::lock_guard lock(mutex_);
            paused = isPlaying_ && !wanted_.playing;
        }
        if (paused)
            tellPlaying(false);
    }

    /** Whether a new worker can be expected to get further than the last one. Tells of the end. */
    bool takeBlame(const WorkerEnd& end)
    {
        EngineProblem problem;
        bool blamed = false;
        {
            const std::lock_guard lock(mutex_);
            problem = describe(end, *wanted_.projection);
            if (const ProjectedFilter* const effect = effectToBlame(end, *wanted_.projection)) {
                bypassed_.add(*effect, wanted_.updates, end.way == WorkerEnd::Way::Hung);
                blamed = true;
                problem.message += bypassed_.isOff(effect->id)
                                       ? " It failed three times, and stays switched off until you try it again."
                                       : " It is switched off until its settings change.";
            }
        }
        // Without an effect to blame the same frame may well end the next one in the same way.
        fruitless_ = hasShown_ || blamed ? 0 : fruitless_ + 1;
        const bool byChance = end.way == WorkerEnd::Way::Ended || end.way == WorkerEnd::Way::Silent;
        const bool goesOn =
            blamed || (byChance && fruitless_ < kMostFruitless) || (end.way == WorkerEnd::Way::Crashed && hasShown_);
        if (!goesOn)
            problem.message += kTriedAgain;
        else if (!blamed)
            problem.message += " It was started anew, and nothing is lost.";
        tell(problem);
        return goesOn;
    }

    void stopPlaying()
    {
        bool wasPlaying = false;
        {
            const std::lock_guard lock(mutex_);
            wasPlaying = std::exchange(wanted_.playing, false);
        }
        if (wasPlaying || isPlaying_)
            tellPlaying(false);
    }

    void tellUnavailable(const std::string& problem)
    {
        tell({EngineProblem::Kind::EngineEnded, problem, {}, {}});
        stopPlaying();
    }

    void tell(const EngineProblem& problem) const
    {
        if (callbacks_.problem)
            callbacks_.problem(problem);
    }

    void tellPlaying(bool playing)
    {
        isPlaying_ = playing;
        if (callbacks_.playing)
            callbacks_.playing(playing);
    }

    const std::shared_ptr<EngineHost> host_;
    const EngineCallbacks callbacks_;
    const EngineOptions options_;
    WakeUp wake_;
    std::atomic<bool> quit_{false};

    std::mutex mutex_; // guards the three
    Wanted wanted_;
    Unsent unsent_;
    BypassedEffects bypassed_;

    std::unique_ptr<EngineProcess> worker_;
    ContainmentRules rules_;
    bool hasShown_ = false;  // a picture, since it was started
    bool isPlaying_ = false; // as it was told
    int fruitless_ = 0;      // workers in a row that ended from outside before they had shown anything

    std::thread thread_; // last: it uses all of the above
};

Engine::Engine(std::shared_ptr<EngineHost> host, EngineCallbacks callbacks, EngineOptions options)
    : impl_(std::make_unique<Impl>(std::move(host), std::move(callbacks), options))
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

void Engine::retryEffects(const std::string& id)
{
    impl_->retry(id);
}

std::vector<LeftOutEffect> Engine::leftOut() const
{
    return impl_->leftOut();
}

} // namespace workbench

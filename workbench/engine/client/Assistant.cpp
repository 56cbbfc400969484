#include "workbench/engine/client/Assistant.h"

#include <algorithm>
#include <utility>

namespace workbench
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLook{100}; // how late it may be noticed that one has ended

} // namespace

Assistant::Assistant(std::string program)
    : program_(std::move(program))
{
}

Assistant::Asked Assistant::ask(const Reach& reach, const Request& request, std::chrono::milliseconds timeLimit,
                                const std::atomic<bool>* givenUp)
{
    Asked asked;
    // One that was ended from outside says nothing of what it was asked; two in a row do.
    for (int i = 0; i < 2; ++i) {
        asked.problem.clear();
        if (prepare(reach, asked.problem) && !tryToAsk(request, timeLimit, givenUp, asked))
            break;
    }
    return asked;
}

FrameImagePtr Assistant::take(const event::FrameReady& ready)
{
    return process_ ? process_->pool().take(ready) : nullptr;
}

void Assistant::allow(std::vector<EffectDescription> effects)
{
    effects_ = std::move(effects);
    end();
}

/** Sees to it that there is one that can read that. False when there is none; `problem` says why. */
bool Assistant::prepare(const Reach& reach, std::string& problem)
{
    // What a worker may read is settled for good when it starts.
    if (process_ && !process_->hasEnded() && covers(rules_, reach.needed))
        return true;
    process_ = EngineProcess::start(program_, problem);
    if (!process_)
        return false;
    rules_ = {};
    rules_.readable = reach.needed;
    rules_.readable.insert(rules_.readable.end(), reach.soon.begin(), reach.soon.end());
    request::Hello hello;
    hello.rules = rules_;
    hello.effects = effects_;
    process_->send(hello);
    return awaitReady(problem);
}

bool Assistant::awaitReady(std::string& problem)
{
    while (!process_->ready() && !process_->hasEnded())
        process_->receive(std::chrono::milliseconds(20));
    const std::optional<event::Ready> ready = process_->ready();
    if (!process_->hasEnded()) {
        gaps_ = ready->containment.gaps;
        return true;
    }
    problem = EngineProcess::describeStart(ready, process_->finish());
    process_.reset();
    return false;
}

/** Whether it is worth while to ask another one. */
bool Assistant::tryToAsk(const Request& request, std::chrono::milliseconds timeLimit, const std::atomic<bool>* givenUp,
                         Asked& asked)
{
    const Clock::time_point end = Clock::now() + timeLimit;
    process_->send(request);
    while (!process_->hasEnded() && !(givenUp && *givenUp)) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0)
            break;
        asked.answer = process_->receive(std::min(left, kLook));
        if (asked.answer)
            return false;
    }
    asked.died = process_->hasEnded();
    const bool byItself = process_->finish().way == WorkerEnd::Way::Crashed;
    process_.reset();
    return asked.died && !byItself;
}

} // namespace workbench

#pragma once

#include "workbench/engine/client/EngineProcess.h"
#include "workbench/engine/protocol/Messages.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace workbench
{

/**
 * The worker that is asked one thing after the other, and waited for: what a file holds, what is installed, what a
 * frame looks like. It is started when it is needed, and again when it has ended. Used by one thread at a time.
 */
class Assistant
{
public:
    /** `program` is what the worker runs. */
    explicit Assistant(std::string program);

    Assistant(const Assistant&) = delete;
    Assistant& operator=(const Assistant&) = delete;

    struct Asked {
        std::optional<Event> answer; ///< to the request, whatever it is
        std::string problem;         ///< for a person: why it could not be asked at all
        bool died = false;           ///< of what it was asked; otherwise it took too long, or was given up

        /** That answer; null for none, also for one to another question. */
        template <class Answer>
        const Answer* as() const
        {
            return answer ? std::get_if<Answer>(&*answer) : nullptr;
        }
    };

    /** Files and folders. */
    struct Reach {
        std::vector<std::string> needed;
        std::vector<std::string> soon = {}; ///< others that a worker, if one is started, may as well read
    };

    /**
     * Asks a worker that can read what is needed. What ends one for another reason than the request is not
     * told. `givenUp`, when given, ends the waiting once it is true.
     */
    Asked ask(const Reach& reach, const Request& request, std::chrono::milliseconds timeLimit,
              const std::atomic<bool>* givenUp = nullptr);

    /** The picture of an answer that came just now, for as long as somebody wants it. */
    FrameImagePtr take(const event::FrameReady& ready);

    /** Ends the worker, whose memory is better used elsewhere. The next question starts another one. */
    void end() { process_.reset(); }

    /** The effects that may be made of an edit, by workers that are started from now on; none: those installed. */
    void allow(std::vector<EffectDescription> effects);

    /** What of the worker's confinement is not in force, a sentence each; once there was one. */
    const std::vector<std::string>& gaps() const { return gaps_; }

private:
    bool prepare(const Reach& reach, std::string& problem);
    bool awaitReady(std::string& problem);
    bool tryToAsk(const Request& request, std::chrono::milliseconds timeLimit, const std::atomic<bool>* givenUp,
                  Asked& asked);

    const std::string program_;
    std::vector<EffectDescription> effects_;
    std::unique_ptr<EngineProcess> process_;
    ContainmentRules rules_; // of that one
    std::vector<std::string> gaps_;
};

} // namespace workbench

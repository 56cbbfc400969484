#pragma once

#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace Mlt
{
class Filter;
class Service;
} // namespace Mlt

namespace workbench
{

/** Effects whose sound was replaced by silence. Any thread. */
class SilencedEffects
{
public:
    void note(const std::string& effect);

    /** Those that were noted since the last call; each effect only once. */
    std::vector<std::string> take();

private:
    std::mutex mutex_;
    std::set<std::string> known_;
    std::vector<std::string> untold_;
};

/**
 * Attached above an effect: where that makes sound that is no number or infinite, which spoils all that it is mixed
 * with, there is silence instead, and the effect is noted. Null when it cannot be made.
 */
std::unique_ptr<Mlt::Filter> attachSoundGuard(Mlt::Service& service, const std::string& effect,
                                              std::shared_ptr<SilencedEffects> silenced);

} // namespace workbench

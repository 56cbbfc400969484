#include "workbench/engine/worker/graph/SoundGuard.h"

#include "workbench/engine/worker/graph/OwnFilter.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace workbench
{

namespace
{

struct Guard {
    std::string effect;
    std::shared_ptr<SilencedEffects> silenced;
};

int guardedAudio(mlt_frame frame, void** buffer, mlt_audio_format* format, int* frequency, int* channels, int* samples)
{
    const auto filter = static_cast<mlt_filter>(mlt_frame_pop_audio(frame));
    const int error = mlt_frame_get_audio(frame, buffer, format, frequency, channels, samples);
    const bool isFloat = *format == mlt_audio_float || *format == mlt_audio_f32le;
    if (error != 0 || !*buffer || !isFloat)
        return error;
    auto* const begin = static_cast<float*>(*buffer);
    auto* const end = begin + static_cast<std::ptrdiff_t>(*samples) * *channels;
    const auto isSound = [](float value) { return std::isfinite(value); };
    if (!std::all_of(begin, end, isSound)) {
        std::fill(begin, end, 0.0F);
        const Guard& guard = *static_cast<Guard*>(filter->child);
        guard.silenced->note(guard.effect);
    }
    return 0;
}

mlt_frame guardFrame(mlt_filter filter, mlt_frame frame)
{
    mlt_frame_push_audio(frame, filter);
    mlt_frame_push_audio(frame, reinterpret_cast<void*>(guardedAudio));
    return frame;
}

} // namespace

void SilencedEffects::note(const std::string& effect)
{
    const std::lock_guard lock(mutex_);
    if (known_.insert(effect).second)
        untold_.push_back(effect);
}

std::vector<std::string> SilencedEffects::take()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(untold_, {});
}

std::unique_ptr<Mlt::Filter> attachSoundGuard(Mlt::Service& service, const std::string& effect,
                                              std::shared_ptr<SilencedEffects> silenced)
{
    auto owner = makeOwnFilter(Guard{effect, std::move(silenced)}, guardFrame);
    if (owner)
        service.attach(*owner);
    return owner;
}

} // namespace workbench

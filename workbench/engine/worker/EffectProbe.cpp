#include "workbench/engine/worker/EffectProbe.h"

#include "workbench/engine/worker/graph/FrameRendering.h"

#include <mlt++/Mlt.h>

#include <memory>

namespace workbench
{

namespace
{

constexpr int kFrames = 4;

bool renders(Mlt::Profile& profile, Mlt::Producer& producer)
{
    const FrameSize size{profile.width(), profile.height()};
    for (int position = 0; position < kFrames; ++position) {
        if (!renderFrame(producer, position, size))
            return false;
        const std::unique_ptr<Mlt::Frame> frame(producer.get_frame());
        mlt_audio_format format = mlt_audio_s16;
        int frequency = 48000;
        int channels = 2;
        int samples = 1920;
        if (!frame->get_audio(format, frequency, channels, samples))
            return false;
    }
    return true;
}

} // namespace

EffectProbeResult tryEffect(MltSession&, const std::string& service,
                            const std::vector<std::pair<std::string, std::string>>& properties)
{
    Mlt::Profile profile("dv_pal");
    profile.set_width(320);
    profile.set_height(180);
    Mlt::Filter filter(profile, service.c_str());
    if (!filter.is_valid())
        return {EffectProbeResult::Outcome::Missing, "is not installed."};
    for (const auto& [property, value] : properties)
        filter.set(property.c_str(), value.c_str());
    Mlt::Producer producer(profile, "noise:");
    producer.attach(filter);
    return renders(profile, producer) ? EffectProbeResult()
                                      : EffectProbeResult{EffectProbeResult::Outcome::Fails, "gives no picture."};
}

} // namespace workbench

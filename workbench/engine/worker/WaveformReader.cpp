#include "workbench/engine/worker/WaveformReader.h"

#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/EditData.h"
#include "workbench/model/projection/AllowList.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <utility>
#include <vector>

namespace workbench
{

namespace
{

namespace fs = std::filesystem;

// The pieces in which sound is read: long ones cost less, short ones waste less at both ends.
constexpr int kPiecesPerSecond = 10;

constexpr int kMostShown = 8; // channels

std::int16_t toSample(float value)
{
    if (!std::isfinite(value))
        return 0;
    return static_cast<std::int16_t>(std::lround(std::clamp(value, -1.0F, 1.0F) * 32767.0F));
}

/** Collects the peaks of one stretch. */
class Peaks
{
public:
    Peaks(const request::MakeWaveform& wanted, int channels)
        : from_(wanted.from)
        , partsPerSecond_(wanted.parts / wanted.length)
        , parts_(wanted.parts)
    {
        peaks_.channels = std::min(channels, kMostShown);
        const std::size_t ends =
            std::size_t{2} * static_cast<std::size_t>(peaks_.channels) * static_cast<std::size_t>(wanted.parts);
        peaks_.samples.resize(ends);
        for (std::size_t i = 0; i < ends; i += 2) {
            peaks_.samples[i] = kNone;
            peaks_.samples[i + 1] = -kNone;
        }
    }

    /** Sound that begins at a time of the file, channel beside channel. */
    void add(double start, const float* sound, int samples, int channels, int rate)
    {
        for (int i = 0; i < samples; ++i) {
            const double part = std::floor((start + static_cast<double>(i) / rate - from_) * partsPerSecond_);
            if (part < 0.0 || part >= parts_)
                continue;
            const float* const at = sound + static_cast<std::ptrdiff_t>(i) * channels;
            for (int channel = 0; channel < std::min(channels, peaks_.channels); ++channel)
                widen(static_cast<int>(part), channel, toSample(at[channel]));
        }
    }

    /** What no sound was added to is silent. */
    WaveformPeaks take()
    {
        for (std::size_t i = 0; i < peaks_.samples.size(); i += 2)
            if (peaks_.samples[i] > peaks_.samples[i + 1])
                peaks_.samples[i] = peaks_.samples[i + 1] = 0;
        return std::move(peaks_);
    }

private:
    static constexpr std::int16_t kNone = std::numeric_limits<std::int16_t>::max();

    void widen(int part, int channel, std::int16_t sample)
    {
        std::int16_t* const ends = peaks_.samples.data() + std::ptrdiff_t{2} * (part * peaks_.channels + channel);
        ends[0] = std::min(ends[0], sample);
        ends[1] = std::max(ends[1], sample);
    }

    const double from_;
    const double partsPerSecond_;
    const int parts_;
    WaveformPeaks peaks_;
};

/** The place in the file of a stream that is counted among those with sound; -1 when there are not as many. */
int findStream(Mlt::Producer& producer, int wanted)
{
    const int count = producer.get_int("meta.media.nb_streams");
    for (int stream = 0; stream < count; ++stream) {
        const char* const type = producer.get(("meta.media." + std::to_string(stream) + ".stream.type").c_str());
        if (type && std::string_view(type) == "audio" && wanted-- == 0)
            return stream;
    }
    return -1;
}

} // namespace

/** An open stream of a file. What was made first goes last. */
struct WaveformReader::Sound {
    std::string path;
    int stream = 0;
    Mlt::Profile profile;
    std::unique_ptr<Mlt::Producer> producer;
    std::unique_ptr<Mlt::Filter> converter;
    int rate = 0;
    int channels = 0;

    /** What one piece sounds like is added to the peaks. False at a place where there is nothing to hear. */
    bool addPiece(int piece, Peaks& peaks) const
    {
        producer->seek(piece);
        const std::unique_ptr<Mlt::Frame> frame(producer->get_frame());
        if (!frame || !frame->is_valid())
            return false;
        mlt_audio_format format = mlt_audio_f32le;
        int frequency = rate;
        int width = channels;
        int samples = mlt_audio_calculate_frame_samples(kPiecesPerSecond, rate, piece);
        const auto* const sound = static_cast<const float*>(frame->get_audio(format, frequency, width, samples));
        if (!sound || format != mlt_audio_f32le || frequency <= 0 || width <= 0)
            return false;
        peaks.add(static_cast<double>(piece) / kPiecesPerSecond, sound, samples, width, frequency);
        return true;
    }
};

WaveformReader::WaveformReader(std::shared_ptr<MltSession> session)
    : session_(std::move(session))
{
}

WaveformReader::~WaveformReader() = default;

event::WaveformMade WaveformReader::read(const request::MakeWaveform& wanted)
{
    if (!open(wanted.path, wanted.stream))
        return {{}, inQuotes(fs::path(wanted.path).filename().string()) + " has no sound that can be read."};
    Peaks peaks(wanted, sound_->channels);
    const double end = std::min(wanted.from + wanted.length, static_cast<double>(kMostFrames) / kPiecesPerSecond);
    const int last = std::min(sound_->producer->get_length(), static_cast<int>(std::ceil(end * kPiecesPerSecond)));
    for (int piece = static_cast<int>(std::floor(std::min(wanted.from, end) * kPiecesPerSecond)); piece < last; ++piece)
        sound_->addPiece(piece, peaks);
    return {peaks.take(), {}};
}

bool WaveformReader::open(const std::string& path, int stream)
{
    if (sound_ && sound_->path == path && sound_->stream == stream)
        return true;
    sound_.reset();
    std::error_code ignored;
    if (!session_->allowList()->sourceOf(path) || !fs::is_regular_file(path, ignored))
        return false;
    auto sound = std::make_unique<Sound>();
    sound->path = path;
    sound->stream = stream;
    sound->profile.set_frame_rate(kPiecesPerSecond, 1);
    sound->profile.set_explicit(1);
    sound->producer = std::make_unique<Mlt::Producer>(sound->profile, "avformat", path.c_str());
    sound->converter = std::make_unique<Mlt::Filter>(sound->profile, "audioconvert");
    const int index = sound->producer->is_valid() ? findStream(*sound->producer, stream) : -1;
    if (index < 0 || !sound->converter->is_valid())
        return false;
    const std::string codec = "meta.media." + std::to_string(index) + ".codec.";
    sound->rate = sound->producer->get_int((codec + "sample_rate").c_str());
    sound->channels = sound->producer->get_int((codec + "channels").c_str());
    if (sound->rate <= 0 || sound->channels <= 0)
        return false;
    sound->producer->set("video_index", -1);
    sound->producer->set("audio_index", index);
    sound->producer->attach(*sound->converter);
    sound_ = std::move(sound);
    return true;
}

} // namespace workbench

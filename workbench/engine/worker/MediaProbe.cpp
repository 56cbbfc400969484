#include "workbench/engine/worker/MediaProbe.h"

#include "workbench/engine/worker/ContainerCheck.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <mlt++/Mlt.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

namespace workbench
{

namespace
{

namespace fs = std::filesystem;

// Codecs of still pictures, and of the "pictures" that the framework sees in a text file.
constexpr std::array<std::string_view, 9> kStillCodecs = {"png",      "mjpeg", "bmp",   "tiff", "webp",
                                                          "jpeg2000", "gif",   "targa", "ppm"};
constexpr std::array<std::string_view, 2> kTextCodecs = {"ansi", "bintext"};

template <std::size_t size>
bool contains(const std::array<std::string_view, size>& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/** Why a path cannot even be opened; empty when it can. */
std::string checkFile(const fs::path& path)
{
    std::error_code error;
    const std::string shown = inQuotes(path.filename().string());
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return shown + " does not exist.";
    if (fs::is_directory(status))
        return shown + " is a folder.";
    if (access(path.c_str(), R_OK) != 0)
        return shown + " cannot be read: permission is denied.";
    if (!fs::is_regular_file(status))
        return shown + " is no file but a pipe or a device, which has no beginning and no end.";
    if (fs::file_size(path, error) == 0)
        return shown + " is empty.";
    return {};
}

std::string streamText(Mlt::Producer& producer, int stream, const char* what)
{
    const std::string key = "meta.media." + std::to_string(stream) + "." + what;
    const char* value = producer.get(key.c_str());
    return value ? value : "";
}

int streamNumber(Mlt::Producer& producer, int stream, const char* what)
{
    const std::string key = "meta.media." + std::to_string(stream) + "." + what;
    return producer.get_int(key.c_str());
}

/** The size as it is shown. */
void readShape(Mlt::Producer& producer, int stream, MediaInfo& info)
{
    info.width = streamNumber(producer, stream, "codec.width");
    info.height = streamNumber(producer, stream, "codec.height");
    const double aspect = producer.get_double("aspect_ratio"); // of a pixel
    if (aspect >= 0.1 && aspect <= 10.0)
        info.width = static_cast<int>(std::lround(info.width * aspect));
    if (streamNumber(producer, stream, "codec.rotate") % 180 != 0)
        std::swap(info.width, info.height);
}

struct Streams {
    std::string videoCodec;
    bool text = false;
};

Streams readStreams(Mlt::Producer& producer, MediaInfo& info)
{
    Streams streams;
    const int count = producer.get_int("meta.media.nb_streams");
    for (int stream = 0; stream < count; ++stream) {
        const std::string type = streamText(producer, stream, "stream.type");
        const std::string codec = streamText(producer, stream, "codec.name");
        if (type == "video" && !info.hasVideo && !contains(kTextCodecs, codec)) {
            info.hasVideo = true;
            readShape(producer, stream, info);
            streams.videoCodec = codec;
        } else if (type == "audio" && !info.hasAudio) {
            info.hasAudio = true;
            info.audioRate = streamNumber(producer, stream, "codec.sample_rate");
            info.audioChannels = streamNumber(producer, stream, "codec.channels");
        }
        streams.text = streams.text || contains(kTextCodecs, codec);
    }
    return streams;
}

void readRate(Mlt::Producer& producer, MediaInfo& info)
{
    const int numerator = producer.get_int("meta.media.frame_rate_num");
    const int denominator = producer.get_int("meta.media.frame_rate_den");
    if (info.hasVideo && numerator > 0 && denominator > 0) {
        info.fpsNumerator = numerator;
        info.fpsDenominator = denominator;
    }
}

/** The length in the file's own rate, which takes opening it again under a profile of that rate. */
int countFrames(const MediaInfo& info)
{
    Mlt::Profile profile;
    profile.set_frame_rate(info.fpsNumerator, info.fpsDenominator);
    profile.set_explicit(1);
    Mlt::Producer producer(profile, "avformat", info.path.c_str());
    return producer.is_valid() ? producer.get_length() : 0;
}

bool firstFrameDecodes(Mlt::Profile& profile, Mlt::Producer& producer)
{
    producer.seek(0);
    const std::unique_ptr<Mlt::Frame> frame(producer.get_frame());
    return frame && frame->get_int("test_image") == 0 && copyImage(*frame, profile.width(), profile.height());
}

} // namespace

MediaProbeResult probeMedia(MltSession&, const std::string& path)
{
    MediaProbeResult result;
    std::error_code error;
    const fs::path absolute = fs::absolute(fs::path(path), error).lexically_normal();
    result.problem = checkFile(absolute);
    if (!result.problem.empty())
        return result;

    const std::string shown = inQuotes(absolute.filename().string());
    const bool cutShort = checkContainer(absolute.string()) == Completeness::CutShort;
    const std::string cutShortHint = cutShort ? " The file is cut short, as by a copy that broke off." : "";
    Mlt::Profile profile;
    Mlt::Producer producer(profile, "avformat", absolute.c_str());
    MediaInfo info;
    info.path = absolute.string();
    const Streams streams = producer.is_valid() ? readStreams(producer, info) : Streams();
    if (streams.text || (!info.hasVideo && !info.hasAudio)) {
        result.problem = shown + " is not a media file that can be opened." + cutShortHint;
        return result;
    }

    const bool decodes = !info.hasVideo || firstFrameDecodes(profile, producer);
    readRate(producer, info); // known only once a frame was read
    info.frames = countFrames(info);
    const bool stillCodec = contains(kStillCodecs, streams.videoCodec);
    if (stillCodec && info.hasAudio) { // the cover of a recording
        info.hasVideo = false;
        info.width = info.height = 0;
    } else if (stillCodec && (info.frames <= 1 || info.frames == std::numeric_limits<int>::max())) {
        info.frames = 0;
    }
    if (info.hasVideo && !decodes) {
        result.problem = shown + " cannot be decoded." + cutShortHint;
        return result;
    }
    if (cutShort)
        result.warning = shown + " is cut short; its end may be missing.";
    result.info = std::move(info);
    return result;
}

} // namespace workbench

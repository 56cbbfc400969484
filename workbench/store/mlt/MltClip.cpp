#include "workbench/store/mlt/MltClip.h"

#include "workbench/model/projection/ServiceText.h"

#include "workbench/store/json/EditJson.h"

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/Numeric.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <set>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
/** A film that is played faster or slower. */
constexpr const char* kChangedSpeed = "timewarp";

std::string extensionOf(const std::string& path)
{
    std::string extension = fs::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); });
    return extension;
}

bool isPicture(const std::string& service, const std::string& path)
{
    static const std::set<std::string> extensions{".png",  ".jpg", ".jpeg", ".bmp", ".tif", ".tiff", ".tga",
                                                  ".webp", ".svg", ".gif",  ".pgm", ".ppm", ".exr",  ".heic"};
    return service == "qimage" || service == "pixbuf" || extensions.contains(extensionOf(path));
}

bool isSound(const std::string& path)
{
    static const std::set<std::string> extensions{".wav", ".mp3",  ".ogg", ".oga",  ".flac", ".m4a",
                                                  ".aac", ".opus", ".aif", ".aiff", ".wma"};
    return extensions.contains(extensionOf(path));
}

/** Whether the service reads the file that the resource names, rather than making pictures of its own. */
bool readsFile(const std::string& service)
{
    return service.empty() || service.starts_with("avformat") || service == "qimage" || service == "pixbuf" ||
           service == "vorbis" || service == "sndfile" || service == "libdv";
}
} // namespace

std::string validText(const char* text)
{
    std::string copy(text);
    if (std::all_of(copy.begin(), copy.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return copy;
    return std::string(oribund::toUTF8(oribund::toWide(std::string_view(copy))).view());
}

std::string propertyOf(pugi::xml_node element, const char* name)
{
    return validText(element.find_child_by_attribute("property", "name", name).child_value());
}

int frameOf(const std::string& text, const FormatData& format, int fallback)
{
    double units[4] = {0, 0, 0, 0};
    int count = 0;
    for (std::size_t from = 0; count < 4 && from <= text.size();) {
        const std::size_t colon = std::min(text.find(':', from), text.size());
        const auto unit = numberFromService(std::string_view(text).substr(from, colon - from));
        if (!unit)
            return fallback;
        units[count++] = *unit;
        from = colon + 1;
    }
    double frames = units[0];
    if (count > 1) {
        const double seconds = count == 2 ? units[0] * 60 + units[1] : (units[0] * 60 + units[1]) * 60 + units[2];
        frames = std::round(seconds / format.frameLength()) + (count == 4 ? units[3] : 0.0);
    }
    return static_cast<int>(std::clamp<double>(frames, -1, kMostFrames));
}

int firstFrameOf(pugi::xml_node clip, const FormatData& format)
{
    return std::max(frameOf(clip.attribute("in").value(), format, 0), 0);
}

double speedOf(pugi::xml_node clip)
{
    if (propertyOf(clip, "mlt_service") != kChangedSpeed)
        return 1.0;
    const double speed = numberFromService(propertyOf(clip, "warp_speed")).value_or(1.0);
    return speed > 0.0 ? speed : 1.0;
}

MediaInfo mediaOf(pugi::xml_node producer, const fs::path& root, const FormatData& format)
{
    const std::string service = propertyOf(producer, "mlt_service");
    const std::string warped = service == kChangedSpeed ? propertyOf(producer, "warp_resource") : std::string();
    const bool isFile = readsFile(service) || !warped.empty();
    const std::string resource = warped.empty() ? propertyOf(producer, "resource") : warped;
    MediaInfo media;
    media.fpsNumerator = format.fpsNumerator;
    media.fpsDenominator = format.fpsDenominator;
    if (isFile) {
        media.path = resource.starts_with('/') ? resource : (root / resource).lexically_normal().string();
        media.hasVideo = !isSound(media.path) && propertyOf(producer, "video_index") != "-1";
        media.hasAudio = !isPicture(service, media.path) && propertyOf(producer, "audio_index") != "-1";
    } else {
        media.path = service + ":" + resource;
        media.hasVideo = true;
    }
    const std::string length = propertyOf(producer, "length");
    const int last = frameOf(producer.attribute("out").value(), format, kMostFrames - 1);
    if (!isPicture(service, media.path) && isFile)
        media.frames = static_cast<int>(
            std::clamp(frameOf(length, format, last + 1) * speedOf(producer), 1.0, static_cast<double>(kMostFrames)));
    return media;
}

} // namespace workbench

#include "workbench/engine/worker/graph/ClipSource.h"

#include "workbench/engine/worker/graph/EndHold.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace workbench
{

namespace fs = std::filesystem;

/** What it is opened from, and whether that went well. */
struct ClipSource::Origin {
    std::string service;
    std::string resource;
    ProjectedProperties properties;
    int length = 0;
    bool standsIn = false;
    std::function<void(const std::string& problem)> report;
};

namespace
{

constexpr const char* kStandInColour = "color:#ff400810";

/** An open medium, and the filter of ours on it. It stays attached: frames that are still to be rendered pass it. */
struct Opened {
    std::unique_ptr<Mlt::Producer> producer;
    std::unique_ptr<Mlt::Filter> hold;
};

std::string serviceOf(Mlt::Producer& producer)
{
    const char* service = producer.get("mlt_service");
    return service ? service : "";
}

bool isFilm(Mlt::Producer& producer)
{
    return serviceOf(producer).starts_with("avformat") && producer.get_int("video_index") >= 0;
}

/** A producer that makes its picture itself has no length of its own: as long as it is needed. */
void stretch(Mlt::Producer& producer, int frames)
{
    const std::string name = serviceOf(producer);
    if (name.starts_with("avformat") || name == "xml" || producer.get_length() >= frames)
        return;
    producer.set("length", frames);
    producer.set("out", frames - 1);
}

/** Whether a file is there that can be read to its end: a pipe or device may never have one. */
bool isReadable(const std::string& service, const std::string& resource)
{
    if (!resource.starts_with('/'))
        return true; // made, not read
    std::error_code ignored;
    const fs::path file(resource);
    // The name of a row of pictures is none of a file.
    const bool isRow = service == "pixbuf" && file.filename().string().find('%') != std::string::npos;
    return isRow ? fs::is_directory(file.parent_path(), ignored) : fs::is_regular_file(file, ignored);
}

/** Null when it cannot be opened. */
std::unique_ptr<Mlt::Producer> openMedium(Mlt::Profile& profile, const std::string& service,
                                          const std::string& resource)
{
    if (!isReadable(service, resource))
        return nullptr;
    // By way of the loader, as when a saved project is opened: it attaches what converts between formats.
    auto producer = std::make_unique<Mlt::Producer>(profile, (service + ':' + resource).c_str());
    // The module that reads pictures may not be installed; what reads films knows most of them.
    if (!producer->is_valid() && service == "pixbuf")
        producer = std::make_unique<Mlt::Producer>(profile, ("avformat:" + resource).c_str());
    // Where the reader that was named fails, the loader looks for another one.
    if (resource.starts_with('/') && !isFilm(*producer) && !serviceOf(*producer).starts_with(service))
        return nullptr;
    return producer->is_valid() ? std::move(producer) : nullptr;
}

} // namespace

ClipSource::ClipSource(std::shared_ptr<Mlt::Profile> profile, const ProjectedClip& clip,
                       std::shared_ptr<OpenSources> sources, std::function<void(const std::string& problem)> report)
    : profile_(std::move(profile))
    , sources_(std::move(sources))
    , origin_(std::make_shared<Origin>(
          Origin{clip.service, clip.resource, clip.properties, clip.out + 1, false, std::move(report)}))
    , place_(std::make_shared<OpenSources::Place>())
{
    place_->open = [profile = profile_, origin = origin_] { return openOrigin(profile, *origin); };
    producer_ = makeLazyProducer(*profile_, origin_->length, sources_, place_);
}

ClipSource::~ClipSource() = default;

bool ClipSource::serves(const ProjectedClip& clip) const
{
    return !origin_->standsIn && origin_->service == clip.service && origin_->resource == clip.resource &&
           origin_->properties == clip.properties;
}

void ClipSource::stretchTo(const ProjectedClip& clip)
{
    if (clip.out < origin_->length)
        return;
    origin_->length = clip.out + 1;
    producer_->set("length", origin_->length);
    producer_->set("out", clip.out);
    if (place_->source)
        stretch(*place_->source, origin_->length);
}

bool ClipSource::isThere() const
{
    return isReadable(origin_->service, origin_->resource);
}

void ClipSource::open()
{
    sources_->use(place_);
}

Mlt::Producer* ClipSource::opened() const
{
    return place_->source.get();
}

OpenSources::Source ClipSource::openOrigin(const std::shared_ptr<Mlt::Profile>& profile, Origin& origin)
{
    const auto opened = std::make_shared<Opened>();
    opened->producer = openMedium(*profile, origin.service, origin.resource);
    if (!opened->producer) {
        if (!std::exchange(origin.standsIn, true))
            origin.report("Cannot open " + inQuotes(origin.resource) + ".");
        opened->producer = std::make_unique<Mlt::Producer>(*profile, kStandInColour);
    }
    for (const ProjectedProperty& property : origin.properties)
        opened->producer->set(property.name.c_str(), property.value.c_str());
    stretch(*opened->producer, origin.length);
    if (isFilm(*opened->producer))
        opened->hold = attachEndHold(*opened->producer);
    return {opened, opened->producer.get()};
}

} // namespace workbench

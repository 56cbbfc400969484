#include "workbench/engine/worker/graph/LazyProducer.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

namespace workbench
{

namespace
{

/** What the producer carries with it; deleted with it. */
struct Lazy {
    std::shared_ptr<OpenSources> sources;
    std::shared_ptr<OpenSources::Place> place;
};

int lazyFrame(mlt_producer producer, mlt_frame_ptr frame, int index)
{
    const Lazy& lazy = *static_cast<Lazy*>(producer->child);
    const mlt_position position = mlt_producer_position(producer);
    const OpenSources::Source source = lazy.sources->use(lazy.place);
    const mlt_producer opened = source->get_producer();
    mlt_producer_seek(opened, position);
    const int error = mlt_service_get_frame(MLT_PRODUCER_SERVICE(opened), frame, index);
    if (error == 0 && *frame) {
        mlt_properties properties = MLT_FRAME_PROPERTIES(*frame);
        mlt_frame_set_position(*frame, position);
        // Cuts and transitions look here for the producer that they know.
        mlt_properties_set_data(properties, "_producer", MLT_PRODUCER_SERVICE(producer), 0, nullptr, nullptr);
        // The picture is made later, of the source, which may be closed by then.
        mlt_properties_inc_ref(MLT_PRODUCER_PROPERTIES(opened));
        mlt_properties_set_data(properties, "_source", opened, 0, reinterpret_cast<mlt_destructor>(mlt_producer_close),
                                nullptr);
    }
    mlt_producer_prepare_next(producer);
    return error;
}

void lazyClose(void* closed)
{
    const auto producer = static_cast<mlt_producer>(closed);
    delete static_cast<Lazy*>(producer->child);
    producer->child = nullptr;
    producer->close = nullptr;
    mlt_producer_close(producer);
    std::free(producer); // the framework made it so
}

} // namespace

void OpenSources::allow(std::size_t most)
{
    const std::lock_guard lock(mutex_);
    most_ = most;
}

void OpenSources::whenOpening(std::function<void()> tell)
{
    const std::lock_guard lock(mutex_);
    tell_ = std::move(tell);
}

OpenSources::Source OpenSources::use(const std::shared_ptr<Place>& place)
{
    std::vector<Source> closing; // outside the lock
    const std::lock_guard lock(mutex_);
    const auto isPlace = [&place](const std::weak_ptr<Place>& open) { return open.lock() == place; };
    if (!open_.empty() && isPlace(open_.front()))
        return place->source;
    open_.remove_if([&](const std::weak_ptr<Place>& open) { return open.expired() || isPlace(open); });
    if (!place->source) {
        if (tell_)
            tell_();
        place->source = place->open();
    }
    open_.push_front(place);
    for (; open_.size() > most_; open_.pop_back())
        if (const auto last = open_.back().lock())
            closing.push_back(std::exchange(last->source, nullptr));
    return place->source;
}

std::unique_ptr<Mlt::Producer> makeLazyProducer(Mlt::Profile& profile, int length, std::shared_ptr<OpenSources> sources,
                                                std::shared_ptr<OpenSources::Place> place)
{
    const mlt_producer producer = mlt_producer_new(profile.get_profile());
    if (!producer)
        return nullptr;
    producer->child = new Lazy{std::move(sources), std::move(place)};
    producer->get_frame = lazyFrame;
    producer->close = lazyClose;
    producer->close_object = producer;
    auto owner = std::make_unique<Mlt::Producer>(producer);
    mlt_producer_close(producer); // the owner has taken a reference of its own
    owner->set("length", length);
    owner->set("in", 0);
    owner->set("out", length - 1);
    return owner;
}

} // namespace workbench

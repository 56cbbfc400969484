#pragma once

#include <memory>
#include <string>

namespace Mlt
{
class Filter;
class Profile;
class Service;
} // namespace Mlt

namespace workbench
{

/**
 * Knows in which effect the rendering threads are, so that an effect that does not come back can be named.
 *
 * A marker is a filter that does nothing but note that the rendering passes it. With a marker below the first effect of
 * a clip and one above each, the rendering is in an effect whenever the last marker it passed was that effect's.
 */
class FilterTrace
{
public:
    FilterTrace();
    ~FilterTrace();

    FilterTrace(const FilterTrace&) = delete;
    FilterTrace& operator=(const FilterTrace&) = delete;

    /**
     * Attaches a marker above what is attached so far. `effect` is the id of the effect just below it, `next` of the
     * one to be attached after it; both may be empty. Markers keep the trace's state alive.
     */
    std::unique_ptr<Mlt::Filter> attachMarker(Mlt::Service& service, const std::string& effect,
                                              const std::string& next);

    /** Id of the effect that has been at work for longest; empty when none is. Any thread. */
    std::string current() const;

    struct State;

private:
    std::shared_ptr<State> state_;
};

} // namespace workbench

#pragma once

#include <mlt++/Mlt.h>

#include <memory>
#include <utility>

namespace workbench
{

/**
 * A filter of our own, made of a function: `process` is called for each frame, and finds `state` as the filter's child.
 * The state goes with the filter. Null when the framework has no room for it.
 */
template <class State>
std::unique_ptr<Mlt::Filter> makeOwnFilter(State state, mlt_frame (*process)(mlt_filter, mlt_frame))
{
    mlt_filter filter = mlt_filter_new();
    if (!filter)
        return nullptr;
    filter->child = new State(std::move(state));
    filter->process = process;
    filter->close = [](mlt_filter closed) {
        delete static_cast<State*>(closed->child);
        closed->child = nullptr;
        closed->close = nullptr;
        closed->parent.close = nullptr;
        mlt_service_close(&closed->parent);
    };
    auto owner = std::make_unique<Mlt::Filter>(filter);
    mlt_filter_close(filter); // the owner has taken a reference of its own
    return owner;
}

} // namespace workbench

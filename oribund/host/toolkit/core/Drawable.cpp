#include "oribund/host/toolkit/core/Drawable.h"

#include <utility>
#include <vector>

namespace oribund
{

namespace
{

struct Queue {
    unsigned holds = 0;
    bool flushing = false;
    /** In order of asking; null where one was destroyed while it waited. */
    std::vector<Drawable*> pending;
};

Queue& queue()
{
    static Queue theQueue;
    return theQueue;
}

} // namespace

Drawable::~Drawable()
{
    if (pendingIndex_ != kNotPending)
        queue().pending[pendingIndex_] = nullptr;
}

void Drawable::disableRedraws()
{
    ++queue().holds;
}

void Drawable::enableRedraws()
{
    Queue& q = queue();
    if (q.holds > 0 && --q.holds == 0)
        flush();
}

bool Drawable::redrawsEnabled()
{
    return queue().holds == 0;
}

void Drawable::requestRedraw(unsigned changes)
{
    Queue& q = queue();
    if (q.holds == 0 && pendingIndex_ == kNotPending) {
        performRedraw(changes);
        return;
    }
    pendingChanges_ |= changes;
    if (pendingIndex_ == kNotPending) {
        pendingIndex_ = static_cast<std::uint32_t>(q.pending.size());
        q.pending.push_back(this);
    }
}

void Drawable::flush()
{
    Queue& q = queue();
    if (q.flushing)
        return; // an inner edit, made by a repaint: the loop below gets to what it left
    q.flushing = true;
    for (std::size_t i = 0; i < q.pending.size() && q.holds == 0; ++i) {
        Drawable* drawable = q.pending[i];
        if (!drawable)
            continue;
        q.pending[i] = nullptr;
        drawable->pendingIndex_ = kNotPending;
        drawable->performRedraw(std::exchange(drawable->pendingChanges_, 0u));
    }
    q.flushing = false;
    if (q.holds == 0)
        q.pending.clear();
}

} // namespace oribund

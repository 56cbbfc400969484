#include "oribund/host/edit/monitor/EffectChangeRelay.h"

#include <utility>

namespace oribund
{

namespace
{

/** One change that covers two. */
EffectChangeDescription merged(EffectChangeDescription one, const EffectChangeDescription& other)
{
    using Change = EffectChangeDescription;
    constexpr unsigned kRestricting = Change::kSelectionOnly | Change::kTimeOnly | Change::kToldByParams;
    one.flags = ((one.flags | other.flags) & ~kRestricting) | (one.flags & other.flags & kRestricting);
    if (one.code != other.code && (one.flags & Change::kToldByParams)) {
        one.code = EffectChangeCode::KeyframesChanged;
    } else if (one.code != other.code) {
        one.code = EffectChangeCode::None;
        one.flags |= Change::kWholesaleRefresh;
    }
    if (one.effect != other.effect)
        one.effect = IdStamp::wildcard();
    if (one.effect.isWildcard() || one.param != other.param)
        one.param = {};
    return one;
}

} // namespace

EffectChangeRelay::Hold::Hold(EffectChangeRelay& relay)
    : relay_(relay)
{
    ++relay_.holds_;
}

EffectChangeRelay::Hold::~Hold()
{
    if (--relay_.holds_ > 0 || !relay_.gathered_)
        return;
    const EffectChangeDescription change = *std::exchange(relay_.gathered_, std::nullopt);
    relay_.changes_.notify(change);
}

void EffectChangeRelay::tell(const EffectChangeDescription& change)
{
    if (holds_ == 0)
        changes_.notify(change);
    else
        gathered_ = gathered_ ? merged(*gathered_, change) : change;
}

} // namespace oribund

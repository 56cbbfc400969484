#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/effects/EffectChange.h"

#include <functional>
#include <memory>
#include <vector>

namespace oribund
{

class EffectInstance;

/**
 * Follows the parameters that an effect has when this is made, in all that can change about them: what a host needs to
 * tell of changes, whoever makes them. To be made anew when the effect has other parameters. User-interface thread.
 */
class ORIBUND_API EffectWatch
{
public:
    /** Each change names the effect and the parameter. */
    using Told = std::function<void(const EffectChangeDescription&)>;

    EffectWatch(const EffectInstance& effect, Told told);
    ~EffectWatch();

    EffectWatch(EffectWatch&&) noexcept;
    EffectWatch& operator=(EffectWatch&&) noexcept;

private:
    class ParamWatch;
    template <class P>
    class WatchOf;

    std::vector<std::unique_ptr<ParamWatch>> watches_;
};

} // namespace oribund

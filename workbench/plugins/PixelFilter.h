#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace workbench
{

/** Pixels as they lie in memory: red, green, blue and alpha, a byte each. */
using Pixels = std::span<const std::uint32_t>;

/** Changes each pixel by itself, wherever it lies. Never changes after it was made: any thread. */
class PixelFilter
{
public:
    virtual ~PixelFilter() = default;

    /** `to` has as many pixels as `from`; the two may be one. Alpha stays. */
    virtual void change(Pixels from, std::span<std::uint32_t> to) const = 0;
};

/** A number that a host sets, from 0 to 1; a host may go beyond. */
struct Setting {
    const char* name;
    double standard;
    const char* explanation;
    bool isSwitch = false; ///< on from 0.5
};

struct PluginDescription {
    const char* name;
    const char* explanation;
    std::span<const Setting> settings;
};

// What a plug-in is made of: each of them defines these two.

const PluginDescription& pluginDescription();

/** `settings` has a finite number for each setting that is described. */
std::shared_ptr<const PixelFilter> makePixelFilter(std::span<const double> settings);

} // namespace workbench

#include "workbench/plugins/Frei0rInterface.h"
#include "workbench/plugins/PixelFilter.h"

#include <cmath>
#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

#define EXPORTED __attribute__((visibility("default")))

namespace
{

using namespace workbench;

/** One use of the plug-in. Its host may set it in one thread while pictures are made in others. */
class Instance
{
public:
    explicit Instance(std::size_t pixels)
        : pixels_(pixels)
    {
        for (const Setting& setting : pluginDescription().settings)
            settings_.push_back(setting.standard);
    }

    void set(int index, double value)
    {
        const std::lock_guard lock(mutex_);
        if (!isSetting(index) || !std::isfinite(value))
            return;
        double& setting = settings_[static_cast<std::size_t>(index)];
        if (std::exchange(setting, value) != value)
            filter_.reset();
    }

    double get(int index)
    {
        const std::lock_guard lock(mutex_);
        return isSetting(index) ? settings_[static_cast<std::size_t>(index)] : 0.0;
    }

    void update(const std::uint32_t* from, std::uint32_t* to) { filter()->change({from, pixels_}, {to, pixels_}); }

private:
    bool isSetting(int index) const { return index >= 0 && index < static_cast<int>(settings_.size()); }

    /** One with the settings of now; who has it keeps it whatever is set meanwhile. */
    std::shared_ptr<const PixelFilter> filter()
    {
        const std::lock_guard lock(mutex_);
        if (!filter_)
            filter_ = makePixelFilter(settings_);
        return filter_;
    }

    const std::size_t pixels_;
    std::mutex mutex_;
    std::vector<double> settings_;
    std::shared_ptr<const PixelFilter> filter_;
};

Instance& instanceOf(void* instance)
{
    return *static_cast<Instance*>(instance);
}

} // namespace

extern "C" {

EXPORTED int f0r_init()
{
    return 1;
}

EXPORTED void f0r_deinit() {}

EXPORTED void f0r_get_plugin_info(frei0r::PluginInfo* info)
{
    const PluginDescription& about = pluginDescription();
    *info = {about.name,
             "Oribund",
             frei0r::kFilter,
             frei0r::kRGBA,
             frei0r::kInterfaceVersion,
             1,
             0,
             static_cast<int>(about.settings.size()),
             about.explanation};
}

EXPORTED void f0r_get_param_info(frei0r::ParameterInfo* info, int index)
{
    const Setting& setting = pluginDescription().settings[static_cast<std::size_t>(index)];
    *info = {setting.name, setting.isSwitch ? frei0r::kSwitch : frei0r::kNumber, setting.explanation};
}

EXPORTED void* f0r_construct(unsigned width, unsigned height)
{
    return new Instance(std::size_t{width} * height);
}

EXPORTED void f0r_destruct(void* instance)
{
    delete static_cast<Instance*>(instance);
}

EXPORTED void f0r_set_param_value(void* instance, void* value, int index)
{
    instanceOf(instance).set(index, *static_cast<const double*>(value));
}

EXPORTED void f0r_get_param_value(void* instance, void* value, int index)
{
    *static_cast<double*>(value) = instanceOf(instance).get(index);
}

EXPORTED void f0r_update(void* instance, double, const std::uint32_t* from, std::uint32_t* to)
{
    instanceOf(instance).update(from, to);
}
}

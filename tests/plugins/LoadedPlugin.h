#pragma once

#include "workbench/plugins/Frei0rInterface.h"

#include <dlfcn.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace workbench
{

/** A plug-in as a host has it: by the names of its functions. */
class LoadedPlugin
{
public:
    explicit LoadedPlugin(const std::string& file)
        : library_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL))
    {
        if (!library_)
            throw std::runtime_error(dlerror());
        call<int()>("f0r_init")();
        call<void(frei0r::PluginInfo*)>("f0r_get_plugin_info")(&info);
    }

    template <class Function>
    Function* call(const char* name) const
    {
        return reinterpret_cast<Function*>(dlsym(library_, name));
    }

    frei0r::PluginInfo info{};

private:
    void* library_; // stays loaded
};

/** One use of a plug-in. */
class PluginUse
{
public:
    PluginUse(const LoadedPlugin& plugin, unsigned width, unsigned height)
        : plugin_(plugin)
        , update_(plugin.call<void(void*, double, const std::uint32_t*, std::uint32_t*)>("f0r_update"))
        , set_(plugin.call<void(void*, void*, int)>("f0r_set_param_value"))
        , instance_(plugin.call<void*(unsigned, unsigned)>("f0r_construct")(width, height))
    {
    }

    ~PluginUse() { plugin_.call<void(void*)>("f0r_destruct")(instance_); }

    PluginUse(const PluginUse&) = delete;
    PluginUse& operator=(const PluginUse&) = delete;

    void set(int index, double value) { set_(instance_, &value, index); }

    double get(int index) const
    {
        double value = 0.0;
        plugin_.call<void(void*, void*, int)>("f0r_get_param_value")(instance_, &value, index);
        return value;
    }

    void update(const std::vector<std::uint32_t>& from, std::vector<std::uint32_t>& to) const
    {
        update_(instance_, 0.0, from.data(), to.data());
    }

private:
    const LoadedPlugin& plugin_;
    void (*update_)(void*, double, const std::uint32_t*, std::uint32_t*);
    void (*set_)(void*, void*, int);
    void* instance_;
};

} // namespace workbench

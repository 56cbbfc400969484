// An effect in the way of the frei0r plug-ins that does nothing while its one parameter is below a half, and ends its
// process above that.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#define EXPORTED __attribute__((visibility("default")))

namespace
{

struct PluginInfo {
    const char* name;
    const char* author;
    int type; // 0: a filter
    int colours;
    int version;
    int major;
    int minor;
    int parameters;
    const char* explanation;
};

struct ParameterInfo {
    const char* name;
    int type; // 1: a number
    const char* explanation;
};

struct Effect {
    std::size_t bytes;
    double parameter;
};

} // namespace

extern "C" {

EXPORTED int f0r_init()
{
    return 1;
}

EXPORTED void f0r_deinit() {}

EXPORTED void f0r_get_plugin_info(PluginInfo* info)
{
    *info = {"Crashing", "Oribund", 0, 1, 1, 0, 1, 1, "Ends its process"};
}

EXPORTED void f0r_get_param_info(ParameterInfo* info, int)
{
    *info = {"Amount", 1, "Above a half it crashes"};
}

EXPORTED void* f0r_construct(unsigned width, unsigned height)
{
    return new Effect{std::size_t{4} * width * height, 0.0};
}

EXPORTED void f0r_destruct(void* effect)
{
    delete static_cast<Effect*>(effect);
}

EXPORTED void f0r_set_param_value(void* effect, void* value, int)
{
    static_cast<Effect*>(effect)->parameter = *static_cast<double*>(value);
}

EXPORTED void f0r_get_param_value(void* effect, void* value, int)
{
    *static_cast<double*>(value) = static_cast<Effect*>(effect)->parameter;
}

EXPORTED void f0r_update(void* effect, double, const std::uint32_t* in, std::uint32_t* out)
{
    const auto* self = static_cast<Effect*>(effect);
    if (self->parameter > 0.5)
        std::abort();
    std::memcpy(out, in, self->bytes);
}
}

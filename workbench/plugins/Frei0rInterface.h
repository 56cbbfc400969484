#pragma once

#include <cstdint>

/**
 * What a host of frei0r plug-ins expects of one, version 1 of the interface: these types, and the functions that
 * Frei0rEntry.cpp exports. Texts belong to the plug-in and outlive it.
 */
namespace workbench::frei0r
{

inline constexpr int kInterfaceVersion = 1;
inline constexpr int kFilter = 0;
inline constexpr int kRGBA = 1; ///< four bytes a pixel, in memory in this order

inline constexpr int kSwitch = 0; ///< a double; on from 0.5
inline constexpr int kNumber = 1; ///< a double from 0 to 1

struct PluginInfo {
    const char* name;
    const char* author;
    int type;
    int colours;
    int interfaceVersion;
    int major;
    int minor;
    int parameters;
    const char* explanation;
};

struct ParameterInfo {
    const char* name;
    int type;
    const char* explanation;
};

} // namespace workbench::frei0r

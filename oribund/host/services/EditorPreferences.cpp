#include "oribund/host/services/EditorPreferences.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/services/Host.h"

#include <cmath>
#include <limits>

namespace oribund
{

namespace
{

bool isWhole(double value)
{
    constexpr double kLow = std::numeric_limits<int>::min();
    constexpr double kHigh = std::numeric_limits<int>::max();
    return std::trunc(value) == value && value >= kLow && value <= kHigh;
}

std::optional<double> asNumber(const PreferenceValue& value)
{
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? 1.0 : 0.0;
    if (const auto* whole = std::get_if<int>(&value))
        return *whole;
    if (const auto* real = std::get_if<double>(&value))
        return *real;
    return reinterpretValType<double>(std::get<String>(value));
}

String asText(const PreferenceValue& value)
{
    if (const auto* text = std::get_if<String>(&value))
        return *text;
    return reinterpretValType<String>(*asNumber(value));
}

} // namespace

EditorPreferences::~EditorPreferences() = default;

bool EditorPreferences::getPreference(const String& key, bool fallback) const
{
    const auto stored = read(key);
    const auto number = stored ? asNumber(*stored) : std::nullopt;
    return number ? *number != 0.0 : fallback;
}

int EditorPreferences::getPreference(const String& key, int fallback) const
{
    const auto stored = read(key);
    const auto number = stored ? asNumber(*stored) : std::nullopt;
    return number && isWhole(*number) ? static_cast<int>(*number) : fallback;
}

double EditorPreferences::getPreference(const String& key, double fallback) const
{
    const auto stored = read(key);
    return stored ? asNumber(*stored).value_or(fallback) : fallback;
}

String EditorPreferences::getPreference(const String& key, const String& fallback) const
{
    const auto stored = read(key);
    return stored ? asText(*stored) : fallback;
}

WString EditorPreferences::getPreference(const String& key, const WString& fallback) const
{
    const auto stored = read(key);
    return stored ? toWide(asText(*stored)) : fallback;
}

EditorPreferences& prefs()
{
    return Host::current().preferences();
}

} // namespace oribund

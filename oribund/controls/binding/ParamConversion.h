#pragma once

#include "oribund/host/base/Angle.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/ListParam.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/base/VideoInputParam.h"
#include "oribund/host/base/text/NumberFormat.h"

#include <optional>
#include <type_traits>

namespace oribund
{

/**
 * How a value that an accessor reads and writes (`V`) is shown by a widget (`T`), and back. `current` is the value at
 * the time of the edit; a result without a value is refused.
 */
template <class T, class V>
struct ParamConversion;

template <class T>
struct ParamConversion<T, T> {
    static T toWidget(const T& value) { return value; }

    static std::optional<T> toParam(const T& shown, const T&) { return shown; }
};

/** A number as a widget shows it; as text with all its digits, so that what is read back is the same number. */
template <class T>
T shownNumber(double number)
{
    if constexpr (std::is_same_v<T, WString>)
        return NumberFormat::plain(number);
    else
        return reinterpretValType<T>(number);
}

/** An angle as its number of degrees, or as text of that number. */
template <class T>
struct ParamConversion<T, Angle> {
    static T toWidget(const Angle& angle) { return shownNumber<T>(angle.degrees); }

    static std::optional<Angle> toParam(const T& shown, const Angle&)
    {
        const std::optional<double> degrees = reinterpretValType<double>(shown);
        return degrees ? std::optional<Angle>(Angle{*degrees}) : std::nullopt;
    }
};

/** A choice as the index of its item. One that is nothing selected shows as an index outside every list. */
template <class Choice>
struct ChoiceConversion {
    static unsigned toWidget(const Choice& choice) { return static_cast<unsigned>(choice.selectedIndex()); }

    static std::optional<Choice> toParam(unsigned index, Choice current)
    {
        return current.select(static_cast<int>(index)) ? std::optional<Choice>(current) : std::nullopt;
    }
};

template <class X>
struct ParamConversion<unsigned, ListParam<X>> : ChoiceConversion<ListParam<X>> {
};

template <>
struct ParamConversion<unsigned, VideoInputParam> : ChoiceConversion<VideoInputParam> {
};

} // namespace oribund

#pragma once

#include "oribund/host/effects/curves/Graph1dBase.h"
#include "oribund/host/effects/params/ParamValue.h"

#include <array>
#include <cstddef>
#include <vector>

namespace oribund
{

/** What a type of parameter value is made of: `kChannels` numbers, or none if it cannot be animated. */
template <class P>
struct ParamTraits {
    static constexpr std::size_t kChannels = 0;
};

template <>
struct ParamTraits<double> {
    static constexpr std::size_t kChannels = 1;

    static constexpr std::array<double, 1> split(double value) noexcept { return {value}; }

    static constexpr double join(const std::array<double, 1>& numbers) noexcept { return numbers[0]; }
};

template <>
struct ParamTraits<Angle> {
    static constexpr std::size_t kChannels = 1;

    static constexpr std::array<double, 1> split(Angle value) noexcept { return {value.degrees}; }

    static constexpr Angle join(const std::array<double, 1>& numbers) noexcept { return Angle{numbers[0]}; }
};

template <>
struct ParamTraits<ColourData> {
    static constexpr std::size_t kChannels = 4;

    static constexpr std::array<double, 4> split(const ColourData& value) noexcept { return value.values; }

    static constexpr ColourData join(const std::array<double, 4>& numbers) noexcept { return ColourData{numbers}; }
};

template <>
struct ParamTraits<Vector2d> {
    static constexpr std::size_t kChannels = 2;

    static constexpr std::array<double, 2> split(const Vector2d& value) noexcept { return {value.x, value.y}; }

    static constexpr Vector2d join(const std::array<double, 2>& numbers) noexcept { return {numbers[0], numbers[1]}; }
};

template <class P>
inline constexpr bool isNumericParam = ParamTraits<P>::kChannels > 0;

/** Whether the value is a choice between items, of which choiceLabels() tells the texts. */
template <class P>
inline constexpr bool isChoiceParam = requires(const P& value)
{
    value.selectedIndex();
};

/** Whether every number of the value is one that a graph takes; always true of values without numbers. */
template <class P>
bool usableParamValue(const P& value) noexcept
{
    if constexpr (isNumericParam<P>) {
        for (const double number : ParamTraits<P>::split(value)) {
            if (!Graph1dBase::usableValue(number))
                return false;
        }
    }
    return true;
}

/** The texts of a choice's items, in their order. */
template <class X>
std::vector<UIString> choiceLabels(const ListParam<X>& list)
{
    std::vector<UIString> labels;
    for (const auto& item : list.items())
        labels.push_back(item.label);
    return labels;
}

inline std::vector<UIString> choiceLabels(const VideoInputParam& inputs)
{
    const auto names = inputs.inputNames();
    return {names.begin(), names.end()};
}

/** One number of a value; 0 where there is no such channel. */
inline double channelOf(const ParamValue& value, std::size_t channel)
{
    return std::visit(
        [channel]<class P>(const P& typed) {
            if constexpr (isNumericParam<P>) {
                if (channel < ParamTraits<P>::kChannels)
                    return ParamTraits<P>::split(typed)[channel];
            }
            return 0.0;
        },
        value);
}

/** Replaces one number of a value. A value that has no such channel stays. */
inline void setChannel(ParamValue& value, std::size_t channel, double number)
{
    std::visit(
        [&]<class P>(P& typed) {
            if constexpr (isNumericParam<P>) {
                auto numbers = ParamTraits<P>::split(typed);
                if (channel < numbers.size())
                    numbers[channel] = number;
                typed = ParamTraits<P>::join(numbers);
            }
        },
        value);
}

} // namespace oribund

#pragma once

#include "workbench/engine/protocol/MessageFields.h"
#include "workbench/engine/protocol/Wire.h"

#include <array>
#include <chrono>
#include <optional>
#include <random>
#include <utility>
#include <variant>

namespace workbench
{

/** Fills a message, every field of it, with what can be sent: a visitor of wire::fields(). */
class RandomMessage
{
public:
    explicit RandomMessage(unsigned seed)
        : random_(seed)
    {
    }

    template <class... Values>
    void operator()(Values&... values)
    {
        (fill(values), ...);
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }

    template <class Value>
    void fill(Value& value)
    {
        if constexpr (std::is_same_v<Value, bool>)
            value = below(2) != 0;
        else if constexpr (std::is_enum_v<Value>)
            value = static_cast<Value>(below(static_cast<std::size_t>(wire::lastOf(value)) + 1));
        else if constexpr (std::is_floating_point_v<Value>)
            value = rising_ += 0.1; // a minimum comes before its maximum
        else if constexpr (WireNumber<Value>)
            value = static_cast<Value>(16); // within every limit
        else
            wire::fields(*this, value);
    }

    void fill(std::string& text)
    {
        text.clear();
        for (std::size_t left = below(6); left > 0; --left)
            text += static_cast<char>(random_());
    }

    void fill(std::chrono::milliseconds& time) { time = std::chrono::milliseconds(below(100'000)); }

    template <class Value>
    void fill(std::vector<Value>& values)
    {
        values.resize(std::is_same_v<Value, ListItem> ? 17 : below(4));
        for (Value& value : values)
            fill(value);
    }

    template <class Value, std::size_t size>
    void fill(std::array<Value, size>& values)
    {
        for (Value& value : values)
            fill(value);
    }

    template <class First, class Second>
    void fill(std::pair<First, Second>& values)
    {
        fill(values.first);
        fill(values.second);
    }

    template <class Value>
    void fill(std::optional<Value>& value)
    {
        value.reset();
        if (below(2) != 0)
            fill(value.emplace());
    }

    template <class... Choices>
    void fill(std::variant<Choices...>& value)
    {
        choose(value, below(sizeof...(Choices)), std::index_sequence_for<Choices...>());
    }

    template <class... Choices, std::size_t... indices>
    void choose(std::variant<Choices...>& value, std::size_t index, std::index_sequence<indices...>)
    {
        ((indices == index ? fill(value.template emplace<indices>()) : void()), ...);
    }

    std::mt19937 random_;
    double rising_ = 0.0;
};

} // namespace workbench

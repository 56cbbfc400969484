#include "workbench/engine/protocol/MessageCodec.h"

#include "workbench/engine/protocol/MessageFields.h"
#include "workbench/engine/protocol/Wire.h"

#include <array>
#include <chrono>
#include <cmath>
#include <type_traits>
#include <utility>

namespace workbench
{

namespace
{

constexpr std::int64_t kLongestWait = 86'400'000; // ms

/** The visitor that writes. */
class MessageWriter
{
public:
    template <class... Values>
    void operator()(const Values&... values)
    {
        (put(values), ...);
    }

    std::vector<std::uint8_t> take() { return wire_.take(); }

private:
    template <class Value>
    void put(const Value& value)
    {
        if constexpr (std::is_same_v<Value, bool> || std::is_enum_v<Value>)
            wire_.number(static_cast<std::uint8_t>(value));
        else if constexpr (WireNumber<Value>)
            wire_.number(value);
        else
            wire::fields(*this, value);
    }

    void put(const std::string& text) { wire_.text(text); }

    void put(std::chrono::milliseconds time) { wire_.number(static_cast<std::int64_t>(time.count())); }

    template <class Value>
    void put(const std::vector<Value>& values)
    {
        wire_.count(values.size());
        for (const Value& value : values)
            put(value);
    }

    template <class Value, std::size_t size>
    void put(const std::array<Value, size>& values)
    {
        for (const Value& value : values)
            put(value);
    }

    template <class First, class Second>
    void put(const std::pair<First, Second>& values)
    {
        put(values.first);
        put(values.second);
    }

    template <class Value>
    void put(const std::optional<Value>& value)
    {
        put(value.has_value());
        if (value)
            put(*value);
    }

    template <class... Choices>
    void put(const std::variant<Choices...>& value)
    {
        wire_.number(static_cast<std::uint8_t>(value.index()));
        std::visit([this](const auto& choice) { this->put(choice); }, value);
    }

    WireWriter wire_;
};

/** The visitor that reads, in the same order. */
class MessageReader
{
public:
    explicit MessageReader(std::span<const std::uint8_t> bytes)
        : wire_(bytes)
    {
    }

    template <class... Values>
    void operator()(Values&... values)
    {
        (get(values), ...);
    }

    bool complete() const { return wire_.complete(); }

private:
    void require(bool holds)
    {
        if (!holds)
            wire_.fail();
    }

    /** One of `count`; 0 when it is none. */
    std::uint8_t choice(std::size_t count)
    {
        const auto value = wire_.number<std::uint8_t>();
        require(value < count);
        return value < count ? value : 0;
    }

    template <class Value>
    void get(Value& value)
    {
        if constexpr (std::is_same_v<Value, bool>) {
            value = choice(2) != 0;
        } else if constexpr (std::is_enum_v<Value>) {
            value = static_cast<Value>(choice(static_cast<std::size_t>(wire::lastOf(Value())) + 1));
        } else if constexpr (WireNumber<Value>) {
            value = wire_.number<Value>();
            if constexpr (std::is_floating_point_v<Value>)
                require(std::isfinite(value));
        } else {
            wire::fields(*this, value);
            require(wire_.failed() || wire::inRange(value));
        }
    }

    void get(std::string& text) { text = wire_.text(); }

    void get(std::chrono::milliseconds& time)
    {
        const auto count = wire_.number<std::int64_t>();
        require(count >= 0 && count <= kLongestWait);
        time = std::chrono::milliseconds(count);
    }

    template <class Value>
    void get(std::vector<Value>& values)
    {
        values.clear();
        for (std::size_t left = wire_.count(); left > 0 && !wire_.failed(); --left)
            get(values.emplace_back());
    }

    template <class Value, std::size_t size>
    void get(std::array<Value, size>& values)
    {
        for (Value& value : values)
            get(value);
    }

    template <class First, class Second>
    void get(std::pair<First, Second>& values)
    {
        get(values.first);
        get(values.second);
    }

    template <class Value>
    void get(std::optional<Value>& value)
    {
        value.reset();
        if (choice(2) != 0)
            get(value.emplace());
    }

    template <class... Choices>
    void get(std::variant<Choices...>& value)
    {
        getChoice(value, choice(sizeof...(Choices)), std::index_sequence_for<Choices...>());
    }

    template <class... Choices, std::size_t... indices>
    void getChoice(std::variant<Choices...>& value, std::size_t index, std::index_sequence<indices...>)
    {
        ((indices == index ? get(value.template emplace<indices>()) : void()), ...);
    }

    WireReader wire_;
};

template <class Message>
std::vector<std::uint8_t> write(const Message& message)
{
    MessageWriter writer;
    writer(message);
    return writer.take();
}

template <class Message>
std::optional<Message> read(std::span<const std::uint8_t> bytes)
{
    Message message;
    MessageReader reader(bytes);
    reader(message);
    return reader.complete() ? std::optional(std::move(message)) : std::nullopt;
}

} // namespace

std::vector<std::uint8_t> encode(const Request& request)
{
    return write(request);
}

std::vector<std::uint8_t> encode(const Event& event)
{
    return write(event);
}

std::optional<Request> decodeRequest(std::span<const std::uint8_t> bytes)
{
    return read<Request>(bytes);
}

std::optional<Event> decodeEvent(std::span<const std::uint8_t> bytes)
{
    return read<Event>(bytes);
}

} // namespace workbench

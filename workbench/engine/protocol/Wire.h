#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace workbench
{

/** What has a fixed size on the wire. */
template <class T>
concept WireNumber = std::integral<T> || std::floating_point<T>;

/** Writes a message: numbers with the lowest byte first, texts and lists after the count of what is in them. */
class WireWriter
{
public:
    template <WireNumber Number>
    void number(Number value)
    {
        const std::uint64_t bits = toBits(value);
        for (std::size_t byte = 0; byte < sizeof(Number); ++byte)
            bytes_.push_back(static_cast<std::uint8_t>(bits >> (8 * byte)));
    }

    void count(std::size_t value) { number(static_cast<std::uint32_t>(value)); }

    void text(std::string_view value);

    std::vector<std::uint8_t> take() { return std::move(bytes_); }

private:
    template <class Number>
    static std::uint64_t toBits(Number value)
    {
        if constexpr (std::is_same_v<Number, double>)
            return std::bit_cast<std::uint64_t>(value);
        else
            return static_cast<std::uint64_t>(value);
    }

    std::vector<std::uint8_t> bytes_;
};

/**
 * Reads a message that anybody may have written. Once something was wrong it stays failed, and all that is read from
 * then on is zero or empty: who reads asks once, at the end.
 *
 * No memory is taken on the word of a number that was read: no text or list is longer than what is left to read.
 */
class WireReader
{
public:
    /** The bytes outlive the reader. */
    explicit WireReader(std::span<const std::uint8_t> bytes)
        : rest_(bytes)
    {
    }

    template <WireNumber Number>
    Number number()
    {
        std::uint64_t bits = 0;
        std::size_t byte = 0;
        for (const std::uint8_t value : next(sizeof(Number)))
            bits |= static_cast<std::uint64_t>(value) << (8 * byte++);
        if constexpr (std::is_same_v<Number, double>)
            return std::bit_cast<double>(bits);
        else
            return static_cast<Number>(bits);
    }

    /** Of things that each take a byte at least. */
    std::size_t count();

    std::string text();

    void fail();

    bool failed() const { return failed_; }

    /** Whether all of it was read, and nothing was wrong. */
    bool complete() const { return !failed_ && rest_.empty(); }

private:
    /** Empty when there are not as many. */
    std::span<const std::uint8_t> next(std::size_t size);

    std::span<const std::uint8_t> rest_;
    bool failed_ = false;
};

} // namespace workbench

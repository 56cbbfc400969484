#pragma once

#include "workbench/system/Descriptor.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

namespace workbench
{

/**
 * Memory that two processes have in common. The one that makes it hands the descriptor on to the one that it starts.
 * Its size is sealed: nobody can take away from under the other what it has mapped.
 */
class SharedMemory
{
public:
    /** Zeroes. Pages take memory once they are written to. `name` is for those who look at the process. Empty when the
        system has none left. */
    static std::optional<SharedMemory> create(const char* name, std::size_t size);

    /** That of the other process. Empty when there is less than `leastSize`, or it could still shrink. */
    static std::optional<SharedMemory> map(Descriptor descriptor, std::size_t leastSize);

    ~SharedMemory();

    SharedMemory(SharedMemory&& other) noexcept
        : descriptor_(std::move(other.descriptor_))
        , bytes_(std::exchange(other.bytes_, {}))
    {
    }

    SharedMemory& operator=(SharedMemory&&) = delete;

    int descriptor() const { return descriptor_.number(); }

    /** Begins at a page. */
    std::span<std::uint8_t> bytes() const { return bytes_; }

private:
    SharedMemory(Descriptor descriptor, std::span<std::uint8_t> bytes)
        : descriptor_(std::move(descriptor))
        , bytes_(bytes)
    {
    }

    Descriptor descriptor_;
    std::span<std::uint8_t> bytes_;
};

} // namespace workbench

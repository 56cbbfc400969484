#pragma once

#include "workbench/plugins/PixelFilter.h"

#include <algorithm>
#include <array>
#include <cstddef>

/**
 * Before a function: it is compiled twice, once for processors that work on eight numbers at a time, and the one that
 * fits is taken when the plug-in is loaded.
 */
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) &&               \
    !defined(__SANITIZE_THREAD__)
#define VECTOR_CODE __attribute__((target_clones("avx2", "default")))
#else
#define VECTOR_CODE
#endif

/** What a loop calls has to be part of it before it can work on several pixels at once. */
#define IN_LOOP __attribute__((always_inline)) inline

namespace workbench
{

/** Gives each pixel what `filter.of(pixel)` makes of it. `from` and `to` may be one. */
template <class Filter>
IN_LOOP void changeBlocks(const Filter& original, Pixels from, std::span<std::uint32_t> to)
{
    constexpr std::size_t kBlock = 512;
    const Filter filter = original; // own copies: nothing that is written can be what is read
    std::array<std::uint32_t, kBlock> before;
    std::array<std::uint32_t, kBlock> after;
    for (std::size_t start = 0; start < from.size(); start += kBlock) {
        const std::size_t count = std::min(kBlock, from.size() - start);
        std::copy_n(from.begin() + static_cast<std::ptrdiff_t>(start), count, before.begin());
        for (std::size_t i = 0; i < count; ++i)
            after[i] = filter.of(before[i]);
        std::copy_n(after.begin(), count, to.begin() + static_cast<std::ptrdiff_t>(start));
    }
}

} // namespace workbench

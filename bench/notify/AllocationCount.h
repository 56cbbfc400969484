#pragma once

#include <cstddef>

namespace bench
{

/** How often this program has called the global operator new; the difference around a loop is the loop's. */
std::size_t allocationCount() noexcept;

} // namespace bench

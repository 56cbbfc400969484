#pragma once

#include <vector>

namespace oribund
{

/** The list by which the host's interfaces hand over several things. */
template <class T>
using Vector = std::vector<T>;

} // namespace oribund

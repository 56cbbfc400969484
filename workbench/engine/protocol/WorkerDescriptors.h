#pragma once

namespace workbench
{

// The open files that a worker finds when it starts, beside the usual three.

inline constexpr int kSocketDescriptor = 3;
inline constexpr int kSlotsDescriptor = 4;
inline constexpr int kMarksDescriptor = 5;

} // namespace workbench

#pragma once

namespace workbench
{

/** The argument with which the test program runs as the workbench itself, followed by what its user does, and files. */
inline constexpr const char* kAsProgram = "--as-program";

int runAsProgram(int argc, char** argv);

} // namespace workbench

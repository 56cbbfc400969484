#pragma once

#include <string>

namespace workbench
{

/**
 * A path as a text of a file in UTF-8. The names of files are bytes, which need not be UTF-8: a path that is not stands
 * there as "file:" and the path, in which each byte that is no plain ASCII letter, digit or one of "/._-" is a percent
 * sign with two hexadecimal digits. Every other path stands as it is; none that is saved begins with "file:".
 */
std::string textOfPath(const std::string& path);

/** The path of such a text. */
std::string pathOfText(const std::string& text);

} // namespace workbench

#include "workbench/store/files/FileFault.h"

#include <cerrno>
#include <system_error>

namespace workbench
{

namespace
{
std::string reasonOf(int code)
{
    switch (code) {
    case ENOSPC:
    case EDQUOT:
        return "the disk is full. Free some space, or choose another place";
    case EFBIG:
        return "the file would become larger than allowed here";
    case EACCES:
    case EPERM:
        return "access is not allowed. Check the permissions, or choose another place";
    case EROFS:
        return "the disk is read-only. Choose another place";
    case ENOENT:
        return "there is no such file or folder";
    case ENOTDIR:
        return "a part of the path is not a folder";
    case EISDIR:
        return "a folder has that name";
    case ENAMETOOLONG:
        return "the name is too long";
    case ELOOP:
        return "the links lead round in a circle";
    default:
        return std::generic_category().message(code);
    }
}
} // namespace

std::string fileFault(const char* action, const std::filesystem::path& path, int code)
{
    return std::string("Cannot ") + action + " " + quotedPath(path) + ": " + reasonOf(code) + ".";
}

std::string quotedPath(const std::filesystem::path& path)
{
    return std::string("\"").append(path.string()).append("\"");
}

} // namespace workbench

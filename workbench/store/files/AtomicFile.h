#pragma once

#include "workbench/store/files/UnfinishedFile.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace workbench
{

/**
 * A file that is replaced whole or not at all: written beside its place, made durable, then renamed over what was
 * there.
 *
 * Whatever happens before commit() has returned (a full disk, a crash, the object's end), the old file is untouched.
 * A link is followed, and what it leads to is replaced or made; permissions stay as they were. Usable on any thread.
 */
class AtomicFile
{
public:
    explicit AtomicFile(const std::filesystem::path& path);
    ~AtomicFile();

    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /** Appends to the new contents. After a failure nothing more is written. */
    bool write(std::string_view bytes);

    /** Puts the new contents in place. False when that, or anything before it, failed. */
    bool commit();

    /** What went wrong, for a person to read; empty while all is well. */
    const std::string& error() const { return error_; }

private:
    bool fail(const char* action, int code);

    std::filesystem::path target_;
    UnfinishedFile file_;
    std::string error_;
};

/** Replaces a file's contents. Returns what went wrong, or nothing. */
std::string replaceFile(const std::filesystem::path& path, std::string_view contents);

/** A whole file; what went wrong is in `error`, which is empty otherwise. */
struct FileContents {
    std::string bytes;
    std::string error;
};

/** Reads a regular file of up to `limit` bytes. */
FileContents readFile(const std::filesystem::path& path, std::size_t limit);

} // namespace workbench

#include "workbench/store/files/DiskCache.h"

#include "workbench/store/files/AtomicFile.h"
#include "workbench/store/files/UnfinishedFile.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>
#include <vector>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{

constexpr std::string_view kCacheMark = "oribund cache 1\n";
constexpr std::size_t kSumSize = 16;

std::uint64_t mix(std::uint64_t value, std::string_view text)
{
    for (const char letter : text)
        value = (value ^ static_cast<unsigned char>(letter)) * 0x100000001b3ULL;
    return value;
}

std::string inHex(std::uint64_t value)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4)
        text += kDigits[value >> shift & 15U];
    return text;
}

constexpr std::uint64_t kStart = 0xcbf29ce484222325ULL;

/** Two sums, of which the second goes the other way through the key. */
std::string nameOf(std::string_view key)
{
    const std::string reversed(key.rbegin(), key.rend());
    return inHex(mix(kStart, key)) + inHex(mix(~kStart, reversed));
}

std::string sumOf(std::string_view bytes)
{
    return inHex(mix(kStart, bytes));
}

struct Found {
    fs::path path;
    std::uint64_t size = 0;
    fs::file_time_type used;
};

std::vector<Found> filesIn(const fs::path& folder)
{
    std::vector<Found> files;
    std::error_code failed;
    for (fs::directory_iterator file(folder, failed), end; !failed && file != end; file.increment(failed)) {
        std::error_code gone;
        Found found{file->path(), file->file_size(gone), file->last_write_time(gone)};
        if (!gone && found.path.filename().string().size() == 2 * kSumSize)
            files.push_back(std::move(found));
    }
    return files;
}

} // namespace

DiskCache::DiskCache(fs::path folder, std::uint64_t limit)
    : folder_(std::move(folder))
    , limit_(limit)
{
}

std::optional<std::string> DiskCache::find(std::string_view key)
{
    const fs::path path = folder_ / nameOf(key);
    const FileContents read = readFile(path, limit_);
    const std::string_view all = read.bytes;
    const std::size_t start = kCacheMark.size() + kSumSize;
    if (!read.error.empty() || !all.starts_with(kCacheMark) || all.size() < start ||
        all.substr(kCacheMark.size(), kSumSize) != sumOf(all.substr(start)))
        return std::nullopt;
    std::error_code ignored;
    fs::last_write_time(path, fs::file_time_type::clock::now(), ignored);
    return std::string(all.substr(start));
}

void DiskCache::keep(std::string_view key, std::string_view bytes)
{
    constexpr std::uint64_t kLargestShare = 16;
    if (broken_ || bytes.size() > limit_ / kLargestShare || !prepare())
        return;
    const fs::path path = folder_ / nameOf(key);
    UnfinishedFile file(path);
    const std::string head = std::string(kCacheMark) + sumOf(bytes);
    // What a lost page would spoil is told by the sum.
    broken_ = !file.write(head) || !file.write(bytes) || file.moveTo(path, UnfinishedFile::Durable::No) != 0;
    size_ += head.size() + bytes.size();
    if (size_ > limit_)
        makeRoom();
}

/** Whether there is a folder, and it is known how much is in it. */
bool DiskCache::prepare()
{
    if (std::exchange(counted_, true))
        return true;
    std::error_code failed;
    fs::create_directories(folder_, failed);
    fs::permissions(folder_, fs::perms::owner_all, failed);
    broken_ = static_cast<bool>(failed);
    removeUnfinished(folder_);
    makeRoom();
    return !broken_;
}

void DiskCache::makeRoom()
{
    std::vector<Found> files = filesIn(folder_);
    size_ = 0;
    for (const Found& file : files)
        size_ += file.size;
    if (size_ <= limit_)
        return;
    std::ranges::sort(files, {}, &Found::used);
    for (const Found& file : files) {
        if (size_ <= limit_ / 4 * 3)
            return;
        std::error_code ignored;
        fs::remove(file.path, ignored);
        size_ -= file.size;
    }
}

} // namespace workbench

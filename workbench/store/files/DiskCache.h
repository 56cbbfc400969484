#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace workbench
{

/**
 * Pieces of data that can be made again, kept in a folder from one run of the program to the next. A piece is found by
 * a key, which says all that it depends on. When there is more than the limit, those go that were not used for longest.
 *
 * Several programs may use a folder at once. Whatever goes wrong with a disk, a piece is whole or not there. Used by
 * one thread at a time.
 */
class DiskCache
{
public:
    /** The folder is made when something is kept for the first time. `limit` in bytes. */
    DiskCache(std::filesystem::path folder, std::uint64_t limit);

    /** Empty when there is none. */
    std::optional<std::string> find(std::string_view key);

    /** Larger than a share of the limit it is not kept, nor on a disk that is full or cannot be written. */
    void keep(std::string_view key, std::string_view bytes);

private:
    bool prepare();
    void makeRoom();

    const std::filesystem::path folder_;
    const std::uint64_t limit_;
    std::uint64_t size_ = 0; ///< of all files, about: others may add and remove
    bool counted_ = false;
    bool broken_ = false; ///< could not be written; left alone from then on
};

} // namespace workbench

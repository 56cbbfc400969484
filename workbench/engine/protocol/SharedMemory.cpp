#include "workbench/engine/protocol/SharedMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace workbench
{

namespace
{

std::span<std::uint8_t> mapShared(const Descriptor& descriptor, std::size_t size)
{
    void* const start = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor.number(), 0);
    return start == MAP_FAILED ? std::span<std::uint8_t>() : std::span(static_cast<std::uint8_t*>(start), size);
}

} // namespace

std::optional<SharedMemory> SharedMemory::create(const char* name, std::size_t size)
{
    Descriptor descriptor(memfd_create(name, MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!descriptor || ftruncate(descriptor.number(), static_cast<off_t>(size)) != 0 ||
        fcntl(descriptor.number(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0)
        return std::nullopt;
    const std::span<std::uint8_t> bytes = mapShared(descriptor, size);
    if (bytes.empty())
        return std::nullopt;
    return SharedMemory(std::move(descriptor), bytes);
}

std::optional<SharedMemory> SharedMemory::map(Descriptor descriptor, std::size_t leastSize)
{
    struct stat status = {};
    if (!descriptor || fstat(descriptor.number(), &status) != 0 || status.st_size <= 0 ||
        static_cast<std::size_t>(status.st_size) < leastSize)
        return std::nullopt;
    const int seals = fcntl(descriptor.number(), F_GET_SEALS);
    if (seals < 0 || (seals & F_SEAL_SHRINK) == 0)
        return std::nullopt;
    const std::span<std::uint8_t> bytes = mapShared(descriptor, static_cast<std::size_t>(status.st_size));
    if (bytes.empty())
        return std::nullopt;
    return SharedMemory(std::move(descriptor), bytes);
}

SharedMemory::~SharedMemory()
{
    if (!bytes_.empty())
        munmap(bytes_.data(), bytes_.size());
}

} // namespace workbench

#include "workbench/engine/protocol/Wire.h"

namespace workbench
{

void WireWriter::text(std::string_view value)
{
    count(value.size());
    bytes_.insert(bytes_.end(), value.begin(), value.end());
}

std::size_t WireReader::count()
{
    const std::size_t value = number<std::uint32_t>();
    if (value <= rest_.size())
        return value;
    fail();
    return 0;
}

std::string WireReader::text()
{
    const std::span<const std::uint8_t> bytes = next(count());
    return {bytes.begin(), bytes.end()};
}

void WireReader::fail()
{
    failed_ = true;
    rest_ = {};
}

std::span<const std::uint8_t> WireReader::next(std::size_t size)
{
    if (size > rest_.size()) {
        fail();
        return {};
    }
    const std::span<const std::uint8_t> result = rest_.first(size);
    rest_ = rest_.subspan(size);
    return result;
}

} // namespace workbench

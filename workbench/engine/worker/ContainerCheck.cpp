#include "workbench/engine/worker/ContainerCheck.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

namespace workbench
{

namespace
{

using Bytes = std::array<unsigned char, 16>;

/** A file that is read at places; reading past its end gives nothing. */
class Reader
{
public:
    explicit Reader(const std::string& path)
        : file_(path, std::ios::binary)
    {
        std::error_code error;
        const auto size = std::filesystem::file_size(path, error);
        size_ = error ? 0 : size;
    }

    std::uint64_t size() const { return size_; }

    std::optional<Bytes> at(std::uint64_t offset)
    {
        Bytes bytes{};
        file_.clear();
        file_.seekg(static_cast<std::streamoff>(offset));
        file_.read(reinterpret_cast<char*>(bytes.data()), bytes.size());
        return file_.gcount() >= 8 ? std::optional(bytes) : std::nullopt;
    }

private:
    std::ifstream file_;
    std::uint64_t size_ = 0;
};

std::uint64_t bigEndian(const unsigned char* bytes, int count)
{
    std::uint64_t value = 0;
    for (int i = 0; i < count; ++i)
        value = value << 8 | bytes[i];
    return value;
}

bool hasTag(const Bytes& bytes, std::size_t offset, std::string_view tag)
{
    return std::memcmp(bytes.data() + offset, tag.data(), tag.size()) == 0;
}

/** Walks the boxes at the top; the last must end where the file ends. */
Completeness checkBoxes(Reader& file)
{
    std::uint64_t offset = 0;
    bool described = false;
    while (offset < file.size()) {
        const std::optional<Bytes> head = file.at(offset);
        if (!head)
            return Completeness::CutShort;
        described = described || hasTag(*head, 4, "moov") || hasTag(*head, 4, "moof");
        std::uint64_t length = bigEndian(head->data(), 4);
        if (length == 0) // to the end of the file
            break;
        if (length == 1)
            length = bigEndian(head->data() + 8, 8);
        if (length < 8 || length > file.size() - offset)
            return Completeness::CutShort;
        offset += length;
    }
    return described ? Completeness::Whole : Completeness::CutShort;
}

Completeness checkRiff(const Bytes& head, const Reader& file)
{
    std::uint64_t length = 0;
    for (int i = 3; i >= 0; --i)
        length = length << 8 | head[static_cast<std::size_t>(4 + i)];
    // A recorder that was stopped the hard way leaves 0 or the largest number.
    if (length == 0 || length == 0xffffffffU)
        return Completeness::CutShort;
    return length + 8 > file.size() ? Completeness::CutShort : Completeness::Whole;
}

/** Length of the variable-length number at a place, and its value without the marker; none for an invalid one. */
struct VariableNumber {
    int length;
    std::uint64_t value;
    bool unknown; // all ones: "not known yet"
};

std::optional<VariableNumber> readVariable(const Bytes& bytes, std::size_t offset)
{
    const int length = std::countl_zero(bytes[offset]) + 1;
    if (length > 8 || offset + static_cast<std::size_t>(length) > bytes.size())
        return std::nullopt;
    const std::uint64_t mask = (std::uint64_t{1} << (7 * length)) - 1;
    const std::uint64_t value = bigEndian(bytes.data() + offset, length) & mask;
    return VariableNumber{length, value, value == mask};
}

Completeness checkMatroska(const Bytes& head, Reader& file)
{
    const std::optional<VariableNumber> header = readVariable(head, 4);
    if (!header)
        return Completeness::Unknown;
    const std::uint64_t segment = 4 + static_cast<std::uint64_t>(header->length) + header->value;
    const std::optional<Bytes> next = file.at(segment);
    if (!next)
        return Completeness::CutShort;
    const std::optional<VariableNumber> length = readVariable(*next, 4);
    if (!hasTag(*next, 0, "\x18\x53\x80\x67") || !length || length->unknown)
        return Completeness::Unknown;
    const std::uint64_t end = segment + 4 + static_cast<std::uint64_t>(length->length) + length->value;
    return end > file.size() ? Completeness::CutShort : Completeness::Whole;
}

} // namespace

Completeness checkContainer(const std::string& path)
{
    Reader file(path);
    const std::optional<Bytes> head = file.at(0);
    if (!head)
        return Completeness::Unknown;
    if (hasTag(*head, 4, "ftyp"))
        return checkBoxes(file);
    if (hasTag(*head, 0, "RIFF"))
        return checkRiff(*head, file);
    if (hasTag(*head, 0, "\x1a\x45\xdf\xa3"))
        return checkMatroska(*head, file);
    return Completeness::Unknown;
}

} // namespace workbench

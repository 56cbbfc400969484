#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

#include <compare>
#include <cstddef>

namespace oribund
{

/** Identity of an edit, an asset or an effect template in the host: a text, and a number for a part of what it names.
 */
class ORIBUND_API Cookie
{
public:
    /** The invalid cookie, which identifies nothing. */
    Cookie() noexcept = default;

    explicit Cookie(const String& id, int subId = 0)
        : id_(id)
        , subId_(subId)
    {
    }

    const String& id() const noexcept { return id_; }

    int subId() const noexcept { return subId_; }

    bool valid() const noexcept { return !id_.empty(); }

    /** Negative, zero or positive as this sorts before, with or after `other`: by text, then by number. */
    int compare(const Cookie& other) const noexcept;

    friend bool operator==(const Cookie&, const Cookie&) noexcept = default;
    friend std::strong_ordering operator<=>(const Cookie&, const Cookie&) noexcept = default;

    /** The text, followed by ":number" where the number is not 0; for logs and keys. */
    String asString() const;

    std::size_t hash() const noexcept;

private:
    String id_;
    int subId_ = 0;
};

} // namespace oribund

template <>
struct std::hash<oribund::Cookie> {
    std::size_t operator()(const oribund::Cookie& cookie) const noexcept { return cookie.hash(); }
};

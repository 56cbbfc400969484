#include "oribund/host/base/Cookie.h"

#include "oribund/host/base/Numeric.h"

namespace oribund
{

int Cookie::compare(const Cookie& other) const noexcept
{
    const std::strong_ordering order = *this <=> other;
    return order < 0 ? -1 : static_cast<int>(order > 0);
}

String Cookie::asString() const
{
    return subId_ == 0 ? id_ : id_ + ":" + formatNumber(subId_);
}

std::size_t Cookie::hash() const noexcept
{
    return std::hash<String>()(id_) * 31 + static_cast<unsigned>(subId_);
}

} // namespace oribund

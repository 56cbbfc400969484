#include "oribund/host/effects/curves/Retiming.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/curves/Graph1dBase.h"

namespace oribund
{

bool Retiming::ascends() const noexcept
{
    int previous = -1;
    for (const int index : indices_) {
        if (index <= previous || index >= keys_.size())
            return false;
        previous = index;
    }
    return true;
}

bool Retiming::fits() const noexcept
{
    if (indices_.size() != times_.size() || !ascends())
        return false;
    bool good = true;
    std::size_t i = 0;
    forEach([&](const KeyStore::Position& position, double time) {
        const KeyStore::Position left = keys_.previous(position);
        const KeyStore::Position right = keys_.next(position);
        const bool leftMoves = i > 0 && indices_[i - 1] + 1 == indices_[i];
        const bool rightMoves = i + 1 < indices_.size() && indices_[i] + 1 == indices_[i + 1];
        good = good && Graph1dBase::usableTime(time);
        if (left.valid())
            good = good && time - (leftMoves ? times_[i - 1] : keys_.time(left)) > kValueTolerance;
        if (right.valid() && !rightMoves)
            good = good && keys_.time(right) - time > kValueTolerance;
        ++i;
    });
    return good;
}

bool Retiming::changesNothing() const noexcept
{
    bool same = true;
    forEach([&](const KeyStore::Position& position, double time) { same = same && keys_.time(position) == time; });
    return same;
}

} // namespace oribund

#pragma once

#include "oribund/host/effects/curves/KeyStore.h"

#include <span>

namespace oribund
{

/**
 * Other times for some keyframes, in the order in which they are: `indices` ascend, with one time each. Refers to the
 * caller's lists and keys.
 */
class Retiming
{
public:
    Retiming(const KeyStore& keys, std::span<const int> indices, std::span<const double> times)
        : keys_(keys)
        , indices_(indices)
        , times_(times)
    {
    }

    /** Whether the keyframes exist and would still ascend, more than kValueTolerance apart. */
    bool fits() const noexcept;
    /** Whether it gives all of them the times that they have. */
    bool changesNothing() const noexcept;

    /** Whether so few are meant that it pays to deal with each of them on its own. */
    bool isSparse() const noexcept { return std::ssize(indices_) <= keys_.size() / kSparse; }

    std::span<const int> indices() const noexcept { return indices_; }

    /** Calls `use(position, time)` for each keyframe, with its new time. */
    template <class Use>
    void forEach(Use use) const
    {
        KeyStore::Position position = keys_.begin();
        int reached = 0;
        for (std::size_t i = 0; i < indices_.size(); ++i) {
            position = keys_.onward(position, indices_[i] - reached);
            reached = indices_[i];
            use(position, times_[i]);
        }
    }

private:
    static constexpr int kSparse = 16;

    bool ascends() const noexcept;

    const KeyStore& keys_;
    std::span<const int> indices_;
    std::span<const double> times_;
};

} // namespace oribund

#pragma once

#include "oribund/host/base/Kt.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace oribund
{

/** An immutable list whose copies share the elements, so that values that carry one stay cheap to copy. */
template <class T>
class SharedList
{
public:
    SharedList() = default;

    SharedList(std::vector<T> elements)
        : node_(elements.empty() ? nullptr : Kt::makePtr<Node>(std::move(elements)))
    {
    }

    std::span<const T> view() const noexcept
    {
        return node_ ? std::span<const T>(node_->elements) : std::span<const T>();
    }

    int size() const noexcept { return static_cast<int>(view().size()); }

    /** Null outside the list. */
    const T* at(int index) const noexcept { return index >= 0 && index < size() ? &node_->elements[index] : nullptr; }

    friend bool operator==(const SharedList& a, const SharedList& b)
    {
        return a.node_ == b.node_ || std::ranges::equal(a.view(), b.view());
    }

private:
    struct Node final : Kt::InternalRefCount {
        explicit Node(std::vector<T> list)
            : elements(std::move(list))
        {
        }

        std::vector<T> elements;
    };

    Kt::Ptr<Node> node_;
};

} // namespace oribund

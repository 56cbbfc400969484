#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/SharedList.h"
#include "oribund/host/base/UIString.h"

#include <span>
#include <utility>
#include <vector>

namespace oribund
{

/** One choice of a list: the value that the effect sees and the text that a person sees. */
template <class T>
struct ORIBUND_API ListItem {
    T value{};
    UIString label;

    bool operator==(const ListItem&) const = default;
};

/** The value of a parameter that is one choice of a list. Copies share the list. */
template <class T>
class ORIBUND_API ListParam
{
public:
    using Item = ListItem<T>;

    /** An empty list with nothing selected. */
    ListParam() = default;

    /** An index outside the list selects nothing. */
    explicit ListParam(std::vector<Item> items, int selected = 0)
        : items_(std::move(items))
    {
        select(selected);
    }

    std::span<const Item> items() const noexcept { return items_.view(); }

    int size() const noexcept { return items_.size(); }

    /** -1 when nothing is selected. */
    int selectedIndex() const noexcept { return selected_; }

    /** Null when nothing is selected. */
    const Item* selectedItem() const noexcept { return items_.at(selected_); }

    /** False, and nothing changed, when there is no such item. */
    bool select(int index) noexcept
    {
        if (!items_.at(index))
            return false;
        selected_ = index;
        return true;
    }

    /** Selects the first item with that value; false, and nothing changed, when there is none. */
    bool selectValue(const T& value) noexcept { return select(indexOf(value)); }

    /** The first item with that value, or -1. */
    int indexOf(const T& value) const noexcept
    {
        for (int i = 0; i < size(); ++i) {
            if (items_.at(i)->value == value)
                return i;
        }
        return -1;
    }

    friend bool operator==(const ListParam& a, const ListParam& b)
    {
        return a.selected_ == b.selected_ && a.items_ == b.items_;
    }

private:
    SharedList<Item> items_;
    int selected_ = -1;
};

} // namespace oribund

#pragma once

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <vector>

namespace oribund
{

/**
 * Puts some items of a list into the order given, one after the other, to where the first of them stands. `keyOf` gives
 * the pointer by which an item is known; what the list does not hold is passed over.
 */
template <class Item, class Key, class KeyOf>
void bringTogether(std::vector<Item>& items, const std::vector<Key*>& order, KeyOf keyOf)
{
    std::unordered_map<const Key*, std::size_t> rankOf;
    for (std::size_t i = 0; i < order.size(); ++i)
        rankOf.emplace(order[i], i);
    const auto isMeant = [&](const Item& item) { return rankOf.count(keyOf(item)) > 0; };
    const auto first = std::find_if(items.begin(), items.end(), isMeant);
    const auto end = std::stable_partition(first, items.end(), isMeant);
    std::sort(first, end, [&](const Item& a, const Item& b) { return rankOf.at(keyOf(a)) < rankOf.at(keyOf(b)); });
}

} // namespace oribund

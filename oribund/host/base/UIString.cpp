#include "oribund/host/base/UIString.h"

#include <algorithm>
#include <string>

namespace oribund
{

UIString::UIString(const WString& text)
    : text_(text)
{
}

UIString::UIString(const wchar_t* text)
    : text_(text)
{
}

UIString::UIString(int resourceId, int subId)
    : resourceId_(resourceId)
    , subId_(subId)
{
}

UIString UIString::withPlaceholder(const WString& name, const WString& value) const
{
    UIString result(*this);
    const auto known = std::ranges::find(result.placeholders_, name, &Placeholder::name);
    if (known != result.placeholders_.end())
        known->value = value;
    else
        result.placeholders_.push_back({name, value});
    return result;
}

const UIString::Placeholder* UIString::findPlaceholder(std::wstring_view name) const noexcept
{
    const auto found = std::ranges::find_if(placeholders_, [name](const Placeholder& p) { return p.name == name; });
    return found == placeholders_.end() ? nullptr : &*found;
}

WString UIString::expand(const WString& text) const
{
    if (placeholders_.empty())
        return text;
    std::wstring out;
    std::wstring_view rest = text.view();
    while (true) {
        const std::size_t open = rest.find(L'$');
        const std::size_t close = open == rest.npos ? rest.npos : rest.find(L'$', open + 1);
        if (close == rest.npos)
            break;
        const Placeholder* known = findPlaceholder(rest.substr(open + 1, close - open - 1));
        // A '$' that begins no known name may still end up being followed by one: go on at the second '$'.
        out += rest.substr(0, open);
        out += known ? known->value.view() : rest.substr(open, close - open);
        rest.remove_prefix(known ? close + 1 : close);
    }
    out += rest;
    return WString(out);
}

} // namespace oribund

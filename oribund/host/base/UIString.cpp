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
    const auto changed = placeholders_ ? Kt::makePtr<Placeholders>(*placeholders_) : Kt::makePtr<Placeholders>();
    const auto known = std::ranges::find(changed->list, name, &Placeholder::name);
    if (known != changed->list.end())
        known->value = value;
    else
        changed->list.push_back({name, value});
    UIString result(*this);
    result.placeholders_ = changed;
    return result;
}

const UIString::Placeholder* UIString::findPlaceholder(std::wstring_view name) const noexcept
{
    const auto& list = placeholders_->list;
    const auto found = std::ranges::find_if(list, [name](const Placeholder& p) { return p.name == name; });
    return found == list.end() ? nullptr : &*found;
}

WString UIString::expand(const WString& text) const
{
    if (!placeholders_)
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

bool UIString::operator==(const UIString& other) const
{
    const auto samePlaceholders = [&] {
        return placeholders_ == other.placeholders_ ||
               (placeholders_ && other.placeholders_ && placeholders_->list == other.placeholders_->list);
    };
    return resourceId_ == other.resourceId_ && subId_ == other.subId_ && text_ == other.text_ && samePlaceholders();
}

} // namespace oribund

#include "oribund/host/services/TextTable.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/services/Host.h"
#include "oribund/host/services/TextIds.h"

#include <string>

namespace oribund
{

namespace
{

/** Null for an id that the library does not know. */
const wchar_t* englishText(int resourceId)
{
    switch (resourceId) {
#define ORIBUND_ENGLISH(name, id, english)                                                                             \
    case id:                                                                                                           \
        return english;
        ORIBUND_TEXTS(ORIBUND_ENGLISH)
#undef ORIBUND_ENGLISH
    default:
        return nullptr;
    }
}

} // namespace

TextTable::~TextTable() = default;

WString displayText(int resourceId, int subId)
{
    if (Host::isInstalled()) {
        if (const auto text = Host::current().texts().find(resourceId, subId))
            return *text;
    }
    if (const wchar_t* const english = englishText(resourceId))
        return WString(english);
    return WString((L"#" + std::to_wstring(resourceId)).c_str());
}

WString displayText(const UIString& text)
{
    if (text.isLiteral())
        return text.expand(text.text());
    return text.expand(displayText(text.resourceId(), text.subId()));
}

} // namespace oribund

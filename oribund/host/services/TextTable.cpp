#include "oribund/host/services/TextTable.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/services/Host.h"

#include <string>

namespace oribund
{

TextTable::~TextTable() = default;

WString displayText(int resourceId, int subId)
{
    const auto text = Host::current().texts().find(resourceId, subId);
    if (text)
        return *text;
    return WString((L"#" + std::to_wstring(resourceId)).c_str());
}

WString displayText(const UIString& text)
{
    if (text.isLiteral())
        return text.expand(text.text());
    return text.expand(displayText(text.resourceId(), text.subId()));
}

} // namespace oribund

#include "oribund/host/notify/NotifyMsgTypeDictionary.h"

#include <algorithm>
#include <cstddef>

namespace oribund
{

NotifyMsgTypeDictionary& NotifyMsgTypeDictionary::instance()
{
    static NotifyMsgTypeDictionary dictionary;
    return dictionary;
}

NotifyMsgTypeDictionary::NotifyMsgTypeDictionary()
    : names_{"Any", "ValueChange"}
{
}

NotifyMsgType NotifyMsgTypeDictionary::typeFor(const String& name)
{
    const CriticalSection::Lock lock(section_);
    auto number = static_cast<std::size_t>(std::ranges::find(names_, name) - names_.begin());
    if (number == names_.size())
        names_.push_back(name);
    return static_cast<NotifyMsgType>(number);
}

String NotifyMsgTypeDictionary::nameOf(NotifyMsgType type) const
{
    const CriticalSection::Lock lock(section_);
    const auto number = static_cast<std::size_t>(type);
    return number < names_.size() ? names_[number] : String();
}

} // namespace oribund

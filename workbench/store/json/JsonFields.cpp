#include "workbench/store/json/JsonFields.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace workbench
{

namespace
{
constexpr std::size_t kMostSentences = 100;
} // namespace

void Warnings::add(std::string sentence)
{
    if (sentences_.size() < kMostSentences)
        sentences_.push_back(std::move(sentence));
    else
        ++unsaid_;
}

std::vector<std::string> Warnings::take()
{
    if (unsaid_ > 0)
        sentences_.push_back("There are " + std::to_string(unsaid_) + " more of the kind.");
    unsaid_ = 0;
    return std::exchange(sentences_, {});
}

JsonFields::JsonFields(const Json& object, std::string what, Warnings& warnings)
    : object_(object)
    , what_(std::move(what))
    , warnings_(warnings)
{
}

int JsonFields::integer(const char* key, int fallback, int minimum, int maximum) const
{
    const double read = number(key, fallback, minimum, maximum);
    if (read != std::trunc(read))
        mended(key);
    return static_cast<int>(read);
}

double JsonFields::number(const char* key, double fallback, double minimum, double maximum) const
{
    const Json* const field = find(key);
    if (!field)
        return fallback;
    const double read = field->is_number() ? field->get<double>() : fallback;
    const double kept = std::clamp(read, minimum, maximum);
    if (!field->is_number() || kept != read)
        mended(key);
    return kept;
}

bool JsonFields::flag(const char* key, bool fallback) const
{
    const Json* const field = find(key);
    if (field && !field->is_boolean())
        mended(key);
    return field && field->is_boolean() ? field->get<bool>() : fallback;
}

std::string JsonFields::text(const char* key) const
{
    const Json* const field = find(key);
    if (field && !field->is_string())
        mended(key);
    return field && field->is_string() ? field->get<std::string>() : std::string();
}

const Json& JsonFields::list(const char* key) const
{
    static const Json none = Json::array();
    const Json* const field = find(key);
    if (field && !field->is_array())
        mended(key);
    return field && field->is_array() ? *field : none;
}

const Json* JsonFields::find(const char* key) const
{
    if (!object_.is_object())
        return nullptr;
    const auto found = object_.find(key);
    return found == object_.end() ? nullptr : &*found;
}

void JsonFields::mended(const char* key) const
{
    warn("the value of \"" + std::string(key) + "\" makes no sense; another is used");
}

} // namespace workbench

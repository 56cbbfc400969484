#pragma once

#include <string>
#include <vector>

namespace workbench
{

class MltSession;

/** A parameter as the service's own metadata tells it: texts, none of which is sure to be there or to make sense. */
struct RawParam {
    std::string identifier;
    std::string title;
    std::string type;
    std::string description;
    std::string unit;
    std::string widget;
    std::string minimum;
    std::string maximum;
    std::string defaultText;
    std::vector<std::string> values;
    bool readOnly = false;
    bool animated = false;
};

struct RawEffect {
    std::string service;
    std::string title;
    std::string description;
    std::vector<std::string> tags;
    std::vector<RawParam> params;
};

/** All installed filters that have metadata. */
std::vector<RawEffect> readMetadata(MltSession& session);

} // namespace workbench

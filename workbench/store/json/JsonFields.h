#pragma once

#include "workbench/store/json/JsonText.h"

#include <string>
#include <vector>

namespace workbench
{

/** What was amiss in a file, a sentence each. Beyond a hundred they are only counted. */
class Warnings
{
public:
    void add(std::string sentence);

    /** Ends the collecting. */
    std::vector<std::string> take();

private:
    std::vector<std::string> sentences_;
    std::size_t unsaid_ = 0;
};

/**
 * Reads the fields of a JSON object that may hold anything. An absent field has its default; one of another type or out
 * of range is mended, with a warning.
 */
class JsonFields
{
public:
    /** `what` begins the warnings: "Segment 5". */
    JsonFields(const Json& object, std::string what, Warnings& warnings);

    int integer(const char* key, int fallback, int minimum, int maximum) const;
    double number(const char* key, double fallback, double minimum, double maximum) const;
    bool flag(const char* key, bool fallback) const;
    std::string text(const char* key) const;

    /** The list of that name; an empty one where there is none. */
    const Json& list(const char* key) const;

    void warn(const std::string& rest) const { warnings_.add(what_ + ": " + rest + "."); }

private:
    const Json* find(const char* key) const;
    void mended(const char* key) const;

    const Json& object_;
    std::string what_;
    Warnings& warnings_;
};

} // namespace workbench

#pragma once

#include <pugixml.hpp>

#include <initializer_list>
#include <string>
#include <unordered_map>

namespace workbench
{

/** Whether an element has one of the names. */
bool isKind(pugi::xml_node node, std::initializer_list<const char*> kinds);

/** A `producer` or `chain`: what shows a file, or makes a picture. */
bool isClip(pugi::xml_node node);

/** A filter of a mask: it is made again from what was saved with the effect that it belongs to. */
bool isMaskFilter(pugi::xml_node filter);

/** The services of a document by their ids. They may be described where they are first used, at any depth. */
class MltServices
{
public:
    explicit MltServices(pugi::xml_node mlt);

    /** What is played; empty when there is nothing. */
    pugi::xml_node findMain() const;

    /** What a `track` or `entry` shows: named by id, or described inside it. */
    pugi::xml_node serviceOf(pugi::xml_node user) const;

    /** Not played, but kept for its program: the list of the media that it knows. */
    static bool isKept(pugi::xml_node service);

private:
    pugi::xml_node find(const char* id) const;

    pugi::xml_node mlt_;
    std::unordered_map<std::string, pugi::xml_node> byId_;
};

} // namespace workbench

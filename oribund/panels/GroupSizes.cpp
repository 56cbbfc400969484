#include "oribund/panels/GroupSizes.h"

#include "oribund/host/services/EditorPreferences.h"
#include "oribund/host/services/TextTable.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace oribund
{

namespace
{

/** Effects whose groups of less use are folded at first. */
struct Folded {
    std::string_view tag;
    bool isBeginning = false; ///< of longer tags
};

constexpr std::array<Folded, 4> kFoldedIn{
    {{"DVEs\\3DDVE"}, {"PixShader:DVEs:", true}, {"\\VRN\\VIS\\FX\\MATTES\\IMAGEINP"}, {"PixShader:Mixes:texwipe.fx"}}};
/** Texts of a host that has such effects. */
constexpr std::array<int, 5> kFoldedTitles{11661, 10654, 11394, 10655, 10650};

Glob::eSizeState defaultOf(const String& tag, const WString& title, Glob::eSizeState fallback)
{
    const auto isMeant = [&](const Folded& folded) {
        const std::string_view all = tag.view();
        return folded.isBeginning ? all.substr(0, folded.tag.size()) == folded.tag : all == folded.tag;
    };
    const auto isTitle = [&](int id) { return displayText(id) == title; };
    const bool folds = std::any_of(kFoldedIn.begin(), kFoldedIn.end(), isMeant) &&
                       std::any_of(kFoldedTitles.begin(), kFoldedTitles.end(), isTitle);
    return folds ? Glob::eSizeMinimised : fallback;
}

String keyOf(const String& tag, const WString& title)
{
    return tag + "/" + toUTF8(title);
}

} // namespace

Glob::eSizeState GroupSizes::read(const String& effectTag, const WString& groupTitle, Glob::eSizeState fallback)
{
    const int stored = prefs().getPreference(keyOf(effectTag, groupTitle),
                                             static_cast<int>(defaultOf(effectTag, groupTitle, fallback)));
    return stored == Glob::eSizeMinimised ? Glob::eSizeMinimised : Glob::eSizeNormal;
}

void GroupSizes::store(const String& effectTag, const WString& groupTitle, Glob::eSizeState state)
{
    if (!effectTag.empty())
        prefs().setPreference(keyOf(effectTag, groupTitle), static_cast<int>(state));
}

} // namespace oribund

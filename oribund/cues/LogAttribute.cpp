#include "oribund/cues/LogAttribute.h"

#include "oribund/cues/CueColours.h"
#include "oribund/cues/CueSearch.h"
#include "oribund/host/base/text/ColourText.h"
#include "oribund/host/edit/Cue.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"

#include <string>

namespace oribund
{

namespace
{

std::wstring_view trimmed(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

} // namespace

std::vector<LogAttribute> getLogAttributes()
{
    return {LogAttribute::Timecode, LogAttribute::Name, LogAttribute::Description, LogAttribute::Colour};
}

UIString getLogAttributeName(LogAttribute attribute)
{
    switch (attribute) {
    case LogAttribute::Timecode:
        return UIString(TextIds::kCueTimecode);
    case LogAttribute::Name:
        return UIString(TextIds::kCueName);
    case LogAttribute::Description:
        return UIString(TextIds::kCueDescription);
    case LogAttribute::Colour:
        return UIString(TextIds::kCueColour);
    }
    return {};
}

WString getLogAttributeText(LogAttribute attribute, const Cue& cue, const EditPtr& edit)
{
    switch (attribute) {
    case LogAttribute::Timecode:
        return getCueTimecode(cue.time, edit);
    case LogAttribute::Name:
        return cue.name;
    case LogAttribute::Description:
        return cue.description;
    case LogAttribute::Colour:
        return hexText(cue.colour);
    }
    return {};
}

bool setLogAttributeText(LogAttribute attribute, Cue& cue, const WString& text, const EditPtr& edit)
{
    switch (attribute) {
    case LogAttribute::Timecode: {
        const std::optional<double> time = parseCueTimecode(WString(trimmed(text.view())), edit);
        cue.time = time.value_or(cue.time);
        return time.has_value();
    }
    case LogAttribute::Name:
        cue.name = text;
        return true;
    case LogAttribute::Description:
        cue.description = text;
        return true;
    case LogAttribute::Colour: {
        const std::optional<Colour> colour = parseColourText(text);
        cue.colour = colour.value_or(cue.colour);
        return colour.has_value();
    }
    }
    return false;
}

std::optional<Colour> parseColourText(const WString& text)
{
    const std::wstring_view bare = trimmed(text.view());
    for (const CueColour& named : cueColours()) {
        if (compareNoCase(WString(bare), displayText(named.text)) == 0)
            return named.colour;
    }
    return parseHexColour(bare);
}

} // namespace oribund

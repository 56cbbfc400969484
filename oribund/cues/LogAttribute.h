#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/Edit.h"

#include <optional>
#include <vector>

namespace oribund
{

struct Cue;

/** A field of a cue that is shown and edited as text. The numbers may be kept in files. */
enum class LogAttribute : int {
    Timecode = 0, ///< another one moves the cue
    Name = 1,
    Description = 2,
    Colour = 3, ///< as parseColourText() reads it
};

/** All of them, in the order in which they are shown when nobody asks for another. */
ORIBUND_API std::vector<LogAttribute> getLogAttributes();

/** What the field is called. */
ORIBUND_API UIString getLogAttributeName(LogAttribute attribute);

/** The field's text; `edit` says how long a frame is. */
ORIBUND_API WString getLogAttributeText(LogAttribute attribute, const Cue& cue, const EditPtr& edit);

/** Gives the field of `cue` another text. False, and `cue` as it was, for a text that it cannot have. */
ORIBUND_API bool setLogAttributeText(LogAttribute attribute, Cue& cue, const WString& text, const EditPtr& edit);

/** The colour that parseHexColour() reads, or that of a name that a cue colour is shown by; blanks around it do not
 * matter. */
ORIBUND_API std::optional<Colour> parseColourText(const WString& text);

} // namespace oribund

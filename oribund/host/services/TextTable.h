#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

#include <optional>

namespace oribund
{

class UIString;

/**
 * The host's table of user-visible texts, in the language of the user.
 *
 * The library asks for every text that is not a literal by an integer id. User-interface thread only.
 */
class ORIBUND_API TextTable
{
public:
    virtual ~TextTable();

    /** The text of an id, or nothing when the table has none. */
    virtual std::optional<WString> find(int resourceId, int subId) const = 0;
};

/**
 * The text to show for a UIString: its literal, or the installed host's text of its id, with the placeholders
 * replaced. An id that the host does not know shows as "#id", so that a gap in a table is seen and reported.
 */
ORIBUND_API WString displayText(const UIString& text);

/** The text of an id, as displayText(). */
ORIBUND_API WString displayText(int resourceId, int subId = 0);

} // namespace oribund

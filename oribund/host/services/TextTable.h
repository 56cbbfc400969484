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
 * The library asks for every text that is not a literal by an integer id; those of TextIds.h are in English where the
 * table has none. User-interface thread only.
 */
class ORIBUND_API TextTable
{
public:
    virtual ~TextTable();

    /** The text of an id, or nothing when the table has none. */
    virtual std::optional<WString> find(int resourceId, int subId) const = 0;
};

/**
 * The text to show for a UIString: its literal, or the text of its id, with the placeholders replaced. The installed
 * host is asked for an id first, then the library's own English texts. An id that neither knows shows as "#id", so that
 * a gap in a table is seen and reported.
 */
ORIBUND_API WString displayText(const UIString& text);

/** The text of an id, as displayText(). */
ORIBUND_API WString displayText(int resourceId, int subId = 0);

} // namespace oribund

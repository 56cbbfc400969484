#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/toolkit/core/Glob.h"

namespace oribund
{

/** Which groups the user has folded: kept in the preferences by type of effect and title of group. */
struct GroupSizes {
    static Glob::eSizeState read(const String& effectTag, const WString& groupTitle, Glob::eSizeState fallback);

    /** Does nothing for an effect without a type. */
    static void store(const String& effectTag, const WString& groupTitle, Glob::eSizeState state);
};

} // namespace oribund

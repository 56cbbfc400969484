#pragma once

#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/UIString.h"

namespace oribund
{

/** An entry of the list that says in which order and groups a panel shows an effect's parameters. */
struct ParamPresentationDetails {
    enum class Kind : int {
        Parameter = 0,
        GroupStart = 2,
        GroupEnd = 3,
    };

    /** Bit of `flags`: the group, from its start to its end, is not shown. */
    static constexpr unsigned char kHiddenGroup = 2;
    /** Bit of `flags`: the group is folded until the user unfolds it. */
    static constexpr unsigned char kCollapsedGroup = 4;

    IdStamp id; ///< of the parameter or the group
    Kind kind = Kind::Parameter;
    unsigned char flags = 0;
    UIString title; ///< of a group

    bool isHidden() const noexcept { return (flags & kHiddenGroup) != 0; }

    bool isCollapsed() const noexcept { return (flags & kCollapsedGroup) != 0; }

    bool operator==(const ParamPresentationDetails&) const = default;
};

} // namespace oribund

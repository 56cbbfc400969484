#pragma once

#include "oribund/host/base/IdStamp.h"
#include "workbench/model/EditData.h"

namespace workbench
{

/** The stamp by which the library's panels know an object of the edit. */
constexpr oribund::IdStamp stampOf(ObjectId id) noexcept
{
    return id == kNoObject ? oribund::IdStamp() : oribund::IdStamp(1, id, 0);
}

/** The object that a stamp stands for; kNoObject for any that stampOf() did not make. */
constexpr ObjectId objectOf(const oribund::IdStamp& stamp) noexcept
{
    return stamp.first() == 1 && stamp.third() == 0 && stamp.second() > 0 ? stamp.second() : kNoObject;
}

/** The stamp of an effect's parameter, by its place in the effect's description. Unique within the effect. */
constexpr oribund::IdStamp paramStamp(int index) noexcept
{
    return {2, index + 1, 0};
}

} // namespace workbench

#pragma once

#include "oribund/host/base/Angle.h"
#include "oribund/host/base/ColourData.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/ListParam.h"
#include "oribund/host/base/Vector2d.h"
#include "oribund/host/base/VideoInputParam.h"

#include <variant>

/**
 * The types that the value of a parameter can have: the one list of them, in a fixed order. Writes `Do(P, with)` for
 * each type `P`. A new type is added here; the compiler then asks for what ParamTraits and ParamText have to say of it.
 */
#define ORIBUND_FOR_PARAM_TYPES(Do, with)                                                                              \
    Do(double, with) Do(bool, with) Do(Angle, with) Do(ColourData, with) Do(Vector2d, with) Do(ListParam<int>, with)   \
        Do(ListParam<String>, with) Do(VideoInputParam, with)

/** To do for a class template that is compiled once for every type: the first in its header, the other in its source.
 */
// NOLINTBEGIN(bugprone-macro-parentheses): what stands there are types.
#define ORIBUND_DECLARE_FOR_TYPE(P, Template) extern template class Template<P>;
#define ORIBUND_DEFINE_FOR_TYPE(P, Template) template class Template<P>;

// NOLINTEND(bugprone-macro-parentheses)

namespace oribund
{

namespace detail
{

template <class, class... P>
struct VariantOf {
    using Type = std::variant<P...>;
};

} // namespace detail

#define ORIBUND_NEXT_TYPE(P, with) , P
/** A value of a parameter of any type; two are equal when they are of one type and equal there. */
using ParamValue = detail::VariantOf<void ORIBUND_FOR_PARAM_TYPES(ORIBUND_NEXT_TYPE, )>::Type;
#undef ORIBUND_NEXT_TYPE

} // namespace oribund

#pragma once

#include "oribund/host/effects/params/ParamValue.h"

#include <utility>

namespace oribund
{

template <class P>
class EffectValParam;

/** Does something to a parameter according to its type: EffectValParamBase::accept() calls the function that fits. */
class ParamVisitor
{
public:
#define ORIBUND_VISIT(P, with) virtual void visit(EffectValParam<P>& param) = 0;
    ORIBUND_FOR_PARAM_TYPES(ORIBUND_VISIT, )
#undef ORIBUND_VISIT

protected:
    ~ParamVisitor() = default;
};

/** A visitor that hands parameters of all types to one generic function object. */
template <class Function>
class FunctionParamVisitor final : public ParamVisitor
{
public:
    explicit FunctionParamVisitor(Function function)
        : function_(std::move(function))
    {
    }

#define ORIBUND_VISIT(P, with)                                                                                         \
    void visit(EffectValParam<P>& param) override                                                                      \
    {                                                                                                                  \
        function_(param);                                                                                              \
    }
    ORIBUND_FOR_PARAM_TYPES(ORIBUND_VISIT, )
#undef ORIBUND_VISIT

private:
    Function function_;
};

/** Calls `function(EffectValParam<P>&)` with the parameter as what it is. */
template <class Param, class Function>
void visitParam(Param& param, Function function)
{
    FunctionParamVisitor<Function> visitor(std::move(function));
    param.accept(visitor);
}

} // namespace oribund

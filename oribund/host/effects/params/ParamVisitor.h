#pragma once

#include "oribund/host/base/LightweightString.h"

#include <utility>

namespace oribund
{

struct Angle;
struct ColourData;
struct Vector2d;
class VideoInputParam;
template <class T>
class ListParam;
template <class P>
class EffectValParam;

/** Does something to a parameter according to its type: EffectValParamBase::accept() calls the function that fits. */
class ParamVisitor
{
public:
    virtual void visit(EffectValParam<VideoInputParam>& param) = 0;
    virtual void visit(EffectValParam<ListParam<int>>& param) = 0;
    virtual void visit(EffectValParam<ListParam<String>>& param) = 0;
    virtual void visit(EffectValParam<bool>& param) = 0;
    virtual void visit(EffectValParam<Vector2d>& param) = 0;
    virtual void visit(EffectValParam<ColourData>& param) = 0;
    virtual void visit(EffectValParam<Angle>& param) = 0;
    virtual void visit(EffectValParam<double>& param) = 0;

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

    void visit(EffectValParam<VideoInputParam>& param) override { function_(param); }

    void visit(EffectValParam<ListParam<int>>& param) override { function_(param); }

    void visit(EffectValParam<ListParam<String>>& param) override { function_(param); }

    void visit(EffectValParam<bool>& param) override { function_(param); }

    void visit(EffectValParam<Vector2d>& param) override { function_(param); }

    void visit(EffectValParam<ColourData>& param) override { function_(param); }

    void visit(EffectValParam<Angle>& param) override { function_(param); }

    void visit(EffectValParam<double>& param) override { function_(param); }

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

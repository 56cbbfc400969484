#include "oribund/controls/bars/CompoundEffectTherm.h"

namespace oribund
{

namespace
{

FXThermBase::InitArgs identified(FXThermBase::InitArgs args)
{
    if (args.id.empty())
        args.id = CompoundEffectTherm::identity;
    return args;
}

} // namespace

const String CompoundEffectTherm::identity("CompoundEffectTherm");

CompoundEffectTherm::CompoundEffectTherm(const InitArgs& args)
    : FXThermBase(identified(args))
{
}

} // namespace oribund

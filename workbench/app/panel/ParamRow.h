#pragma once

#include <memory>

namespace oribund
{
class Canvas;
class EffectValParamBase;
class FXViewHandle;
class KeyframeCtrlsBase;
} // namespace oribund

namespace workbench
{

/** Where rows go and how wide they are; logical pixels. */
struct ParamRowArgs {
    unsigned short width = 0;
    /** Room for the name. */
    unsigned short labelWidth = 0;
    oribund::Canvas* canvas = nullptr;
};

/** The row that fits the type of a parameter, bound to the parameter of that id in the effect that the handle yields.
 */
std::unique_ptr<oribund::KeyframeCtrlsBase> makeParamRow(const oribund::FXViewHandle& handle,
                                                         oribund::EffectValParamBase& param, const ParamRowArgs& args);

} // namespace workbench

#pragma once

#include "oribund/host/base/Export.h"

#include <memory>

namespace oribund
{

class Canvas;
class EffectValParamBase;
class FXViewHandle;
class KeyframeCtrlsBase;

/** Where rows go and how wide they are; logical pixels. */
struct ParamRowArgs {
    unsigned short width = 0;
    /** Room for the name. */
    unsigned short labelWidth = 0;
    Canvas* canvas = nullptr;
};

/** The row that fits the type of a parameter, bound to the parameter of that id in the effect that the handle yields.
 */
ORIBUND_API std::unique_ptr<KeyframeCtrlsBase> makeParamRow(const FXViewHandle& handle, EffectValParamBase& param,
                                                            const ParamRowArgs& args);

} // namespace oribund

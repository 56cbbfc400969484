#pragma once

#include "oribund/host/edit/FXViewHandle.h"
#include "oribund/host/toolkit/StandardPanel.h"

#include <memory>

namespace oribund
{
class EffectValParamBase;
}

namespace workbench
{

/**
 * The row of one parameter: a keyframe button where the parameter can be animated, its name, and the controls that fit
 * its type. Every control is bound to the parameter of the effect that the handle yields.
 */
class ParamRow : public oribund::StandardPanel
{
public:
    struct InitArgs : oribund::GlobCreationInfo {
        using oribund::GlobCreationInfo::GlobCreationInfo;

        /** Room for the name, keyframe button included; logical pixels. */
        int nameWidth = 0;
    };

    /** The width that the name of a parameter, with its unit, needs in a row. */
    static int calcNameWidth(const oribund::EffectValParamBase& param);

    ParamRow(const InitArgs& args, const oribund::FXViewHandle& handle, oribund::EffectValParamBase& param);
    ~ParamRow() override;

private:
    class Maker;
};

} // namespace workbench

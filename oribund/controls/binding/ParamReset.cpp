#include "oribund/controls/binding/ParamReset.h"

#include "oribund/controls/binding/EffectValParamAccessor.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "oribund/host/toolkit/core/Drawable.h"

namespace oribund
{

bool resetParam(const FXVobClient& client, EffectValParamBase& param)
{
    const Kt::Ptr<EffectInstance> effect = client.getEffectPtr();
    if (!effect || !client.canEditParam(*effect, param))
        return false;
    const RedrawHold hold;
    if (param.functionType() == EffectValParamFnType::Keyframed)
        client.prepareEdit();
    const double time = clampNormalisedTime(client.getNormalisedCurrentTime());
    EditGesture gesture;
    gesture.begin(client.getViewedEdit());
    bool done = false;
    visitParam(param, [&]<class P>(EffectValParam<P>& typed) {
        done = EffectValParamAccessor<P>(typed).setValue(effect, typed.getDefault(), time, ChangeKind::Single);
    });
    return done;
}

} // namespace oribund

#include "oribund/controls/rows/KeyframeButtonAdaptor.h"

#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/toolkit/core/Drawable.h"

#include <utility>

namespace oribund
{

template <class Accessor>
KeyframeButtonAdaptor<Accessor>::KeyframeButtonAdaptor(const FXViewHandle& handle, Accessor accessor)
    : EffectParamObserverEx<Accessor, EffectParamObserver<typename Accessor::Param>>(handle, std::move(accessor))
{
}

template <class Accessor>
String KeyframeButtonAdaptor<Accessor>::getDataValue()
{
    const auto param = this->getParam();
    if (!param || param->functionType() != EffectValParamFnType::Keyframed)
        return KeyframeState::kNone;
    return param->graph()->indexAt(this->getClampedTime()) >= 0 ? KeyframeState::kHere : KeyframeState::kElsewhere;
}

template <class Accessor>
void KeyframeButtonAdaptor<Accessor>::forceWidgetUpdate(eRedrawFlag flag)
{
    if (!this->getParam())
        return;
    const Kt::Ptr<AdaptorBase> self = keepAlive();
    const RedrawHold hold;
    setNewWidgetValue(getDataValue(), flag);
    refreshEnabled();
}

template <class Accessor>
void KeyframeButtonAdaptor<Accessor>::refreshEnabled()
{
    const std::optional<bool> editable = this->isEditable();
    if (!editable)
        return;
    const bool usable = *editable && this->boundParam()->isKeyframable();
    if (usable != getWidgetEnabledState())
        setWidgetEnabledState(usable);
}

template <class Accessor>
void KeyframeButtonAdaptor<Accessor>::widgetLeftClicked()
{
    const auto param = this->getParam();
    const Kt::Ptr<EffectInstance> effect = this->getEffectPtr();
    if (!param || !param->isKeyframable() || !this->canEditParam(*effect, *param))
        return;
    const Kt::Ptr<AdaptorBase> self = keepAlive();
    const RedrawHold hold;
    this->prepareEdit();
    EditGesture gesture;
    gesture.begin(this->getViewedEdit());
    toggleKeyframe(*param);
}

template <class Accessor>
void KeyframeButtonAdaptor<Accessor>::toggleKeyframe(EffectValParam<typename Accessor::Param>& param)
{
    const double time = this->getClampedTime();
    if (param.functionType() == EffectValParamFnType::Constant) {
        param.setFunctionType(EffectValParamFnType::Keyframed, time);
        return;
    }
    Graph1dBase& graph = *param.graph();
    const int index = graph.indexAt(time);
    if (index < 0) {
        graph.subdivide(time); // the curve runs on as it did
    } else if (graph.size() == 1) {
        param.setFunctionType(EffectValParamFnType::Constant, time);
    } else {
        graph.removeKeyframe(index);
    }
}

template class KeyframeButtonAdaptor<EffectValParamAccessor<double>>;
template class KeyframeButtonAdaptor<EffectValParamAccessor<Angle>>;
template class KeyframeButtonAdaptor<EffectValParamAccessor<ColourData>>;
template class KeyframeButtonAdaptor<PosAccessor>;

} // namespace oribund

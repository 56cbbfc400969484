#include "oribund/controls/binding/EffectValParamAdaptor.h"

#include "oribund/host/toolkit/core/Drawable.h"

namespace oribund
{

template <class T, class Accessor, class Observer>
T EffectValParamAdaptor<T, Accessor, Observer>::getDataValue()
{
    const auto value = this->readValue();
    return value ? ParamConversion<T, typename Accessor::Value>::toWidget(*value) : T();
}

template <class T, class Accessor, class Observer>
void EffectValParamAdaptor<T, Accessor, Observer>::forceWidgetUpdate(eRedrawFlag flag)
{
    if (!this->getParam())
        return;
    const Kt::Ptr<AdaptorBase> self = this->keepAlive();
    const RedrawHold hold;
    this->setNewWidgetValue(getDataValue(), flag);
    refreshEnabled();
}

template <class T, class Accessor, class Observer>
void EffectValParamAdaptor<T, Accessor, Observer>::refreshEnabled()
{
    // Asked for anew: what the widgets did with a value may have taken the effect away.
    const std::optional<bool> editable = this->isEditable();
    if (editable && *editable != this->getWidgetEnabledState())
        this->setWidgetEnabledState(*editable);
}

template <class T, class Accessor, class Observer>
bool EffectValParamAdaptor<T, Accessor, Observer>::requestSetValue(const T& value, ChangeKind kind)
{
    const auto param = this->getParam();
    if (param && param->functionType() == EffectValParamFnType::Keyframed)
        this->prepareEdit();
    const auto current = this->readValue();
    if (!current)
        return false;
    const auto converted = ParamConversion<T, typename Accessor::Value>::toParam(value, *current);
    return converted && write(*converted, kind);
}

template <class T, class Accessor, class Observer>
bool EffectValParamAdaptor<T, Accessor, Observer>::write(const typename Accessor::Value& value, ChangeKind kind)
{
    if (inChangeSeries_)
        kind = seriesChangeKind_;
    if (opensChange(kind) || !gesture_.isOpen())
        gesture_.begin(this->getViewedEdit());
    const bool written = this->accessor().setValue(this->getEffectPtr(), value, this->getClampedTime(), kind);
    if (inChangeSeries_ && written)
        seriesChangeKind_ = ChangeKind::Continuation;
    if (kind == ChangeKind::Single)
        gesture_.finish();
    return written;
}

template <class T, class Accessor, class Observer>
void EffectValParamAdaptor<T, Accessor, Observer>::handleSeriesEnd()
{
    seriesChangeKind_ = ChangeKind::Start;
    gesture_.finish();
}

template <class T, class Accessor, class Observer>
bool EffectValParamAdaptor<T, Accessor, Observer>::cancelSeries()
{
    return gesture_.abort();
}

template <class T, class Accessor, class Observer>
bool EffectValParamAdaptor<T, Accessor, Observer>::takeBackSeries()
{
    return gesture_.takeBack();
}

#define ORIBUND_DEFINE_ADAPTOR(Name, T, Accessor) template class EffectValParamAdaptor<T, Accessor>;
ORIBUND_FOR_ADAPTORS(ORIBUND_DEFINE_ADAPTOR)
#undef ORIBUND_DEFINE_ADAPTOR

} // namespace oribund

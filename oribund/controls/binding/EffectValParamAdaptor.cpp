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
    endLostSeries();
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
    if (!this->isEditable().value_or(false))
        return false;
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
    if (!this->isEditable().value_or(false))
        return false;
    if (inChangeSeries_)
        kind = seriesChangeKind_;
    if (!opensChange(kind) && endLostSeries())
        return false;
    if (opensChange(kind))
        added_.clear();
    const double fxTime = this->getClampedTime();
    const bool adds = kind != ChangeKind::Single && lacksKeyframe(fxTime);
    if (opensChange(kind) || !gesture_.isOpen())
        gesture_.begin(this->getViewedEdit());
    const bool written = this->accessor().setValue(this->getEffectPtr(), value, fxTime, kind);
    if (adds && written)
        added_.push_back(fxTime);
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
    added_.clear();
    gesture_.finish();
}

/** A drag that goes on after an undo would only take the redo away. True when there was one to end. */
template <class T, class Accessor, class Observer>
bool EffectValParamAdaptor<T, Accessor, Observer>::endLostSeries()
{
    if (!gesture_.isLost())
        return false;
    gesture_.finish();
    this->forEachWidget([](WidgetBase& widget) { static_cast<ValView<T>&>(widget).letGo(); });
    return true;
}

template <class T, class Accessor, class Observer>
bool EffectValParamAdaptor<T, Accessor, Observer>::lacksKeyframe(double fxTime) const
{
    const auto& param = this->boundParam();
    return param && param->functionType() == EffectValParamFnType::Keyframed && param->graph()->indexAt(fxTime) < 0;
}

/** Takes back the keyframes of the series. False when it has made none, or nothing is left of them. */
template <class T, class Accessor, class Observer>
bool EffectValParamAdaptor<T, Accessor, Observer>::removeAdded()
{
    const auto param = this->boundParam(); // held: observers may unbind
    bool removed = false;
    for (const double fxTime : std::exchange(added_, {})) {
        const int index = param && param->graph() ? param->graph()->indexAt(fxTime) : -1;
        removed = (index >= 0 && param->graph()->removeKeyframe(index)) || removed;
    }
    return removed;
}

template <class T, class Accessor, class Observer>
bool EffectValParamAdaptor<T, Accessor, Observer>::cancelSeries()
{
    // An edit that keeps no journal leaves it to us.
    const bool isOurs = !gesture_.isLost();
    return gesture_.abort() || (isOurs && removeAdded());
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

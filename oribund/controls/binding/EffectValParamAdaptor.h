#pragma once

#include "oribund/controls/binding/ComponentAccessors.h"
#include "oribund/controls/binding/EffectParamObserverEx.h"
#include "oribund/controls/binding/EffectValParamAccessor.h"
#include "oribund/controls/binding/ParamConversion.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/values/ValAdaptorBase.h"

#include <cstdint>
#include <utility>

namespace oribund
{

/**
 * Binds widgets that show a `T` to one parameter: shows them its value at the current time, and turns what they ask for
 * into edits at that time. Made by who makes the widgets, and held by them.
 *
 * While the effect or the parameter is gone, the widgets keep what they show and edits are refused. User-interface
 * thread only.
 */
template <class T, class Accessor, class Observer = EffectParamObserver<typename Accessor::Param>>
class ORIBUND_API EffectValParamAdaptor : public ValAdaptorBase<T>, public EffectParamObserverEx<Accessor, Observer>
{
public:
    /** `handle` yields the effect that has the parameter which the accessor finds. */
    EffectValParamAdaptor(const FXViewHandle& handle, Accessor accessor)
        : EffectParamObserverEx<Accessor, Observer>(handle, std::move(accessor))
    {
    }

    /** A `T()` when there is no such parameter. */
    T getDataValue() override;
    void forceWidgetUpdate(eRedrawFlag flag) override;
    bool requestSetValue(const T& value, ChangeKind kind) override;
    void handleSeriesEnd() override;
    bool cancelSeries() override;
    bool takeBackSeries() override;

    /**
     * Whether all edits belong to one series, whatever kind the widgets ask for: the first is its start, the later ones
     * go on with it, until a widget says that it is complete. For choosers that write while the user looks around.
     */
    void setInChangeSeries(bool inSeries) { inChangeSeries_ = inSeries ? 1 : 0; }

protected:
    void refresh() override { forceWidgetUpdate(eRedrawFlag::Yes); }

    void refreshEnabled() override;

    /** Has the accessor write at the current time, with the kind that the series asks for. */
    bool write(const typename Accessor::Value& value, ChangeKind kind);

private:
    std::uint32_t inChangeSeries_ = 0;
    ChangeKind seriesChangeKind_ = ChangeKind::Start;
};

using FloatAdaptor = EffectValParamAdaptor<double, EffectValParamAccessor<double>>;
using FloatTextAdaptor = EffectValParamAdaptor<WString, FloatParamAccessor>;
using BoolAdaptor = EffectValParamAdaptor<bool, EffectValParamAccessor<bool>>;
using IntListAdaptor = EffectValParamAdaptor<unsigned, EffectValParamAccessor<ListParam<int>>>;
using TextListAdaptor = EffectValParamAdaptor<unsigned, EffectValParamAccessor<ListParam<String>>>;
using VideoInputAdaptor = EffectValParamAdaptor<unsigned, EffectValParamAccessor<VideoInputParam>>;
using AngleAdaptor = EffectValParamAdaptor<double, EffectValParamAccessor<Angle>>;
using WholeAngleAdaptor = EffectValParamAdaptor<int, EffectValParamAccessor<Angle>>;
using AngleTextAdaptor = EffectValParamAdaptor<WString, EffectValParamAccessor<Angle>>;
using ColourAdaptor = EffectValParamAdaptor<ColourData, EffectValParamAccessor<ColourData>>;
using ColourRangeAdaptor = EffectValParamAdaptor<ColourData, ColRangeInterfaceTraits>;
using ColourComponentAdaptor = EffectValParamAdaptor<double, ColCompAccessor<double>>;
using ColourComponentTextAdaptor = EffectValParamAdaptor<WString, ColourComponentTextAccessor>;
using PositionAdaptor = EffectValParamAdaptor<double, PosAccessor>;
using PositionTextAdaptor = EffectValParamAdaptor<WString, PosTextAccessor>;

extern template class EffectValParamAdaptor<double, EffectValParamAccessor<double>>;
extern template class EffectValParamAdaptor<WString, FloatParamAccessor>;
extern template class EffectValParamAdaptor<bool, EffectValParamAccessor<bool>>;
extern template class EffectValParamAdaptor<unsigned, EffectValParamAccessor<ListParam<int>>>;
extern template class EffectValParamAdaptor<unsigned, EffectValParamAccessor<ListParam<String>>>;
extern template class EffectValParamAdaptor<unsigned, EffectValParamAccessor<VideoInputParam>>;
extern template class EffectValParamAdaptor<double, EffectValParamAccessor<Angle>>;
extern template class EffectValParamAdaptor<int, EffectValParamAccessor<Angle>>;
extern template class EffectValParamAdaptor<WString, EffectValParamAccessor<Angle>>;
extern template class EffectValParamAdaptor<ColourData, EffectValParamAccessor<ColourData>>;
extern template class EffectValParamAdaptor<ColourData, ColRangeInterfaceTraits>;
extern template class EffectValParamAdaptor<double, ColCompAccessor<double>>;
extern template class EffectValParamAdaptor<WString, ColourComponentTextAccessor>;
extern template class EffectValParamAdaptor<double, PosAccessor>;
extern template class EffectValParamAdaptor<WString, PosTextAccessor>;

} // namespace oribund

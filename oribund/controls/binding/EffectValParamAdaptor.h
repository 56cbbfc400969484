#pragma once

#include "oribund/controls/binding/ColourLevelAccessor.h"
#include "oribund/controls/binding/ComponentAccessors.h"
#include "oribund/controls/binding/EffectParamObserverEx.h"
#include "oribund/controls/binding/EffectValParamAccessor.h"
#include "oribund/controls/binding/ParamConversion.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/toolkit/values/ValAdaptorBase.h"

#include <cstdint>
#include <utility>
#include <vector>

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
    bool endLostSeries();
    bool lacksKeyframe(double fxTime) const;
    bool removeAdded();

    EditGesture gesture_;       ///< a series, or the single edit that is being made
    std::vector<double> added_; ///< effect times of the keyframes that the series has made
    std::uint32_t inChangeSeries_ = 0;
    ChangeKind seriesChangeKind_ = ChangeKind::Start;
};

/** The adaptors there are: name, what the widget shows, and how the parameter is found. All are compiled once. */
// clang-format off
#define ORIBUND_FOR_ADAPTORS(Adaptor) \
    Adaptor(FloatAdaptor, double, EffectValParamAccessor<double>) \
    Adaptor(FloatTextAdaptor, WString, FloatParamAccessor) \
    Adaptor(BoolAdaptor, bool, EffectValParamAccessor<bool>) \
    Adaptor(IntListAdaptor, unsigned, EffectValParamAccessor<ListParam<int>>) \
    Adaptor(TextListAdaptor, unsigned, EffectValParamAccessor<ListParam<String>>) \
    Adaptor(VideoInputAdaptor, unsigned, EffectValParamAccessor<VideoInputParam>) \
    Adaptor(AngleAdaptor, double, EffectValParamAccessor<Angle>) \
    Adaptor(WholeAngleAdaptor, int, EffectValParamAccessor<Angle>) \
    Adaptor(AngleTextAdaptor, WString, EffectValParamAccessor<Angle>) \
    Adaptor(ColourAdaptor, ColourData, EffectValParamAccessor<ColourData>) \
    Adaptor(ColourRangeAdaptor, ColourData, ColRangeInterfaceTraits) \
    Adaptor(ColourComponentAdaptor, double, ColCompAccessor<double>) \
    Adaptor(ColourComponentTextAdaptor, WString, ColourComponentTextAccessor) \
    Adaptor(ColourLevelAdaptor, double, ColourLevelAccessor) \
    Adaptor(ColourLevelTextAdaptor, WString, ColourLevelTextAccessor) \
    Adaptor(PositionAdaptor, double, PosAccessor) \
    Adaptor(PositionTextAdaptor, WString, PosTextAccessor)
// clang-format on

// NOLINTBEGIN(bugprone-macro-parentheses): what stands there are types.
#define ORIBUND_DECLARE_ADAPTOR(Name, T, Accessor)                                                                     \
    using Name = EffectValParamAdaptor<T, Accessor>;                                                                   \
    extern template class EffectValParamAdaptor<T, Accessor>;
ORIBUND_FOR_ADAPTORS(ORIBUND_DECLARE_ADAPTOR)
#undef ORIBUND_DECLARE_ADAPTOR
// NOLINTEND(bugprone-macro-parentheses)

} // namespace oribund

#pragma once

#include "oribund/controls/binding/ComponentAccessors.h"
#include "oribund/controls/binding/EffectParamObserverEx.h"
#include "oribund/controls/binding/EffectValParamAccessor.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/values/ButtonAdaptor.h"

namespace oribund
{

/** What a keyframe button shows; the values of KeyframeButtonAdaptor. */
namespace KeyframeState
{
inline constexpr const char* kNone = "none";           ///< the parameter is not animated
inline constexpr const char* kElsewhere = "elsewhere"; ///< it is, with no keyframe at the current time
inline constexpr const char* kHere = "here";           ///< it has a keyframe at the current time
} // namespace KeyframeState

/**
 * Shows whether a parameter has a keyframe at the current time, and adds or removes that at a click.
 *
 * The first keyframe animates the parameter and the removal of the last one makes it constant again; neither changes
 * its value now. The value of the button is one of KeyframeState. A click does nothing while the parameter cannot be
 * edited.
 */
template <class Accessor>
class ORIBUND_API KeyframeButtonAdaptor final
    : public ButtonAdaptor<String>,
      public EffectParamObserverEx<Accessor, EffectParamObserver<typename Accessor::Param>>
{
public:
    KeyframeButtonAdaptor(const FXViewHandle& handle, Accessor accessor);

    String getDataValue() override;
    void forceWidgetUpdate(eRedrawFlag flag) override;
    void widgetLeftClicked() override;

private:
    void refresh() override { forceWidgetUpdate(eRedrawFlag::Yes); }

    void refreshEnabled() override;

    void toggleKeyframe(EffectValParam<typename Accessor::Param>& param);
};

extern template class KeyframeButtonAdaptor<EffectValParamAccessor<double>>;
extern template class KeyframeButtonAdaptor<EffectValParamAccessor<Angle>>;
extern template class KeyframeButtonAdaptor<EffectValParamAccessor<ColourData>>;
extern template class KeyframeButtonAdaptor<PosAccessor>;

} // namespace oribund

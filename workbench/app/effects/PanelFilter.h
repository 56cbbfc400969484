#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"

#include <functional>

namespace oribund
{
class Checkbox;
class EffectValParamBase;
struct CheckboxEvent;
} // namespace oribund

namespace workbench
{

/** Says which parameters of a long panel are shown: those whose name has a text in it, or that are not as they were. */
class PanelFilter final : public oribund::WidgetGroup
{
public:
    /** `changed` is called when the user asks for others. */
    PanelFilter(const InitArgs& args, std::function<void()> changed);

    /** Whether it leaves any out at all. */
    bool isActive() const;

    bool wants(const oribund::EffectValParamBase& param) const;

    void resize(double width, double height) override;
    using oribund::Glob::resize;

private:
    class SearchBox;

    int handleToggle(const oribund::CheckboxEvent& event);
    void placeWidgets();

    std::function<void()> changed_;
    SearchBox* search_ = nullptr;
    oribund::Checkbox* changedOnly_ = nullptr; // made last
    oribund::MethodCallback<PanelFilter, oribund::CheckboxEvent> toggle_{this, &PanelFilter::handleToggle};
};

} // namespace workbench

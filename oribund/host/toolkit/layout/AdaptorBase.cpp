#include "oribund/host/toolkit/layout/AdaptorBase.h"

#include "oribund/host/toolkit/layout/WidgetBase.h"

#include <algorithm>

namespace oribund
{

AdaptorBase::AdaptorBase() = default;
AdaptorBase::~AdaptorBase() = default;

void AdaptorBase::attachWidget(WidgetBase& widget)
{
    if (!isServing(widget) || std::find(widgets_.begin(), widgets_.end(), &widget) != widgets_.end())
        return;
    const WidgetBase* const first = getFirstWidget();
    widgets_.push_back(&widget);
    if (first && first->isWidgetEnabled() != widget.isWidgetEnabled())
        widget.setWidgetEnabled(first->isWidgetEnabled());
}

void AdaptorBase::detachWidget(const WidgetBase& widget)
{
    const auto found = std::find(widgets_.begin(), widgets_.end(), &widget);
    if (found == widgets_.end())
        return;
    if (walks_ > 0)
        *found = nullptr;
    else
        widgets_.erase(found);
}

void AdaptorBase::setWidgetEnabledState(bool enabled)
{
    forEachWidget([enabled](WidgetBase& widget) { widget.setWidgetEnabled(enabled); });
}

bool AdaptorBase::getWidgetEnabledState() const
{
    const WidgetBase* first = getFirstWidget();
    return first && first->isWidgetEnabled();
}

std::size_t AdaptorBase::getNumWidgets() const
{
    return widgets_.size() - static_cast<std::size_t>(std::count(widgets_.begin(), widgets_.end(), nullptr));
}

WidgetBase* AdaptorBase::getFirstWidget() const
{
    const auto found = std::find_if(widgets_.begin(), widgets_.end(), [](const WidgetBase* widget) { return widget; });
    return found == widgets_.end() ? nullptr : *found;
}

AdaptorBase::Walk::Walk(AdaptorBase& adaptor)
    : adaptor_(adaptor)
{
    ++adaptor_.walks_;
}

AdaptorBase::Walk::~Walk()
{
    if (--adaptor_.walks_ == 0)
        std::erase(adaptor_.widgets_, nullptr);
}

} // namespace oribund

#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"

#include <cstddef>
#include <vector>

namespace oribund
{

class WidgetBase;

/**
 * What stands between widgets and the value that they show, without regard to the type of that value: the list of
 * attached widgets and whether they are enabled.
 *
 * Shared: it lives as long as the last widget that uses it. Widgets attach and detach themselves; one may go at any
 * time, also from inside a push that is on its way to it. User-interface thread only.
 */
class ORIBUND_API AdaptorBase : public Kt::InternalRefCount
{
public:
    virtual ~AdaptorBase();

    AdaptorBase(const AdaptorBase&) = delete;
    AdaptorBase& operator=(const AdaptorBase&) = delete;

    /** Called by a widget that begins to use this adaptor. A widget of another value type is not listed. */
    void attachWidget(WidgetBase& widget);

    /** Called by a widget that ceases to use this adaptor, also from its destructor. */
    void detachWidget(const WidgetBase& widget);

    /** Enables or disables every attached widget, in the order in which they were attached. */
    void setWidgetEnabledState(bool enabled);

    /** That of the widget attached first; false when there is none. */
    bool getWidgetEnabledState() const;

    std::size_t getNumWidgets() const;

protected:
    AdaptorBase();

    /** Whether the widget shows values of this adaptor's type. */
    virtual bool isServing(const WidgetBase& widget) const = 0;

    WidgetBase* getFirstWidget() const;

    /**
     * Calls `operation` with each attached widget in order. One that is attached meanwhile is not called, nor is one
     * that goes before its turn; the adaptor outlives the call.
     */
    template <class Operation>
    void forEachWidget(Operation operation)
    {
        // Without widgets nobody holds the adaptor yet: a Ptr taken here would end it.
        if (widgets_.empty())
            return;
        const Kt::Ptr<AdaptorBase> self(this);
        const Walk walk(*this);
        for (std::size_t i = 0, count = widgets_.size(); i < count; ++i) {
            if (WidgetBase* widget = widgets_[i])
                operation(*widget);
        }
    }

private:
    /** Keeps the places in the list while it is being walked. */
    class ORIBUND_API Walk
    {
    public:
        explicit Walk(AdaptorBase& adaptor);
        ~Walk();

        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;

    private:
        AdaptorBase& adaptor_;
    };

    std::vector<WidgetBase*> widgets_; ///< null: detached during a walk
    unsigned walks_ = 0;
};

} // namespace oribund

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

    /**
     * Called by a widget that begins to use this adaptor, and becomes enabled or disabled like those that use it
     * already. A widget of another value type is not listed.
     */
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

    /** Held while widgets are called, of which the last may go. Empty while nobody holds it: a Ptr would end it. */
    Kt::Ptr<AdaptorBase> keepAlive() { return Kt::Ptr<AdaptorBase>(refCount() > 0 ? this : nullptr); }

    /**
     * Calls `operation` with each attached widget in order. One that is attached meanwhile is not called, nor is one
     * that goes before its turn; the adaptor outlives the call.
     */
    template <class Operation>
    void forEachWidget(Operation operation)
    {
        const Kt::Ptr<AdaptorBase> self = keepAlive();
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

#pragma once

#include "oribund/host/toolkit/values/ValAdaptorBase.h"

namespace oribund
{

/**
 * Does something when one of its buttons is clicked. Its value is the text of the button, which says what a click will
 * do or what state a thing is in; by default that is whatever the button shows already.
 */
template <class T>
class ORIBUND_API ButtonAdaptor : public ValAdaptorBase<T>
{
public:
    /** A click with the left button, or what stands for it on the keyboard. */
    virtual void widgetLeftClicked() = 0;

    T getDataValue() override
    {
        const WidgetBase* first = this->getFirstWidget();
        return first ? static_cast<const ValView<T>*>(first)->getWidgetValue() : T();
    }

    /** A button asks for no value of its own: any request is a click. */
    bool requestSetValue(const T&, ChangeKind) override
    {
        widgetLeftClicked();
        return true;
    }
};

} // namespace oribund

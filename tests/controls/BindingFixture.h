#pragma once

#include "tests/support/FakeView.h"
#include "tests/support/Listener.h"

#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/host/toolkit/values/ValWidget.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace oribund::test
{

/** A widget without a screen, which records what it is shown. */
template <class T>
class FakeWidget : public ValWidget<T>
{
public:
    void setWidgetValue(const T& value, eRedrawFlag) override { shown.push_back(value); }

    T getWidgetValue() const override { return shown.empty() ? T() : shown.back(); }

    void setWidgetEnabled(bool on) override
    {
        enabled = on;
        ++enabledWrites;
    }

    bool isWidgetEnabled() const override { return enabled; }

    bool ask(const T& value, ChangeKind kind = ChangeKind::Single) { return this->requestDataChange(value, kind); }

    void finish() { this->endDataSeries(); }

    std::vector<T> shown;
    bool enabled = false;
    int enabledWrites = 0;
};

/** A widget that leaves its adaptor, which nobody else holds, when it is shown a value once it is `leaving`. */
template <class T>
class LeavingWidget : public FakeWidget<T>
{
public:
    void setWidgetValue(const T& value, eRedrawFlag flag) override
    {
        FakeWidget<T>::setWidgetValue(value, flag);
        if (leaving)
            this->setAdaptor(nullptr);
    }

    bool leaving = false;
};

/** An effect whose answer to whether a parameter can be edited is for the test to give. */
class FakeEffect : public EffectInstance
{
public:
    using EffectInstance::EffectInstance;

    bool canEditParam(const EffectValParamBase&) const override
    {
        if (asked)
            asked();
        return editable;
    }

    bool editable = true;
    std::function<void()> asked;
};

template <class P>
Kt::Ptr<EffectValParam<P>> makeParam(int number, const P& value = P())
{
    ParamInfo info;
    info.id = IdStamp(1, 0, number);
    info.name = "p";
    return Kt::makePtr<EffectValParam<P>>(info, value);
}

/** The values that a constant becomes, and how. */
template <class P>
struct ConstantLog {
    explicit ConstantLog(EffectValParam<P>& param)
        : listener(param.constantServer().notifier(), [this](const ValServerEvent<P>& event) {
            if (event.kind != ValEventKind::Changed)
                return;
            values.push_back(*event.value);
            kinds.push_back(event.change);
        })
    {
    }

    std::vector<P> values;
    std::vector<ChangeKind> kinds;
    Listener<ValServerEvent<P>> listener;
};

/** An effect over 10 to 20 seconds of an edit: a current time of 15 s is an effect time of 0.5. */
class Binding : public testing::Test
{
protected:
    template <class P>
    Kt::Ptr<EffectValParam<P>> addParam(const P& value = P())
    {
        const auto param = makeParam<P>(effect->paramCount() + 1, value);
        effect->addParam(param);
        return param;
    }

    /** Binds a new widget to an adaptor. */
    template <class Adaptor>
    static void attach(FakeWidget<typename Adaptor::ValueType>& widget, const Kt::Ptr<Adaptor>& adaptor)
    {
        widget.setDataAdaptor(Kt::Ptr<ValAdaptorBase<typename Adaptor::ValueType>>(adaptor));
    }

    void setEffectTime(double fxTime) { vob.setCurrentTime(10.0 + 10.0 * fxTime); }

    FakeVob vob;
    Kt::Ptr<FakeEffect> effect = Kt::makePtr<FakeEffect>(IdStamp(0, 0, 7), String("blur"), WString(L"Blur"));
    FXViewHandle handle = vob.add(effect, 10.0, 20.0);
};

} // namespace oribund::test

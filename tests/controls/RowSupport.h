#pragma once

#include "tests/controls/BindingFixture.h"
#include "tests/support/TestHost.h"

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/canvas/Canvas.h"

#include <memory>
#include <utility>
#include <vector>

namespace oribund::test
{

/** Rows on a canvas without a screen. */
class RowTest : public Binding
{
protected:
    static constexpr unsigned short kWidth = 400;
    static constexpr unsigned short kLabelWidth = 100;

    template <class P>
    Kt::Ptr<EffectValParam<P>> addLimited(const P& value, const P& low, const P& high, unsigned flags = 0)
    {
        ParamInfo info;
        info.id = IdStamp(1, 0, effect->paramCount() + 1);
        info.description = UIString(L"Size");
        info.displayFlags = flags;
        const auto param = Kt::makePtr<EffectValParam<P>>(info, value, low, high);
        effect->addParam(param);
        return param;
    }

    /** One from 0 to 8 with the id of another. */
    static Kt::Ptr<EffectValParam<double>> makeReplacement(const EffectValParamBase& param)
    {
        ParamInfo info;
        info.id = param.id();
        return Kt::makePtr<EffectValParam<double>>(info, 3.0, 0.0, 8.0);
    }

    /** Puts another parameter with the same id in place of one, as undo does. */
    void replace(const IdStamp& id, const Kt::Ptr<EffectValParamBase>& by)
    {
        effect->removeParam(id);
        if (by)
            effect->addParam(by);
        vob.monitor->tell(EffectChangeCode::ParamSetRestored, effect->id());
    }

    template <class W>
    static std::vector<W*> allIn(const Glob& row)
    {
        std::vector<Glob*> children;
        row.getChildren(children);
        std::vector<W*> found;
        for (Glob* child : children)
            if (auto* const widget = dynamic_cast<W*>(child))
                found.push_back(widget);
        return found;
    }

    /** The first one of that class. */
    template <class W>
    static W& in(const Glob& row)
    {
        return *allIn<W>(row).at(0);
    }

    /** Clicks, drags and keys come to the row as from a screen. */
    void show(Glob& row) { ASSERT_TRUE(row.open()); }

    TestHost host;
    Canvas canvas{{kWidth, 600}};
};

} // namespace oribund::test

#include "tests/controls/BindingFixture.h"

#include "oribund/controls/rows/KeyframeButtonAdaptor.h"

#include <memory>
#include <numeric>

namespace oribund
{
namespace
{

using test::FakeWidget;

class Refresh : public test::Binding
{
protected:
    Kt::Ptr<EffectValParam<double>> param = addParam(1.0);
    Kt::Ptr<FloatAdaptor> adaptor = Kt::makePtr<FloatAdaptor>(handle, EffectValParamAccessor<double>(*param));
    FakeWidget<double> widget;

    Refresh() { attach(widget, adaptor); }

    /** How often the widget is told because of something. */
    template <class Action>
    std::size_t tellings(Action action)
    {
        const std::size_t before = widget.shown.size();
        action();
        return widget.shown.size() - before;
    }
};

TEST_F(Refresh, OnlyChangesOfThisEffectAndOfTheRightKindCount)
{
    const IdStamp own = effect->id();
    const IdStamp other(0, 0, 8);
    const auto& monitor = vob.monitor;
    for (int code = 0; code <= 14; ++code) {
        const bool expected = code == 2 || code == 3 || code == 6 || code == 7 || code == 8 || code == 10 || code == 12;
        const auto kind = static_cast<EffectChangeCode>(code);
        EXPECT_EQ(tellings([&] { monitor->tell(kind, own); }), expected ? 1u : 0u) << code;
        EXPECT_EQ(tellings([&] { monitor->tell(kind, IdStamp::wildcard()); }), expected ? 1u : 0u) << code;
        if (code != 2 && code != 10) {
            EXPECT_EQ(tellings([&] { monitor->tell(kind, other); }), 0u) << code;
        }
        EXPECT_EQ(tellings([&] { monitor->tell(kind, other, EffectChangeDescription::kWholesaleRefresh); }), 1u)
            << code;
    }
}

TEST_F(Refresh, StaysBoundWhenParametersAreInsertedAndRemoved)
{
    effect->insertParam(0, test::makeParam<double>(50, 9.0));
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, effect->id());
    EXPECT_TRUE(widget.ask(2.0));
    EXPECT_EQ(param->constant(), 2.0);

    effect->removeParam(param->id());
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, effect->id());
    EXPECT_FALSE(widget.ask(3.0));
    EXPECT_EQ(tellings([&] { param->setConstant(4.0); }), 0u) << "no longer a parameter of the effect";
    EXPECT_EQ(widget.shown.back(), 2.0) << "keeps what it shows";

    const auto replacement = test::makeParam<double>(1, 6.0);
    effect->addParam(replacement);
    vob.monitor->tell(EffectChangeCode::ParamSetRestored, effect->id());
    EXPECT_EQ(widget.shown.back(), 6.0);
    EXPECT_EQ(tellings([&] { replacement->setConstant(7.0); }), 1u) << "bound to the new parameter of that id";
}

TEST_F(Refresh, IsBoundToAnEffectThatComesBackAsAnotherObject)
{
    const auto again = Kt::makePtr<test::FakeEffect>(effect->id(), String("blur"), WString(L"Blur"));
    const auto animated = test::makeParam<double>(1, 5.0);
    again->addParam(animated);
    vob.monitor->effects.clear();
    vob.monitor->tell(EffectChangeCode::None, IdStamp::wildcard(), EffectChangeDescription::kWholesaleRefresh);
    vob.monitor->effects.emplace_back(again, NumRange<double>(10.0, 20.0));
    vob.monitor->tell(EffectChangeCode::None, IdStamp::wildcard(), EffectChangeDescription::kWholesaleRefresh);
    EXPECT_EQ(widget.shown.back(), 5.0);

    EXPECT_EQ(tellings([&] { param->setConstant(2.0); }), 0u) << "nobody's parameter any more";
    EXPECT_GT(tellings([&] { animated->setFunctionType(EffectValParamFnType::Keyframed, 0.0); }), 0u);
    animated->addKeyframeAt(1.0, 9.0);
    setEffectTime(0.5);
    EXPECT_EQ(widget.shown.back(), 7.0);
}

TEST_F(Refresh, TheLastWidgetMayGoWhileItIsShownAValue)
{
    using Button = KeyframeButtonAdaptor<EffectValParamAccessor<double>>;
    const auto leaveDuringAPush = [&](auto& leaving, auto made) {
        bool gone = false;
        const auto* const raw = made.get();
        attach(leaving, made);
        made.reset();
        ASSERT_EQ(leaving.getAdaptor().get(), raw);
        effect->asked = [&] { gone = !leaving.getAdaptor() && raw->refCount() == 0; };
        leaving.leaving = true;
        param->setConstant(param->constant() + 1.0);
        EXPECT_FALSE(gone) << "it is still at work";
        effect->asked = {};
    };
    test::LeavingWidget<double> number;
    leaveDuringAPush(number, Kt::makePtr<FloatAdaptor>(handle, EffectValParamAccessor<double>(*param)));
    test::LeavingWidget<String> button;
    leaveDuringAPush(button, Kt::makePtr<Button>(handle, EffectValParamAccessor<double>(*param)));
}

/** Rows of numbers, which count together how often any of them is told. */
struct Rows {
    void add(const FXViewHandle& handle, const EffectValParam<double>& param)
    {
        shown.push_back(std::make_unique<FakeWidget<double>>());
        shown.back()->setDataAdaptor(Kt::makePtr<FloatAdaptor>(handle, EffectValParamAccessor<double>(param)));
    }

    template <class Action>
    std::size_t tellings(Action action) const
    {
        const std::size_t before = count();
        action();
        return count() - before;
    }

    std::size_t count() const
    {
        return std::accumulate(shown.begin(), shown.end(), std::size_t(),
                               [](std::size_t sum, const auto& row) { return sum + row->shown.size(); });
    }

    std::vector<std::unique_ptr<FakeWidget<double>>> shown;
};

TEST_F(Refresh, AnEditInAPanelOfManyRowsRefreshesTheOneThatShowsIt)
{
    Rows rows;
    while (rows.shown.size() < 1000)
        rows.add(handle, *addParam(0.0));
    vob.monitor->watch();
    EXPECT_EQ(rows.tellings([&] { rows.shown[500]->ask(7.0); }), 1u);
    const auto animated = effect->findParamAs<EffectValParam<double>>(effect->paramAt(700)->id());
    EXPECT_LE(rows.tellings([&] { animated->setFunctionType(EffectValParamFnType::Keyframed, 0.5); }), 2u);
    EXPECT_EQ(rows.tellings([&] { animated->addKeyframeAt(0.75, 3.0); }), 1u);
    EXPECT_EQ(rows.tellings([&] { animated->setKeyframeValueAt(1, 4.0); }), 1u);
}

TEST_F(Refresh, ADragOfKeyframesOfThreeEffectsRefreshesWhatIsDragged)
{
    Rows rows;
    for (int i = 0; i < 3; ++i) {
        const auto each = Kt::makePtr<test::FakeEffect>(IdStamp(0, 0, 20 + i), String("blur"), WString(L"Blur"));
        const FXViewHandle view = vob.add(each, 10.0, 20.0);
        for (int number = 1; number <= 50; ++number) {
            const auto added = test::makeParam<double>(number, 1.0);
            each->addParam(added);
            added->setFunctionType(EffectValParamFnType::Keyframed, 0.5);
            rows.add(view, *added);
        }
    }
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, IdStamp::wildcard());
    for (int i = 0; i < 3; ++i)
        vob.monitor->selectKeyframe({IdStamp(0, 0, 20 + i), IdStamp(1, 0, 7), 0.5}, true);
    for (int move = 0; move < 4; ++move) {
        EXPECT_EQ(rows.tellings([&] {
            vob.monitor->makeBackup(BackupKind::Undo, {});
            EXPECT_TRUE(vob.monitor->trimSelectedKeyframes(test::FakeMonitor::track(), 0.4));
        }),
                  3u);
    }
    vob.monitor->endTrim();
}

TEST_F(Refresh, EnabledStateIsWrittenOnlyWhenItChanges)
{
    EXPECT_TRUE(widget.enabled) << "an editable parameter enables the first widget";
    const int writes = widget.enabledWrites;
    param->setConstant(2.0);
    EXPECT_EQ(widget.enabledWrites, writes);
    effect->editable = false;
    vob.monitor->tell(EffectChangeCode::EditabilityChanged, effect->id());
    EXPECT_FALSE(widget.enabled);
    EXPECT_EQ(widget.enabledWrites, writes + 1);
    effect->editable = true;
    setEffectTime(0.6);
    EXPECT_TRUE(widget.enabled) << "a host may allow edits at some times only";
    EXPECT_FALSE(Kt::makePtr<FloatAdaptor>(handle, EffectValParamAccessor<double>(*param))->getWidgetEnabledState())
        << "an adaptor without widgets";
}

} // namespace
} // namespace oribund

#include "tests/support/FakeView.h"
#include "tests/support/TestHost.h"

#include "oribund/colour/ColourOffsetPanel.h"
#include "oribund/colour/ColourRangePanel.h"
#include "oribund/controls/rows/InputSelector.h"
#include "oribund/controls/rows/KeyframeAngleCtrls.h"
#include "oribund/controls/rows/KeyframeColourCtrls.h"
#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/controls/rows/TitledVector2dControl.h"
#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/layout/TabOrderable.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/panels/FXPanelGenerator.h"
#include "oribund/panels/ParamGroup.h"

#include <gtest/gtest.h>

#include <limits>

namespace oribund
{
namespace
{

using Details = ParamPresentationDetails;
using EntryKind = Details::Kind;
using Number = EffectValParam<double>;

/** Counts how often it places its widgets. */
class CountingPanel : public WidgetGroup
{
public:
    using WidgetGroup::WidgetGroup;
    int layouts = 0;

protected:
    void layoutChildren() override
    {
        ++layouts;
        WidgetGroup::layoutChildren();
    }
};

/** Shows what a derived panel knows. */
class OpenGenerator : public FXPanelGenerator
{
public:
    using FXPanelGenerator::calcInitialLabelWidth;
    using FXPanelGenerator::calcLabelWidth;
    using FXPanelGenerator::FXPanelGenerator;
    using FXPanelGenerator::makeParamName;
};

class Generator : public testing::Test
{
protected:
    Generator()
    {
        panel.setMinSize({0, 10});
        panel.open();
    }

    template <class P>
    Kt::Ptr<EffectValParam<P>> add(const P& value = P(), unsigned flags = 0)
    {
        auto param = Kt::makePtr<EffectValParam<P>>(infoOf(effect->paramCount() + 1, flags), value);
        effect->addParam(param);
        return param;
    }

    static ParamInfo infoOf(int number, unsigned flags = 0)
    {
        ParamInfo info;
        info.id = IdStamp(1, 0, number);
        info.description = UIString(L"Size");
        info.displayFlags = flags;
        return info;
    }

    static Details param(int number) { return {IdStamp(1, 0, number), EntryKind::Parameter, 0, {}}; }

    static Details start(int number, const wchar_t* title = L"Group", unsigned char flags = 0)
    {
        return {IdStamp(3, number, 0), EntryKind::GroupStart, flags, UIString(title)};
    }

    static Details end() { return {{}, EntryKind::GroupEnd, 0, {}}; }

    Glob* at(int number) const { return generator.findWidgetForParam(effect->findParam(IdStamp(1, 0, number)).get()); }

    std::size_t groupCount()
    {
        Vector<WidgetGroupEx*> groups;
        generator.getAllGroups(groups);
        return groups.size();
    }

    template <class W>
    static W* in(const Glob* row)
    {
        std::vector<Glob*> children;
        row->getChildren(children);
        for (Glob* child : children)
            if (auto* const found = dynamic_cast<W*>(child))
                return found;
        return nullptr;
    }

    /** Tops of the widgets of parameters, on the canvas. */
    std::vector<int> tops(std::initializer_list<int> numbers) const
    {
        std::vector<int> all;
        for (const int number : numbers)
            all.push_back(at(number)->toCanvas({}).y);
        return all;
    }

    static bool goesDown(const std::vector<int>& tops)
    {
        return std::adjacent_find(tops.begin(), tops.end(), std::greater_equal<>()) == tops.end();
    }

    test::TestHost host;
    Canvas canvas{{400, 800}};
    test::FakeVob vob;
    Kt::Ptr<EffectInstance> effect = Kt::makePtr<EffectInstance>(IdStamp(0, 0, 7), String("blur"), WString(L"Blur"));
    FXViewHandle handle = vob.add(effect);
    CountingPanel panel{WidgetGroup::InitArgs(400, 0, &canvas)};
    OpenGenerator generator{handle, &panel, nullptr};
};

TEST_F(Generator, EveryTypeHasItsControl)
{
    add(0.5);
    add(Angle{10.0});
    add(ColourData{{0.1, 0.2, 0.3, 1.0}});
    add(Vector2d{0.5, 0.5});
    add(true);
    add(ListParam<int>({{1, L"One"}, {2, L"Two"}}));
    add(ListParam<String>({{"a", L"One"}}));
    add(VideoInputParam({L"V1", L"V2"}));
    for (const double hue : {0.0, 0.1, 0.2})
        add(ColourData{{hue, hue, hue, hue}}, ParamDisplay::kColourRange | ParamDisplay::kColourOffset);
    add(ColourData(), ParamDisplay::kColourOffset);
    generator.generateUI();

    EXPECT_TRUE(dynamic_cast<KeyframeFloatCtrlsBase*>(at(1)));
    EXPECT_TRUE(dynamic_cast<KeyframeAngleCtrls*>(at(2)));
    EXPECT_TRUE(dynamic_cast<KeyframeColourCtrls*>(at(3)));
    const auto* const point = dynamic_cast<TitledVector2dControl*>(at(4));
    ASSERT_TRUE(point && in<NumericEntry>(point));
    EXPECT_TRUE(dynamic_cast<Checkbox*>(at(5)));
    EXPECT_TRUE(in<ValMenuButton>(at(6)) && in<ValMenuButton>(at(7)));
    EXPECT_TRUE(dynamic_cast<InputSelector*>(at(8)));
    EXPECT_TRUE(dynamic_cast<ColourRangePanel*>(at(9)));
    EXPECT_TRUE(at(9) == at(10) && at(10) == at(11));
    EXPECT_TRUE(dynamic_cast<ColourOffsetPanel*>(at(12)));
    EXPECT_TRUE(goesDown(tops({1, 2, 3, 4, 5, 6, 7, 8, 9, 12})));
    // The names of rows and menus, and the text of a box, begin at the same x.
    const int left = in<Label>(at(1))->toCanvas({}).x;
    EXPECT_EQ(in<Label>(at(6))->toCanvas({}).x, left);
    EXPECT_EQ(at(5)->toCanvas({}).x + Checkbox::textOffset(), left);
}

TEST_F(Generator, AnyListMakesAPanel)
{
    for (int i = 0; i < 4; ++i)
        add(0.5);
    const std::vector<Details> lists[] = {
        {start(1, L"A", Details::kHiddenGroup), start(2), param(1), end(), start(3, L"B", Details::kHiddenGroup),
         param(3), end(), end(), param(2)},                                      // one hidden in a hidden one
        {end(), param(2), start(1), end(), start(2)},                            // ends and starts that match none
        {start(1), start(2), end(), start(3), param(9), end(), end(), param(2)}, // groups of nothing
        {param(2), param(2), param(77)},                                         // twice, and none
    };
    for (const auto& list : lists) {
        effect->setPresentation(list);
        generator.generateUI();
        EXPECT_TRUE(at(2) && !at(1) && !at(3));
        EXPECT_EQ(groupCount(), 0u);
        EXPECT_EQ(at(2)->toCanvas({}).y, 0);
    }
    EXPECT_EQ(host.logged.size(), 1u); // of the one that is unbalanced

    std::vector<Details> deep;
    for (int i = 0; i < 50; ++i)
        deep.push_back(start(i));
    deep.push_back(param(1));
    effect->setPresentation(deep);
    generator.generateUI();
    EXPECT_EQ(groupCount(), static_cast<std::size_t>(PresentationPlan::kDeepestGroup));
    EXPECT_GT(in<NumericEntry>(at(1))->getWidth(), 0);
}

TEST_F(Generator, WhatStaysKeepsItsWidgetTheKeyboardAndWhatIsTyped)
{
    for (int i = 0; i < 4; ++i)
        add(0.5);
    effect->setPresentation({param(1), start(1), param(2), param(3), end(), param(4)});
    generator.generateUI();
    Glob* const second = at(2);
    auto* const entry = in<NumericEntry>(second);
    ASSERT_TRUE(entry->takeFocus());
    canvas.inject(Event::character(L'7'));
    const WString typed = entry->getShownText();
    ASSERT_TRUE(entry->isModified());
    const GlobRef<Glob> first(at(1));
    const int layouts = panel.layouts;
    generator.generateUI(); // nothing is another
    EXPECT_EQ(panel.layouts, layouts);

    effect->removeParam(IdStamp(1, 0, 1));
    effect->removeParam(IdStamp(1, 0, 3));
    effect->addParam(Kt::makePtr<EffectValParam<bool>>(infoOf(3), true));
    effect->addParam(Kt::makePtr<Number>(infoOf(5), 0.25));
    effect->setPresentation({param(3), start(2), param(4), end(), start(1), param(5), param(2), end()});
    generator.generateUI();
    EXPECT_FALSE(first);
    EXPECT_EQ(at(2), second);
    EXPECT_TRUE(entry->hasFocus());
    EXPECT_EQ(entry->getShownText(), typed);
    EXPECT_TRUE(dynamic_cast<Checkbox*>(at(3)));
    EXPECT_EQ(groupCount(), 2u);
    EXPECT_TRUE(goesDown(tops({3, 4, 5, 2})));
    EXPECT_EQ(panel.getHeight(), at(2)->toCanvas({}).y + at(2)->getHeight());
}

TEST_F(Generator, NamesEndAtTheSamePlaceAtEveryDepth)
{
    const int row = UifStd::getRowHeight();
    EXPECT_EQ(generator.calcInitialLabelWidth(), 3 * row); // without parameters
    for (int i = 0; i < 3; ++i)
        add(0.5);
    effect->setPresentation({param(1), start(1), param(2), start(2), param(3), end(), end()});
    generator.generateUI();
    const auto nameEnd = [&](int number) {
        const Glob& name = *in<Label>(at(number));
        return name.toCanvas({name.getWidth(), 0}).x;
    };
    EXPECT_EQ(nameEnd(2), nameEnd(1));
    EXPECT_EQ(nameEnd(3), nameEnd(1));
    EXPECT_EQ(in<Label>(at(3))->getWidth(), generator.calcLabelWidth() - 2 * WidgetGroupEx::childXOffset());

    ParamInfo info = infoOf(4);
    info.description = UIString(WString(std::wstring(300, L'\u05d0').c_str()));
    const auto longest = Kt::makePtr<Number>(info, 0.5);
    effect->addParam(longest);
    EXPECT_EQ(generator.calcInitialLabelWidth(), 7 * row);
    EXPECT_EQ(generator.makeParamName(longest).size(), 64u);
    generator.generateUI();
    EXPECT_NE(displayText(in<Label>(at(4))->tooltip()).view().find(std::wstring(300, L'\u05d0')), std::wstring::npos);
}

TEST_F(Generator, AGroupStaysAsTheUserLeftIt)
{
    add(0.5);
    add(0.5);
    effect->setPresentation(
        {start(1, L"A"), param(1), end(), start(2, L"B", Details::kCollapsedGroup), param(2), end()});
    generator.generateUI();
    const auto group = [&](const wchar_t* title) {
        return dynamic_cast<MinimizableGroup*>(generator.findGroup(WString(title)));
    };
    EXPECT_EQ(group(L"A")->getSizeState(), Glob::eSizeNormal);
    EXPECT_EQ(group(L"B")->getSizeState(), Glob::eSizeMinimised);
    group(L"A")->userToggleSizeState();
    group(L"B")->userToggleSizeState();
    group(L"B")->setSizeState(Glob::eSizeMinimised); // by the program

    CountingPanel other{WidgetGroup::InitArgs(400, 0, &canvas)};
    FXPanelGenerator again(handle, &other, nullptr);
    again.generateUI();
    EXPECT_EQ(dynamic_cast<MinimizableGroup*>(again.findGroup(IdStamp(3, 1, 0)))->getSizeState(), Glob::eSizeMinimised);
    EXPECT_EQ(dynamic_cast<MinimizableGroup*>(again.findGroup(IdStamp(3, 2, 0)))->getSizeState(), Glob::eSizeNormal);
    FXPanelGenerator::setInitialSizeState("", start(1, L"A"), Glob::eSizeMinimised);
    EXPECT_EQ(FXPanelGenerator::getInitialSizeState("", WString(L"A"), Glob::eSizeNormal), Glob::eSizeNormal);
}

TEST_F(Generator, APanelMayAddGroupsOfItsOwn)
{
    add(0.5);
    generator.generateUI();
    const WidgetGroupEx* const own = generator.startGroup(start(9, L"Own"));
    generator.endGroup();
    generator.endGroup(); // one too many
    EXPECT_EQ(own->parent(), &panel);
    EXPECT_GE(own->getPosition().y, at(1)->box().bottom);
    EXPECT_EQ(panel.getHeight(), own->box().bottom);
}

TEST_F(Generator, OnlyWhatIsWantedIsShownAndUnfoldedForIt)
{
    for (int i = 0; i < 3; ++i)
        add(0.5);
    effect->setPresentation({start(1, L"A", Details::kCollapsedGroup), param(1), start(2), param(2), end(), end(),
                             start(3), param(3), end()});
    generator.generateUI();
    const int height = panel.getHeight();
    generator.showOnly([](const EffectValParamBase& param) { return param.id() == IdStamp(1, 0, 2); });
    EXPECT_TRUE(at(2)->isShown() && !at(1)->isShown() && !at(3)->isShown());
    EXPECT_FALSE(generator.findGroup(IdStamp(3, 3, 0))->isVisible());
    generator.showOnly({});
    EXPECT_TRUE(at(3)->isShown() && !at(2)->isShown()); // its group is folded again
    EXPECT_EQ(panel.getHeight(), height);
}

TEST_F(Generator, EditsOfBoxMenuAndGroupAreOneStepEach)
{
    const auto on = add(true);
    const auto mode = add(ListParam<int>({{1, L"One"}, {2, L"Two"}}, 1));
    effect->setPresentation({start(1), param(1), param(2), end()});
    generator.generateUI();
    dynamic_cast<Checkbox*>(at(1))->userToggle();
    EXPECT_FALSE(on->constant());
    EXPECT_EQ(vob.edit->begun, 1);
    auto* const menu = in<ValMenuButton>(at(2));
    menu->userSelect(0);
    EXPECT_EQ(mode->constant().selectedIndex(), 0);
    const XY<int> title = at(2)->toCanvas({2, 10});
    canvas.inject(Event::mousePress(title));
    canvas.inject(Event::mouseRelease(title));
    canvas.inject(Event::mouseDoubleClick(title));
    EXPECT_EQ(menu->getSelected(), 1u);

    menu->userSelect(0);
    auto* const group = dynamic_cast<ParamGroup*>(generator.findGroup(IdStamp(3, 1, 0)));
    EXPECT_TRUE(group->userReset());
    EXPECT_TRUE(on->constant() && mode->constant().selectedIndex() == 1);
    EXPECT_EQ(vob.edit->steps, 1);
    vob.edit->readOnly = true;
    EXPECT_FALSE(group->userReset());
}

TEST_F(Generator, InputsFollowTheHost)
{
    const auto input = add(VideoInputParam({L"V1"}));
    generator.generateUI();
    vob.monitor->watch();
    auto* const menu = in<ValMenuButton>(at(1));
    input->setConstant(VideoInputParam({L"V1", L"V2", L"Still"}, 2));
    EXPECT_EQ(menu->getItems().size(), 3u);
    EXPECT_EQ(menu->getSelectedText(), L"Still");
    menu->userSelect(1);
    EXPECT_EQ(input->constant().selectedIndex(), 1);
}

TEST_F(Generator, OddRangesCanBeTold)
{
    constexpr double kNone = std::numeric_limits<double>::infinity();
    effect->addParam(Kt::makePtr<Number>(infoOf(1), 0.0, 0.0, 1e-6));
    effect->addParam(Kt::makePtr<Number>(infoOf(2), 5.0, 8.0, 2.0));
    effect->addParam(Kt::makePtr<Number>(infoOf(3), 0.0, -kNone, kNone));
    generator.generateUI();
    const auto tiny = effect->findParamAs<Number>(IdStamp(1, 0, 1));
    tiny->setConstant(3e-7);
    const WString before = in<NumericEntry>(at(1))->getText();
    tiny->setConstant(3.1e-7);
    EXPECT_NE(in<NumericEntry>(at(1))->getText(), before);
    EXPECT_TRUE(at(2) && at(3));
}

TEST_F(Generator, ALongPanelIsLaidOutOnceAndTabGoesDownIt)
{
    std::vector<Details> list;
    for (int i = 0; i < 1000; ++i) {
        add(0.5);
        if (i % 10 == 0)
            list.push_back(start(i));
        list.push_back(param(i + 1));
        if (i % 10 == 9)
            list.push_back(end());
    }
    effect->setPresentation(list);
    TabOrderManager order;
    generator.init(handle, &panel, &order);
    const int layouts = panel.layouts;
    generator.generateUI();
    EXPECT_LE(panel.layouts - layouts, 2);
    const auto topsOfStops = [&] {
        std::vector<int> tops;
        for (TabOrderable* const stop : order.tabStops())
            tops.push_back(stop->tabGlob().toCanvas({}).y);
        return tops;
    };
    EXPECT_GT(order.tabStops().size(), 3000u);
    const auto stops = topsOfStops();
    EXPECT_TRUE(std::is_sorted(stops.begin(), stops.end()));
    effect->removeParam(IdStamp(1, 0, 500));
    generator.generateUI();
    const auto later = topsOfStops();
    EXPECT_TRUE(later.size() < stops.size() && std::is_sorted(later.begin(), later.end()));
}

TEST_F(Generator, AMaskAndAChildAreShownByTheirOwnRows)
{
    const auto mask = Kt::makePtr<EffectInstance>(IdStamp(0, 0, 8), String("mask"), WString(L"Mask"));
    const auto size = Kt::makePtr<Number>(infoOf(1), 0.5, 0.0, 1.0);
    mask->addParam(size);
    effect->setMask(mask);
    const auto own = add(0.5);
    generator.generateUI(mask->id());
    in<NumericEntry>(at(1))->userCommit(L"20");
    EXPECT_DOUBLE_EQ(size->constant(), 0.2);
    EXPECT_DOUBLE_EQ(own->constant(), 0.5);
}

} // namespace
} // namespace oribund

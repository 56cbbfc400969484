#include "TableSupport.h"
#include "WidgetsSupport.h"
#include "tests/support/KeyWalk.h"

#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/entries/ScrubLabel.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/widgets/AngleIndicatorWidget.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/host/toolkit/widgets/Slider.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

/** One widget of a kind, with the keyboard if it takes it. */
class WidgetStage : public KeyStage
{
public:
    Canvas& canvas() override { return desk.canvas; }

    template <class Widget>
    Widget* give(const typename Widget::InitArgs& args = {})
    {
        auto* widget = desk.add<Widget>(args);
        widget->takeFocus();
        return widget;
    }

    WidgetGroupEx* giveTitle()
    {
        WidgetGroupEx::InitArgs titled;
        titled.title = L"Title";
        auto* group = desk.add<WidgetGroupEx>(titled);
        group->setTitleEditable(true);
        group->takeFocus();
        return group;
    }

    NumericEntry* giveNumber()
    {
        auto* entry = desk.add<NumericEntry>(40, 0);
        entry->setDataAdaptor(number);
        entry->setStep(1.0);
        return entry;
    }

    TableWidget* giveTable(TableWidget::Selects selects)
    {
        TableWidget::InitArgs args(300, 146);
        args.selects = selects;
        auto* table = desk.add<TableWidget>(args);
        table->setAdaptor(&list);
        table->takeFocus();
        return table;
    }

    TableList list{{L"one", L"1"}, {L"two", L"2"}};
    Kt::Ptr<StoreAdaptor<WString>> number = Kt::makePtr<StoreAdaptor<WString>>(WString(L"5"));
    Desk desk;
};

struct Kind {
    const char* name;
    std::function<void(WidgetStage&)> fill;
    int used; ///< of the presses with nothing or Shift held, how many mean something
};

TEST(Keys, AreTakenExactlyWhenAWidgetSaysThatItUsesThem)
{
    DropDownMenuButton::InitArgs items;
    items.items = {L"Normal", L"Screen"};
    TextBox::InitArgs locked;
    locked.readOnly = true;
    MinimizableGroup::InitArgs folding;
    folding.title = L"Title";
    constexpr int kTab = 2;
    const std::vector<Kind> kinds{
        {"label", [](WidgetStage& s) { s.give<Label>(); }, 0},
        {"button", [](WidgetStage& s) { s.give<Button>(); }, kTab + 4},
        {"check box", [](WidgetStage& s) { s.give<Checkbox>(); }, kTab + 2},
        {"swatch", [](WidgetStage& s) { s.give<ColourSwatch>(); }, kTab + 4},
        {"chooser", [](WidgetStage& s) { s.give<ColourSwatch>()->userClick(); }, kTab + 6},
        {"slider", [](WidgetStage& s) { s.give<Slider>(); }, kTab + 16},
        {"dragged slider",
         [](WidgetStage& s) {
             s.give<Slider>(), s.desk.press({9, 9});
         },
         kTab + 18},
        {"dial", [](WidgetStage& s) { s.give<AngleIndicatorWidget>(); }, kTab + 8},
        {"drop-down", [&](WidgetStage& s) { s.give<DropDownMenuButton>(items); }, kTab + 20},
        {"open drop-down", [&](WidgetStage& s) { s.give<DropDownMenuButton>(items)->userOpenMenu(); }, kTab + 20},
        {"text", [](WidgetStage& s) { s.give<TextBox>(); }, kTab + 14},
        {"typed text", [](WidgetStage& s) { s.give<TextBox>()->userEdit(L"x"); }, kTab + 16},
        {"locked text", [&](WidgetStage& s) { s.give<TextBox>(locked); }, kTab + 14},
        {"number", [](WidgetStage& s) { s.giveNumber()->takeFocus(); }, kTab + 20},
        {"dragged number",
         [](WidgetStage& s) {
             s.giveNumber(), s.desk.press({50, 9}), s.desk.drag({70, 9});
         },
         4},
        {"dragged name",
         [](WidgetStage& s) {
             s.give<ScrubLabel>(Label::InitArgs(30, 20))->setEntry(s.giveNumber());
             s.desk.press({5, 5});
             s.desk.drag({25, 5});
         },
         4},
        {"group", [&](WidgetStage& s) { s.give<MinimizableGroup>(folding); }, kTab + 8},
        {"named group", [](WidgetStage& s) { s.giveTitle(); }, kTab + 2},
        {"title entry", [](WidgetStage& s) { s.giveTitle()->beginTitleEdit(); }, kTab + 16},
        {"cells", [](WidgetStage& s) { s.giveTable(TableWidget::Selects::Cells); }, kTab + 26},
        {"rows", [](WidgetStage& s) { s.giveTable(TableWidget::Selects::Rows); }, kTab + 22},
        {"locked cells", [](WidgetStage& s) { s.list.locked = true, s.giveTable(TableWidget::Selects::Cells); },
         kTab + 16},
        {"cell entry",
         [](WidgetStage& s) {
             s.giveTable(TableWidget::Selects::Cells)->edit().begin({1, 0});
         },
         kTab + 16},
        {"empty table", [](WidgetStage& s) { s.list.fill(0), s.giveTable(TableWidget::Selects::Cells); }, kTab},
    };
    for (const Kind& kind : kinds) {
        const testing::ScopedTrace trace(__FILE__, __LINE__, kind.name);
        const auto make = [&] {
            auto stage = std::make_unique<WidgetStage>();
            kind.fill(*stage);
            return stage;
        };
        walkKeys(make);
        const auto stage = make();
        int plain = 0;
        for (const Event& press : everyPress()) {
            const bool used = EventRouter::of(stage->canvas()).usesKey(press);
            const bool isPlain = (press.modifiers & ~Event::kShift) == 0;
            plain += used && isPlain ? 1 : 0;
            EXPECT_FALSE(used && press.key == Key::Character && !isPlain)
                << nameOf(press) << " is a command of the window";
        }
        EXPECT_EQ(plain, kind.used);
    }
}

} // namespace
} // namespace oribund::test

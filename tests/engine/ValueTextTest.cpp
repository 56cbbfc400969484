#include "tests/support/SampleEdit.h"
#include "tests/support/TestHost.h"

#include "oribund/host/base/text/ColourText.h"
#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/edit/monitor/FXVob.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"
#include "oribund/host/toolkit/widgets/ValCheckbox.h"
#include "oribund/host/toolkit/widgets/ValColourSwatch.h"
#include "oribund/panels/FXPanelGenerator.h"
#include "workbench/engine/worker/catalogue/CatalogueReader.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/host/ModelVob.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace workbench
{
namespace
{

using namespace oribund;

/** What stands in a row's editors, from left to right. */
WString shownIn(Glob& row)
{
    std::vector<Glob*> children{&row};
    row.getChildren(children);
    std::vector<WString> texts;
    bool isAngle = false;
    for (Glob* child : children) {
        if (const auto* entry = dynamic_cast<NumericEntry*>(child)) {
            const bool isTurns = entry->getFormat().unit == L"\u00d7";
            isAngle = isAngle || isTurns;
            if (!isTurns || (entry->getWidth() > 0 && entry->getText() != L"0\u00d7"))
                texts.push_back(entry->getText());
        } else if (const auto* box = dynamic_cast<ValCheckbox*>(child)) {
            texts.push_back(box->isChecked() ? L"yes" : L"no");
        } else if (const auto* menu = dynamic_cast<ValMenuButton*>(child)) {
            texts.push_back(menu->getSelectedText());
        } else if (const auto* swatch = dynamic_cast<ValColourSwatch*>(child)) {
            const Colour colour = swatch->getColour();
            texts.push_back(hexText(colour));
            if (colour.a < 1.0)
                texts.back() = texts.back() + L" " + NumberFormat::percentage(0).textOf(colour.a);
        }
    }
    WString all;
    for (const WString& text : texts)
        all = all.empty() ? text : all + (isAngle ? L" " : L", ") + text;
    return all;
}

/** Values over the whole range, the odd ones among them. */
std::vector<ParamValue> valuesFor(EffectValParamBase& param)
{
    constexpr unsigned kNoColour =
        ParamDisplay::kColourRange | ParamDisplay::kColourOffset | ParamDisplay::kTonalRanges;
    std::vector<ParamValue> values;
    if (param.displayFlags() & kNoColour)
        return values; // their numbers stand on a strip or a wheel
    visitParam(param, [&values]<class P>(EffectValParam<P>& typed) {
        P value = typed.getDefault();
        if constexpr (isNumericParam<P>) {
            const auto low = ParamTraits<P>::split(typed.getMin());
            const auto high = ParamTraits<P>::split(typed.getMax());
            for (const double part : {0.0, 0.31372, 0.5, 1.0}) {
                auto numbers = ParamTraits<P>::split(value);
                for (std::size_t i = 0; i < numbers.size(); ++i)
                    numbers[i] = std::max(low[i], -1e7) + part * (std::min(high[i], 1e7) - std::max(low[i], -1e7));
                values.emplace_back(ParamTraits<P>::join(numbers));
            }
        } else if constexpr (isChoiceParam<P>) {
            for (int i = value.size() - 1; i >= 0; --i)
                if (value.select(i))
                    values.emplace_back(value);
        } else {
            values.emplace_back(!value);
        }
    });
    return values;
}

struct RealBench {
    explicit RealBench(const EffectCatalogue& catalogue)
        : edit(Kt::makePtr<EditModel>(emptyEdit("test", {}), catalogue))
        , editor(*edit)
        , picture(editor.addClip({sample::media(), 0, 100, sample::kVideo, kNoObject}, 0).object)
        , sound(editor.addClip({sample::media(), 0, 100, kNoObject, sample::kAudio}, 0).object)
    {
        vob.setEdit(edit);
    }

    EditModelPtr edit;
    Editor editor;
    ObjectId picture;
    ObjectId sound;
    ModelVob vob;
};

TEST(ValueText, UndoSaysOfEveryParameterWhatItsRowSays)
{
    test::TestHost host;
    Canvas canvas({600, 400});
    const auto session = MltSession::open();
    const CatalogueResult result = readCatalogue(*session);
    RealBench bench(result.catalogue);
    int compared = 0;
    for (const auto& entry : result.catalogue.all()) {
        if (!entry->blockedBecause.empty())
            continue;
        const bool isSound = entry->medium == EffectDescription::Medium::Audio;
        const ObjectId id = bench.editor.addEffect(isSound ? bench.sound : bench.picture, entry->service).object;
        const auto effect = bench.edit->timeline().findEffect(id);
        ASSERT_TRUE(effect) << entry->service;
        const FXViewHandle handle(bench.vob.getEffectMonitor()->getFXVob(effect));
        WidgetGroup panel(WidgetGroup::InitArgs(600, 0, &canvas));
        FXPanelGenerator generator(handle, &panel, nullptr);
        generator.generateUI();
        for (int i = 0; i < effect->paramCount(); ++i) {
            const auto param = effect->paramAt(i);
            Glob* const row = generator.findWidgetForParam(param.get());
            if (!row)
                continue; // it is there while another parameter has a certain value
            for (const ParamValue& value : valuesFor(*param)) {
                const WString before = shownIn(*row);
                const ParamValue was = param->constantValue();
                param->setConstantValue(value);
                if (param->constantValue() == was)
                    continue;
                bench.edit->undoStack().endGesture();
                const WString after = shownIn(*row);
                const WString name = rowNameOf(*param);
                const WString expected = before == after ? L"Change " + name : name + L" " + before + L" to " + after;
                ASSERT_EQ(toUTF8(bench.edit->undoStack().undoTitle()).view(), toUTF8(expected).view())
                    << entry->service << ", " << param->name().c_str();
                ++compared;
            }
        }
        bench.editor.removeEffect(id);
    }
    EXPECT_GT(compared, 4000);
}

} // namespace
} // namespace workbench

#include "tests/support/SampleEdit.h"
#include "tests/support/TestHost.h"

#include "oribund/colour/TolerantRangeEditor.h"
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
#include "workbench/store/ProjectFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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

/** Gives the parameter another value, as a user does who has only its row. False for a row without an editor. */
bool editThrough(Glob& row, EffectValParamBase& param, int which)
{
    std::vector<Glob*> globs{&row};
    for (std::size_t i = 0; i < globs.size(); ++i)
        globs[i]->getChildren(globs);
    for (Glob* const glob : globs) {
        if (auto* const strip = dynamic_cast<TolerantRangeEditor*>(glob)) {
            if (which-- > 0)
                continue;
            const ColourData range = strip->getRanges();
            strip->userSetComponent(2, (range[1] + range[2]) / 2.0);
            return true;
        }
        if (auto* const box = dynamic_cast<ValCheckbox*>(glob)) {
            box->userToggle();
            return true;
        }
        if (auto* const swatch = dynamic_cast<ValColourSwatch*>(glob)) {
            swatch->userClick();
            swatch->userChoose({0.25, 0.5, 0.75});
            swatch->userAccept();
            return true;
        }
        if (auto* const menu = dynamic_cast<ValMenuButton*>(glob)) {
            menu->userSelect(menu->getSelected() == 0 ? 1 : 0);
            return true;
        }
        auto* const entry = dynamic_cast<NumericEntry*>(glob);
        if (!entry || entry->getFormat().unit == L"\u00d7")
            continue;
        const auto range = entry->accessible().number.value_or(AccessibleNumber{0.0, 0.0, 1.0, 0.0});
        const double low = std::max(range.min, -1e6);
        const double high = std::min(range.max, 1e6);
        const ParamValue was = param.constantValue();
        for (const double part : {0.7, 0.2})
            if (entry->userSetNumber(std::round((low + part * (high - low)) * 100.0) / 100.0) &&
                param.constantValue() != was)
                return true;
        return entry->userSetNumber(high);
    }
    return false;
}

/** The parameters of an effect as they come back from a file. */
std::vector<ParamData> savedAndOpened(const RealBench& bench, const EffectCatalogue& catalogue, ObjectId id)
{
    const ProjectReading read = parseProject(projectXml(*bench.edit, {}, {}), {}, catalogue);
    EXPECT_TRUE(read) << read.error;
    const EditModelPtr opened = read ? Kt::makePtr<EditModel>(*read.edit, catalogue) : nullptr;
    const auto effect = opened ? opened->timeline().findEffect(id) : nullptr;
    return effect ? effect->data().params : std::vector<ParamData>();
}

TEST(ValueText, ARowEditsItsParameterAndUndoTextFileAndValueAgree)
{
    test::TestHost host;
    Canvas canvas({600, 400});
    const CatalogueResult result = readCatalogue(*MltSession::open());
    RealBench bench(result.catalogue);
    UndoStack& undo = bench.edit->undoStack();
    int edited = 0;
    for (const auto& entry : result.catalogue.all()) {
        if (!entry->blockedBecause.empty())
            continue;
        const bool isSound = entry->medium == EffectDescription::Medium::Audio;
        const ObjectId id = bench.editor.addEffect(isSound ? bench.sound : bench.picture, entry->service).object;
        const auto effect = bench.edit->timeline().findEffect(id);
        ASSERT_TRUE(effect) << entry->service;
        WidgetGroup panel(WidgetGroup::InitArgs(600, 0, &canvas));
        FXPanelGenerator generator(FXViewHandle(bench.vob.getEffectMonitor()->getFXVob(effect)), &panel, nullptr);
        generator.generateUI();
        int sameRow = 0;
        const Glob* last = nullptr;
        for (const auto& param : effect->params()) {
            SCOPED_TRACE(entry->service + ", " + param->name().c_str());
            Glob* const row = generator.findWidgetForParam(param.get());
            if (!row)
                continue; // not while the lists stand as they do
            sameRow = row == last ? sameRow + 1 : 0;
            last = row;
            const ParamValue was = param->constantValue();
            const std::size_t steps = undo.position();
            ASSERT_TRUE(editThrough(*row, *param, sameRow));
            undo.endGesture();
            const ParamValue is = param->constantValue();
            if (is == was && std::holds_alternative<ListParam<String>>(is))
                continue; // a list of one item
            ASSERT_FALSE(is == was);
            ASSERT_EQ(undo.position(), steps + 1);
            const WString texts[] = {valueText(*param, was), valueText(*param, is)};
            const WString name = rowNameOf(*param);
            ASSERT_EQ(
                toUTF8(undo.undoTitle()).view(),
                toUTF8(texts[0] == texts[1] ? L"Change " + name : name + L" " + texts[0] + L" to " + texts[1]).view());
            undo.undo();
            ASSERT_TRUE(param->constantValue() == was);
            undo.redo();
            ASSERT_TRUE(param->constantValue() == is);
            ++edited;
        }
        EXPECT_EQ(savedAndOpened(bench, result.catalogue, id), effect->data().params) << entry->service;
        bench.editor.removeEffect(id);
    }
    EXPECT_GT(edited, 1200);
}

} // namespace
} // namespace workbench

// The panels of all effects that are installed, made once and taken away again, headless.

#include "tests/support/SampleEdit.h"
#include "tests/support/TestHost.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"
#include "oribund/panels/FXPanelGenerator.h"
#include "workbench/engine/worker/catalogue/CatalogueReader.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/host/ModelVob.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <vector>

namespace workbench
{
namespace
{

using namespace oribund;

constexpr unsigned short kWidth = 420;

/** A picture and a sound with every effect that may be added to them. */
class Catalogue
{
public:
    explicit Catalogue(const EffectCatalogue& effects)
        : edit(Kt::makePtr<EditModel>(emptyEdit("bench", {}), effects))
        , editor(*edit)
    {
        vob.setEdit(edit);
        const ObjectId picture = editor.addClip({sample::media(), 0, 100, sample::kVideo, kNoObject}, 0).object;
        const ObjectId sound = editor.addClip({sample::media(), 0, 100, kNoObject, sample::kAudio}, 0).object;
        for (const auto& entry : effects.all()) {
            const bool isSound = entry->medium == EffectDescription::Medium::Audio;
            const ObjectId id = editor.addEffect(isSound ? sound : picture, entry->service).object;
            if (const auto effect = edit->timeline().findEffect(id))
                handles.emplace_back(vob.getEffectMonitor()->getFXVob(effect));
        }
    }

    void makePanels()
    {
        for (const FXViewHandle& handle : handles) {
            WidgetGroup panel(WidgetGroup::InitArgs(kWidth, 0, &canvas));
            FXPanelGenerator(handle, &panel, nullptr).generateUI();
        }
    }

    test::TestHost host;
    Canvas canvas{{kWidth, 600}};
    EditModelPtr edit;
    Editor editor;
    ModelVob vob;
    std::vector<FXViewHandle> handles;
};

void makeAllPanels(benchmark::State& state)
{
    const auto session = MltSession::open();
    const CatalogueResult result = readCatalogue(*session);
    Catalogue catalogue(result.catalogue);
    catalogue.makePanels();
    const std::size_t before = mallinfo2().uordblks;
    for (auto _ : state)
        catalogue.makePanels();
    const std::size_t after = mallinfo2().uordblks;
    state.counters["panels"] = static_cast<double>(catalogue.handles.size());
    state.counters["bytesKept"] = static_cast<double>(after > before ? after - before : 0);
}

BENCHMARK(makeAllPanels)->Iterations(100)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace workbench

// The strips of a colour range with a histogram on each, as a window's back store gets them, beside the least that Qt
// can do for a gradient: one picture of a line of pixels, stretched.

#include "skin/QPainterRenderer.h"
#include "tests/support/FakeView.h"
#include "tests/support/TestHost.h"

#include "oribund/colour/ColourRangePanel.h"
#include "oribund/colour/TolerantRangeEditor.h"
#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/edit/iFrameStatistics.h"
#include "oribund/host/effects/params/EffectValParam.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

#include <array>
#include <cmath>
#include <memory>

namespace oribund
{
namespace
{

constexpr int kWidth = 1000;
constexpr int kHeight = 24;
constexpr Kt::Box<double> kStrip{0.0, 0.0, kWidth, kHeight};

QImage backStore()
{
    QImage store(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    store.fill(Qt::black);
    return store;
}

/** A viewer whose picture has all colours, unevenly. */
class Viewer : public test::FakeVob, private iFrameStatistics
{
public:
    Viewer()
    {
        int bin = 0;
        for (float& count : counted_) {
            count = static_cast<float>(200.0 + 150.0 * std::sin(bin * 0.11) + 40.0 * (bin % 5));
            ++bin;
        }
    }

    iFrameStatistics* frameStatistics() override { return this; }

private:
    const Histogram* histogram(const IdStamp&, ColourAxis) override { return &counted_; }

    Notifier<iFrameStatistics>& changes() override { return changes_; }

    Histogram counted_{};
    Notifier<iFrameStatistics> changes_;
};

class Strips
{
public:
    Strips()
    {
        const std::array<ColourData, ColourRangePanel::kRows> ranges{
            ColourData{{350.0, 355.0, 20.0, 40.0}}, ColourData{{0.1, 0.2, 0.8, 0.9}}, ColourData{{0.1, 0.2, 0.8, 0.9}}};
        for (const ColourData& range : ranges) {
            ParamInfo info;
            info.id = IdStamp(1, 0, effect_->paramCount() + 1);
            info.displayFlags = ParamDisplay::kColourRange;
            effect_->addParam(Kt::makePtr<EffectValParam<ColourData>>(info, range));
        }
        panel = std::make_unique<ColourRangePanel>(viewer_.add(effect_), 0U, static_cast<unsigned short>(kWidth),
                                                   Palette(), &canvas_);
        panel->open();
    }

private:
    test::TestHost host_;
    Viewer viewer_;
    Canvas canvas_{{kWidth, 200}};
    Kt::Ptr<EffectInstance> effect_ = Kt::makePtr<EffectInstance>(IdStamp(1, 0, 0), String("bench"), WString(L"Bench"));

public:
    std::unique_ptr<ColourRangePanel> panel;
};

void drawStrip(benchmark::State& state)
{
    using Painter = void (*)(TolerantRangeEditor&, CanvasRenderer&, const Kt::Box<double>&, ColourRangePanel&);
    constexpr std::array<Painter, ColourRangePanel::kRows> kPainters{
        &ColourRangePanel::drawHueSlider, &ColourRangePanel::drawSatSlider, &ColourRangePanel::drawLumSlider};
    const auto row = static_cast<std::size_t>(state.range(0));
    Strips strips;
    QImage store = backStore();
    QPainter painter(&store);
    qt::QPainterRenderer renderer(painter);
    for (auto _ : state)
        kPainters[row](*strips.panel->editorOf(row), renderer, kStrip, *strips.panel);
}

BENCHMARK(drawStrip)->ArgName("axis")->DenseRange(0, 2);

/** As in a drag on the strip of hues, which goes with the range. */
void drawMovedStrip(benchmark::State& state)
{
    Strips strips;
    QImage store = backStore();
    QPainter painter(&store);
    qt::QPainterRenderer renderer(painter);
    TolerantRangeEditor& editor = *strips.panel->editorOf(0);
    double hue = 0.0;
    for (auto _ : state) {
        hue += 1.0;
        editor.setRangeDefinition({{hue, hue + 5.0, hue + 20.0, hue + 30.0}});
        ColourRangePanel::drawHueSlider(editor, renderer, kStrip, *strips.panel);
    }
}

BENCHMARK(drawMovedStrip);

void drawStretchedPicture(benchmark::State& state)
{
    QImage line(kWidth, 1, QImage::Format_ARGB32_Premultiplied);
    for (int i = 0; i < kWidth; ++i)
        line.setPixelColor(i, 0, QColor::fromHsv(i * 359 / kWidth, 255, 255));
    QImage store = backStore();
    QPainter painter(&store);
    for (auto _ : state)
        painter.drawImage(QRectF(0.0, 0.0, kWidth, kHeight), line);
}

BENCHMARK(drawStretchedPicture);

} // namespace
} // namespace oribund

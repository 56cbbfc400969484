#include "oribund/host/canvas/UifStd.h"

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/TextMeasurer.h"

#include <algorithm>

namespace oribund
{

struct UifStd::State {
    Metrics metrics;
    ColourScheme scheme = ColourScheme::dark();
    TableTextMeasurer tableMeasurer;
    const TextMeasurer* measurer = nullptr;
};

UifStd::Metrics UifStd::Metrics::forFontSize(int fontSize)
{
    constexpr int kSmallest = 8;
    const Metrics standard;
    const int size = std::max(fontSize, kSmallest);
    const auto inProportion = [&](int length) {
        return std::max(1, (length * size + standard.fontSize / 2) / standard.fontSize);
    };
    Metrics m;
    m.fontSize = size;
    m.widgetGap = inProportion(standard.widgetGap);
    m.rowGap = inProportion(standard.rowGap);
    m.rowHeight = inProportion(standard.rowHeight);
    m.controlHeight = inProportion(standard.controlHeight);
    m.indentWidth = inProportion(standard.indentWidth);
    m.groupIndent = inProportion(standard.groupIndent);
    m.scrollBarWidth = inProportion(standard.scrollBarWidth);
    return m;
}

UifStd& UifStd::instance()
{
    static UifStd standard;
    return standard;
}

UifStd::State& UifStd::state()
{
    static State theState;
    return theState;
}

int UifStd::getWidgetGap()
{
    return state().metrics.widgetGap;
}

int UifStd::getRowGap()
{
    return state().metrics.rowGap;
}

int UifStd::getRowHeight()
{
    return state().metrics.rowHeight;
}

int UifStd::getControlHeight()
{
    return state().metrics.controlHeight;
}

int UifStd::getIndentWidth()
{
    return state().metrics.indentWidth;
}

int UifStd::getGroupIndent()
{
    return state().metrics.groupIndent;
}

int UifStd::getScrollBarWidth()
{
    return state().metrics.scrollBarWidth;
}

int UifStd::getDefaultFontSize()
{
    return state().metrics.fontSize;
}

Glib::FontDesc UifStd::getDefaultFont()
{
    Glib::FontDesc font;
    font.size = getDefaultFontSize();
    return font;
}

const ColourScheme& UifStd::getColourScheme()
{
    return state().scheme;
}

int UifStd::measure(const WString& text)
{
    return measure(text, getDefaultFont());
}

int UifStd::measure(const WString& text, const Glib::FontDesc& font)
{
    return instance().textMeasurer().width(text.view(), font);
}

int UifStd::lineHeight(const Glib::FontDesc& font)
{
    return instance().textMeasurer().lineHeight(font);
}

void UifStd::setMetrics(const Metrics& metrics)
{
    state().metrics = metrics;
}

const UifStd::Metrics& UifStd::metrics() const
{
    return state().metrics;
}

void UifStd::setColourScheme(const ColourScheme& scheme)
{
    state().scheme = scheme;
}

void UifStd::setTextMeasurer(const TextMeasurer* measurer)
{
    state().measurer = measurer;
}

const TextMeasurer& UifStd::textMeasurer() const
{
    const State& s = state();
    if (s.measurer)
        return *s.measurer;
    return s.tableMeasurer;
}

} // namespace oribund

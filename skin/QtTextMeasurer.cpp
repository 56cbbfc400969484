#include "skin/QtTextMeasurer.h"

#include "skin/QtConversions.h"

#include <QFont>

#include <algorithm>
#include <cmath>

namespace oribund::qt
{

const QFontMetricsF& QtTextMeasurer::metricsOf(const oribund::Glib::FontDesc& font) const
{
    const auto it = std::find_if(known_.begin(), known_.end(), [&](const Known& known) { return known.font == font; });
    if (it != known_.end())
        return it->metrics;
    return known_.emplace_back(Known{font, QFontMetricsF(toQt(font))}).metrics;
}

int QtTextMeasurer::width(std::wstring_view text, const oribund::Glib::FontDesc& font) const
{
    const QString shown = QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
    return static_cast<int>(std::ceil(metricsOf(font).horizontalAdvance(shown)));
}

int QtTextMeasurer::lineHeight(const oribund::Glib::FontDesc& font) const
{
    return static_cast<int>(std::ceil(metricsOf(font).height()));
}

} // namespace oribund::qt

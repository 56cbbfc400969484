#include "skin/QtTextMeasurer.h"

#include "skin/QtConversions.h"

#include <QFont>

#include <algorithm>
#include <cmath>

namespace oribund::qt
{

namespace
{
constexpr std::size_t kMostKept = 4096;
constexpr std::size_t kLongestKept = 100;
} // namespace

QtTextMeasurer::Known& QtTextMeasurer::knownOf(const oribund::Glib::FontDesc& font) const
{
    const auto it = std::find_if(known_.begin(), known_.end(), [&](const Known& known) { return known.font == font; });
    if (it != known_.end())
        return *it;
    return known_.emplace_back(Known{font, QFontMetricsF(toQt(font)), {}});
}

int QtTextMeasurer::width(std::wstring_view text, const oribund::Glib::FontDesc& font) const
{
    Known& known = knownOf(font);
    if (const auto found = known.widths.find(text); found != known.widths.end())
        return found->second;
    const QString shown = QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
    const int width = static_cast<int>(std::ceil(known.metrics.horizontalAdvance(shown)));
    if (text.size() > kLongestKept)
        return width;
    if (known.widths.size() == kMostKept)
        known.widths.clear();
    known.widths.emplace(text, width);
    return width;
}

int QtTextMeasurer::lineHeight(const oribund::Glib::FontDesc& font) const
{
    return static_cast<int>(std::ceil(knownOf(font).metrics.height()));
}

} // namespace oribund::qt

#pragma once

#include "skin/Export.h"

#include "oribund/host/canvas/TextMeasurer.h"

#include <QFontMetricsF>

#include <vector>

namespace oribund::qt
{

/** Measures texts in the fonts that QPainterRenderer draws them in. Needs a QGuiApplication. */
class ORIBUND_QT_API QtTextMeasurer final : public oribund::TextMeasurer
{
public:
    int width(std::wstring_view text, const oribund::Glib::FontDesc& font) const override;
    int lineHeight(const oribund::Glib::FontDesc& font) const override;

    /** The application's font has changed. */
    void forgetFonts() { known_.clear(); }

private:
    struct Known {
        oribund::Glib::FontDesc font;
        QFontMetricsF metrics;
    };

    const QFontMetricsF& metricsOf(const oribund::Glib::FontDesc& font) const;

    mutable std::vector<Known> known_;
};

} // namespace oribund::qt

#pragma once

#include "skin/Export.h"

#include "oribund/host/canvas/TextMeasurer.h"

#include <QFontMetricsF>

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
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
    /** So that a text is looked up as it comes. */
    struct TextHash : std::hash<std::wstring_view> {
        using is_transparent = void;
    };

    struct Known {
        oribund::Glib::FontDesc font;
        QFontMetricsF metrics;
        /** Panels have the same names whenever they are made, and shaping a text costs more than the row around it. */
        std::unordered_map<std::wstring, int, TextHash, std::equal_to<>> widths;
    };

    Known& knownOf(const oribund::Glib::FontDesc& font) const;

    mutable std::vector<Known> known_;
};

} // namespace oribund::qt

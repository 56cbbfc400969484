#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/canvas/FontDesc.h"

namespace oribund
{

class ColourScheme;
class TextMeasurer;

/**
 * The standard look: metrics, default font and colours from which every size and colour of a panel derives.
 *
 * One per process; the host sets it up before it opens the first panel. Logical pixels; user-interface thread only.
 */
class ORIBUND_API UifStd
{
public:
    /** The sizes that follow from the size of the interface font. */
    struct Metrics {
        int fontSize = 13;
        int widgetGap = 6;      ///< between neighbouring controls, and the usual tolerance of a click
        int rowGap = 4;         ///< between rows
        int rowHeight = 24;     ///< of a row of controls
        int controlHeight = 20; ///< of a control that stands inside a row or a title bar
        int indentWidth = 2;    ///< by which marks are set in; below the widget gap
        int groupIndent = 12;   ///< of what lies inside a group
        int scrollBarWidth = 12;

        /** All of them in proportion to the default ones; sizes below 8 are taken as 8. */
        static Metrics forFontSize(int fontSize);
    };

    static UifStd& instance();

    static int getWidgetGap();
    static int getRowGap();
    static int getRowHeight();
    static int getControlHeight();
    static int getIndentWidth();
    static int getGroupIndent();
    static int getScrollBarWidth();
    static int getDefaultFontSize();
    static Glib::FontDesc getDefaultFont();
    static const ColourScheme& getColourScheme();

    /** The width of a text, by the measurer in use. */
    static int measure(const WString& text);
    static int measure(const WString& text, const Glib::FontDesc& font);

    static int lineHeight(const Glib::FontDesc& font);

    void setMetrics(const Metrics& metrics);
    const Metrics& metrics() const;

    void setColourScheme(const ColourScheme& scheme);

    /** Who measures texts from now on; null for the built-in table. Not owned. */
    void setTextMeasurer(const TextMeasurer* measurer);
    const TextMeasurer& textMeasurer() const;

    UifStd(const UifStd&) = delete;
    UifStd& operator=(const UifStd&) = delete;

private:
    struct State;

    UifStd() = default;
    ~UifStd() = default;
    static State& state();
};

} // namespace oribund

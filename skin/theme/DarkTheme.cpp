#include "skin/theme/DarkTheme.h"

#include "skin/QtConversions.h"
#include "skin/QtTextMeasurer.h"
#include "skin/theme/DarkStyle.h"

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"

#include <QApplication>
#include <QFontInfo>
#include <QToolTip>

#include <utility>

namespace oribund::qt
{

using oribund::Colour;
using oribund::ColourScheme;
using oribund::UifStd;

namespace
{

// $name stands for a colour or a length, see styleSheet().
constexpr const char* kStyleSheet = R"(
QMainWindow, QDialog { background: $window; }
QMainWindow::separator { background: $ground; width: 3px; height: 3px; }
QMainWindow::separator:hover { background: $focus; }
QSplitter::handle { background: $ground; }
QSplitter::handle:hover { background: $focus; }
QMenuBar { background: $ground; color: $text; padding: 1px; }
QMenuBar::item { padding: $pad2 $pad4; background: transparent; }
QMenuBar::item:selected { background: $raised; }
QMenu { background: $field; color: $text; border: 1px solid $border; padding: $pad1 0; }
QMenu::item { padding: $pad2 $pad8 $pad2 $pad8; }
QMenu::item:selected { background: $accent; color: $accentText; }
QMenu::item:disabled { color: $disabled; background: transparent; }
QMenu::separator { height: 1px; background: $line; margin: $pad1 $pad2; }
QMenu::indicator, QMenu::icon { left: $pad2; width: $glyph; height: $glyph; }
QToolBar { background: $window; border: none; spacing: 2px; padding: $pad1; }
QToolBar::separator { background: $line; width: 1px; height: 1px; margin: $pad1; }
QStatusBar { background: $ground; color: $text; }
QStatusBar::item { border: none; }
QDockWidget { color: $heading; }
QDockWidget::title { background: $ground; padding: $pad2; text-align: left; }
QToolTip { background: $tip; color: $heading; border: 1px solid $border; padding: $pad1; }
QPushButton { background: $button; color: $buttonText; border: 1px solid $border;
    padding: $pad1 $pad5; min-height: $control; }
QPushButton:hover { background: $raised; }
QPushButton:pressed, QPushButton:checked { background: $accent; color: $accentText; }
QPushButton:default { border-color: $accent; }
QPushButton:focus { border-color: $focus; }
QPushButton:disabled { color: $disabled; background: $window; border-color: $line; }
QPushButton:flat { background: transparent; border-color: transparent; }
QToolButton { background: transparent; color: $buttonText; border: 1px solid transparent;
    padding: $pad1; }
QToolButton:hover { background: $raised; }
QToolButton:pressed, QToolButton:checked { background: $accent; color: $accentText; }
QToolButton:focus { border-color: $focus; }
QToolButton:disabled { color: $disabled; background: transparent; }
QToolButton::menu-indicator { width: 0; }
QComboBox QAbstractItemView { background: $field; border: 1px solid $border; selection-background-color: $accent; }
QAbstractItemView { background: $field; alternate-background-color: $stripe; color: $fieldText; border: 1px solid $line;
    selection-background-color: $accent; selection-color: $accentText; outline: none; }
QAbstractItemView:focus { border-color: $focus; }
QAbstractItemView::item { min-height: $control; }
QAbstractItemView::item:hover:!selected { background: $stripe; }
QAbstractScrollArea { border: none; }
QHeaderView { background: $window; }
QHeaderView::section { background: $window; color: $heading; border: none; border-right: 1px solid $line;
    border-bottom: 1px solid $line; padding: $pad1 $pad2; }
QTabBar::tab { background: $ground; color: $text; border: none; padding: $pad2 $pad5; border-bottom: 2px solid $ground; }
QTabBar::tab:selected { background: $window; color: $heading; border-bottom: 2px solid $accent; }
QTabBar::tab:hover:!selected { color: $heading; }
QTabBar::tab:focus { border-bottom: 2px solid $focus; }
QTabWidget::pane { border: 1px solid $line; }
QProgressBar { background: $field; color: $heading; border: 1px solid $border; text-align: center;
    min-height: $control; }
QProgressBar::chunk { background: $accent; }
QScrollBar { background: $ground; border: none; margin: 0; }
QScrollBar:vertical { width: $scroll; }
QScrollBar:horizontal { height: $scroll; }
QScrollBar::handle { background: $border; border-radius: 3px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 24px; }
QScrollBar::handle:horizontal { min-width: 24px; }
QScrollBar::handle:hover { background: $disabled; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QGroupBox { border: 1px solid $line; margin-top: $row; padding: $pad2; }
QGroupBox::title { subcontrol-origin: margin; left: $pad2; color: $heading; }
QSlider::groove:horizontal { background: $field; border: 1px solid $border; height: 4px; }
QSlider::sub-page:horizontal { background: $accent; border: 1px solid $border; }
QSlider::handle:horizontal { background: $text; width: 10px; margin: -5px 0; }
QSlider::handle:horizontal:focus { background: $focus; }
)";

using Substitution = std::pair<QString, QString>;

QString css(const Colour& colour)
{
    return toQt(colour).name();
}

QList<Substitution> colourNames(const ColourScheme& scheme)
{
    return {
        {"window", css(scheme.window())},
        {"ground", css(scheme.window().scaled(0.8))},
        {"stripe", css(scheme.field().mix(scheme.window(), 0.35))},
        {"tip", css(scheme.field().scaled(0.8))},
        {"text", css(scheme.windowText())},
        {"heading", css(scheme.headingText())},
        {"disabled", css(scheme.disabledText())},
        {"field", css(scheme.field())},
        {"fieldText", css(scheme.fieldText())},
        {"button", css(scheme.button())},
        {"raised", css(scheme.button().scaled(1.2))},
        {"buttonText", css(scheme.buttonText())},
        {"border", css(scheme.border())},
        {"line", css(scheme.border().mix(scheme.window(), 0.5))},
        {"accent", css(scheme.accent())},
        {"accentText", css(scheme.accentText())},
        {"focus", css(scheme.focus())},
    };
}

QList<Substitution> lengthNames()
{
    const auto px = [](int length) { return QString::number(length) + QLatin1String("px"); };
    const int gap = UifStd::getWidgetGap();
    return {
        {"pad1", px(gap / 3)},
        {"pad2", px(gap * 2 / 3)},
        {"pad4", px(gap)},
        {"pad5", px(gap * 2)},
        {"pad8", px(gap * 4)},
        {"control", px(UifStd::getControlHeight() - 2)},
        {"glyph", px(UifStd::getDefaultFontSize() + 1)},
        {"row", px(UifStd::getRowHeight() / 2)},
        {"scroll", px(UifStd::getScrollBarWidth())},
    };
}

/** Wide letters such as those of DejaVu look a size larger than others do. */
int fontSizeFor(const QFont& font)
{
    const int standard = UifStd::Metrics().fontSize;
    return QFontInfo(font).family().startsWith(QLatin1String("DejaVu")) ? standard - 1 : standard;
}

QtTextMeasurer& measurer()
{
    static QtTextMeasurer theMeasurer;
    return theMeasurer;
}

} // namespace

QPalette DarkTheme::palette(const ColourScheme& scheme)
{
    return toQt(static_cast<const oribund::Palette&>(scheme));
}

QString DarkTheme::styleSheet(const ColourScheme& scheme)
{
    QList<Substitution> all = colourNames(scheme) + lengthNames();
    // A name may begin with another one: the longer goes first.
    std::sort(all.begin(), all.end(),
              [](const Substitution& a, const Substitution& b) { return a.first.size() > b.first.size(); });
    QString sheet = QString::fromLatin1(kStyleSheet);
    for (const auto& [name, value] : all)
        sheet.replace(QLatin1Char('$') + name, value);
    return sheet;
}

void DarkTheme::apply(QApplication& application)
{
    QFont font = QApplication::font();
    const int size = fontSizeFor(font);
    font.setPixelSize(size);
    font.setHintingPreference(QFont::PreferVerticalHinting);
    QApplication::setFont(font);
    // Restarted programs and tests find the library as an earlier application left it.
    measurer().forgetFonts();
    UifStd& standard = UifStd::instance();
    UifStd::Metrics metrics; // rows stay roomy
    metrics.fontSize = size;
    standard.setMetrics(metrics);
    standard.setTextMeasurer(&measurer());

    const ColourScheme& scheme = UifStd::getColourScheme();
    QApplication::setStyle(new DarkStyle);
    QApplication::setPalette(palette(scheme));
    QToolTip::setPalette(palette(scheme));
    application.setStyleSheet(styleSheet(scheme));
}

} // namespace oribund::qt

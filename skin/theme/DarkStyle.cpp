#include "skin/theme/DarkStyle.h"

#include "skin/QtConversions.h"
#include "skin/theme/Glyphs.h"

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace oribund::qt
{

namespace
{

QColor focusColour()
{
    return toQt(oribund::UifStd::getColourScheme().focus());
}

/** A box with a frame one pixel wide that lies wholly inside it. */
void drawBox(QPainter& painter, const QRect& rect, const QColor& ground, const QColor& frame, double radius)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(ground);
    painter.setPen(QPen(frame, 1.0));
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void drawEntry(const QStyleOption& option, QPainter& painter)
{
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);
    drawBox(painter, option.rect, option.palette.color(QPalette::Base),
            focused ? focusColour() : option.palette.color(QPalette::Mid), 0.0);
}

void drawMark(const QStyleOption& option, QPainter& painter, bool round)
{
    const bool on = option.state.testFlag(QStyle::State_On);
    const bool partly = option.state.testFlag(QStyle::State_NoChange);
    const int side = std::min(option.rect.width(), option.rect.height());
    const QRect box(option.rect.center() - QPoint((side - 1) / 2, (side - 1) / 2), QSize(side, side));
    const QPalette& palette = option.palette;
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);
    drawBox(painter, box, palette.color(on || partly ? QPalette::Highlight : QPalette::Base),
            focused ? focusColour() : palette.color(QPalette::Mid), round ? side / 2.0 : 0.0);
    const QRectF inside = QRectF(box).adjusted(2, 2, -2, -2);
    const QColor mark = palette.color(QPalette::HighlightedText);
    if (partly) {
        paintGlyph(painter, Glyph::Minus, inside, mark);
    } else if (on && round) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark);
        painter.drawEllipse(inside.center(), side / 5.0, side / 5.0);
        painter.restore();
    } else if (on) {
        paintGlyph(painter, Glyph::Check, inside, mark);
    }
}

void drawArrow(QPainter& painter, const QRect& rect, Glyph glyph, const QColor& colour)
{
    const double side = std::min({rect.width(), rect.height(), 10});
    QRectF box(0, 0, side, side);
    box.moveCenter(QRectF(rect).center());
    paintGlyph(painter, glyph, box, colour);
}

void drawArrow(const QStyleOption& option, QPainter& painter, Glyph glyph)
{
    drawArrow(painter, option.rect, glyph, option.palette.color(QPalette::ButtonText));
}

} // namespace

DarkStyle::DarkStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

void DarkStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    switch (element) {
    case PE_PanelLineEdit:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option); frame && frame->lineWidth > 0)
            drawEntry(*option, *painter);
        else
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    case PE_FrameLineEdit:
        return; // drawn with the ground
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        drawMark(*option, *painter, false);
        return;
    case PE_IndicatorRadioButton:
        drawMark(*option, *painter, true);
        return;
    case PE_IndicatorMenuCheckMark:
        if (option->state.testFlag(State_On))
            paintGlyph(*painter, Glyph::Check, option->rect, option->palette.color(QPalette::Text));
        return;
    case PE_IndicatorArrowDown:
    case PE_IndicatorSpinDown:
        drawArrow(*option, *painter, Glyph::Down);
        return;
    case PE_IndicatorArrowUp:
    case PE_IndicatorSpinUp:
        drawArrow(*option, *painter, Glyph::Up);
        return;
    case PE_IndicatorArrowRight:
        drawArrow(*option, *painter, Glyph::Expand);
        return;
    case PE_FrameFocusRect:
        painter->save();
        painter->setBrush(Qt::NoBrush);
        painter->setPen(focusColour());
        painter->drawRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5));
        painter->restore();
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void DarkStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const
{
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option); control == CC_ComboBox && combo)
        drawCombo(*combo, *painter, widget);
    else if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option); control == CC_SpinBox && spin)
        drawSpin(*spin, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void DarkStyle::drawCombo(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) const
{
    const QPalette& palette = option.palette;
    QColor ground = palette.color(option.editable ? QPalette::Base : QPalette::Button);
    if (option.state.testFlag(State_MouseOver) && option.state.testFlag(State_Enabled) && !option.editable)
        ground = ground.lighter(120);
    drawBox(painter, option.rect, ground,
            option.state.testFlag(State_HasFocus) ? focusColour() : palette.color(QPalette::Mid), 0.0);
    const QRect arrow = proxy()->subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget);
    drawArrow(painter, arrow, Glyph::Down, palette.color(QPalette::ButtonText));
}

void DarkStyle::drawSpin(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget) const
{
    drawEntry(option, painter);
    const auto arrow = [&](SubControl control, Glyph glyph, QAbstractSpinBox::StepEnabledFlag step) {
        const bool usable = option.state.testFlag(State_Enabled) && option.stepEnabled.testFlag(step);
        drawArrow(painter, proxy()->subControlRect(CC_SpinBox, &option, control, widget), glyph,
                  option.palette.color(usable ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    };
    if (option.buttonSymbols != QAbstractSpinBox::NoButtons) {
        arrow(SC_SpinBoxUp, Glyph::Up, QAbstractSpinBox::StepUpEnabled);
        arrow(SC_SpinBoxDown, Glyph::Down, QAbstractSpinBox::StepDownEnabled);
    }
}

QSize DarkStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const
{
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    // Boxes and entries that stand in one row are equally high.
    if (type == CT_ComboBox || type == CT_SpinBox || type == CT_LineEdit)
        result.setHeight(std::max(size.height(), oribund::UifStd::getRowHeight()));
    return result;
}

int DarkStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return oribund::UifStd::getDefaultFontSize() + 1;
    case PM_ScrollBarExtent:
        return oribund::UifStd::getScrollBarWidth();
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int DarkStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returnData) const
{
    if (hint == SH_UnderlineShortcut)
        return 0;
    // Menus that reach over the whole screen cannot be read: they are lists of their own beside the button.
    if (hint == SH_ComboBox_Popup)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

} // namespace oribund::qt

#pragma once

#include <QProxyStyle>

class QStyleOptionComboBox;
class QStyleOptionSpinBox;

namespace oribund::qt
{

/**
 * Draws what a style sheet cannot draw without picture files: entries, spin and combo boxes, check marks, radio
 * buttons, arrows, the focus ring. All colours come from the widget's palette. Sits on Fusion, which draws all else.
 */
class DarkStyle final : public QProxyStyle
{
public:
    DarkStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;

private:
    void drawCombo(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) const;
    void drawSpin(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget) const;
};

} // namespace oribund::qt

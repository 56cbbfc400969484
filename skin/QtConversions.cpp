#include "skin/QtConversions.h"

#include "oribund/host/canvas/FontDesc.h"
#include "oribund/host/canvas/Palette.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace oribund::qt
{

QColor toQt(const oribund::Colour& colour)
{
    const auto unit = [](double v) { return static_cast<float>(std::clamp(v, 0.0, 1.0)); };
    return QColor::fromRgbF(unit(colour.r), unit(colour.g), unit(colour.b), unit(colour.a));
}

oribund::Colour fromQt(const QColor& colour)
{
    // Qt keeps sixteen bits: what comes from a chooser of eight bits is to come out in steps of 1/255.
    const auto unit = [](int eightBits) { return eightBits / 255.0; };
    return {unit(colour.red()), unit(colour.green()), unit(colour.blue()), unit(colour.alpha())};
}

QString toQt(const oribund::WString& text)
{
    return QString::fromWCharArray(text.c_str(), static_cast<qsizetype>(text.size()));
}

QString toQt(const oribund::String& utf8)
{
    return QString::fromUtf8(utf8.c_str(), static_cast<qsizetype>(utf8.size()));
}

oribund::WString fromQt(const QString& text)
{
    const std::wstring wide = text.toStdWString();
    return oribund::WString(std::wstring_view(wide));
}

QString toDisplay(const oribund::UIString& text)
{
    return toQt(oribund::displayText(text));
}

QString toTooltip(const QString& text)
{
    const QString lines = text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br/>"));
    return QStringLiteral("<span>") + lines + QStringLiteral("</span>");
}

QString toMenuText(const oribund::UIString& text)
{
    return toDisplay(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QFont toQt(const oribund::Glib::FontDesc& font)
{
    QFont result = QGuiApplication::font();
    if (!font.family.empty())
        result.setFamily(toQt(font.family));
    result.setPixelSize(font.size > 0 ? font.size : oribund::UifStd::getDefaultFontSize());
    result.setBold(font.bold);
    result.setItalic(font.italic);
    return result;
}

QPalette toQt(const oribund::Palette& palette)
{
    const auto colour = [&](oribund::PaletteRole role) { return toQt(palette.colour(role)); };
    using Role = oribund::PaletteRole;
    QPalette result(colour(Role::WindowText), colour(Role::Button), toQt(palette.button().scaled(1.3)),
                    toQt(palette.field().scaled(0.6)), colour(Role::Border), colour(Role::FieldText),
                    colour(Role::HeadingText), colour(Role::Field), colour(Role::Window));
    result.setColor(QPalette::ButtonText, colour(Role::ButtonText));
    result.setColor(QPalette::AlternateBase, toQt(palette.field().mix(palette.window(), 0.35)));
    result.setColor(QPalette::Highlight, colour(Role::Accent));
    result.setColor(QPalette::HighlightedText, colour(Role::AccentText));
    result.setColor(QPalette::PlaceholderText, colour(Role::DisabledText));
    result.setColor(QPalette::ToolTipBase, toQt(palette.field().scaled(0.8)));
    result.setColor(QPalette::ToolTipText, colour(Role::HeadingText));
    result.setColor(QPalette::Link, colour(Role::Focus));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        result.setColor(QPalette::Disabled, role, colour(Role::DisabledText));
    result.setColor(QPalette::Disabled, QPalette::Base, toQt(palette.field().mix(palette.window(), 0.6)));
    result.setColor(QPalette::Disabled, QPalette::Highlight, toQt(palette.button().scaled(1.2)));
    return result;
}

} // namespace oribund::qt

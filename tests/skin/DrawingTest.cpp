#include "skin/QPainterRenderer.h"
#include "skin/QtConversions.h"
#include "skin/QtTextMeasurer.h"
#include "skin/theme/DarkTheme.h"
#include "skin/theme/Glyphs.h"

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/canvas/UifStd.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>

namespace oribund::qt::test
{
namespace
{

using namespace oribund;

constexpr Colour kWhite{1.0, 1.0, 1.0, 1.0};

/** A black picture of 40 by 40 logical pixels, drawn on by a test. */
class Drawing : public testing::TestWithParam<double>
{
protected:
    Drawing()
        : picture(QSize(40, 40) * GetParam(), QImage::Format_ARGB32_Premultiplied)
    {
        picture.setDevicePixelRatio(GetParam());
        picture.fill(Qt::black);
    }

    template <class Draw>
    void draw(Draw operations)
    {
        QPainter painter(&picture);
        QPainterRenderer renderer(painter);
        operations(renderer);
    }

    QSet<QRgb> colours() const
    {
        QSet<QRgb> all;
        forEachPixel([&](const QPoint&, QRgb colour) { all.insert(colour); });
        return all;
    }

    /** The box of all that is not black, in device pixels. */
    QRect drawn() const
    {
        QRect box;
        forEachPixel(
            [&](const QPoint& at, QRgb colour) { box |= colour == qRgb(0, 0, 0) ? QRect() : QRect(at, QSize(1, 1)); });
        return box;
    }

    QImage picture;

private:
    template <class Act>
    void forEachPixel(Act act) const
    {
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                act(QPoint(x, y), picture.pixel(x, y));
    }
};

INSTANTIATE_TEST_SUITE_P(Scales, Drawing, testing::Values(1.0, 1.25, 1.5, 2.0));

TEST_P(Drawing, UprightEdgesAreCrispAtEveryScale)
{
    draw([](CanvasRenderer& r) {
        r.fillRect({3, 3, 10, 7}, kWhite);
        r.frameRect({12.0, 12.0, 31.0, 29.0}, kWhite);
        r.line({2.5, 20.0}, {2.5, 30.0}, kWhite);
        r.line({2.0, 35.5}, {30.0, 35.5}, kWhite);
    });
    const QSet<QRgb> blackAndWhite{qRgb(0, 0, 0), qRgb(255, 255, 255)};
    EXPECT_EQ(colours(), blackAndWhite) << "no smoothed edges";
    picture.fill(Qt::black);
    draw([](CanvasRenderer& r) { r.line({5.3, 5.2}, {35.0, 5.2}, kWhite, 0.1); });
    EXPECT_EQ(drawn().height(), 1) << "a thin line does not vanish";
    EXPECT_EQ(colours(), blackAndWhite);
}

TEST_P(Drawing, ClipsAndOriginsNest)
{
    draw([](CanvasRenderer& r) {
        const OriginGuard origin(r, {10.0, 10.0});
        {
            const ClipGuard clip(r, {0, 0, 20, 20});
            const OriginGuard inner(r, {4.0, 4.0});
            const ClipGuard narrower(r, {-100, -100, 4, 4});
            r.fillRect({-100, -100, 100, 100}, kWhite);
        }
        r.fillRect({28, 28, 29, 29}, kWhite); // neither is left behind
    });
    const int scale10 = static_cast<int>(std::lround(10 * GetParam()));
    EXPECT_EQ(drawn().topLeft(), QPoint(scale10, scale10));
    EXPECT_EQ(drawn().bottomRight() + QPoint(1, 1), QPoint(39, 39) * GetParam());
    EXPECT_EQ(picture.pixelColor(QPoint(20, 20) * GetParam()), QColor(Qt::black));
}

TEST_P(Drawing, TextStaysInItsBoxAndIsAsWideAsMeasured)
{
    const Glib::FontDesc font = UifStd::getDefaultFont();
    const WString text = L"Hue";
    const int width = UifStd::measure(text, font);
    draw([&](CanvasRenderer& r) { r.text({4.0, 5.0, 4.0 + width, 25.0}, text, font, kWhite); });
    const QRectF whole(QPointF(drawn().topLeft()) / GetParam(), QSizeF(drawn().size()) / GetParam());
    EXPECT_GT(whole.width(), width - 5.0) << "cut short";
    EXPECT_LT(whole.width(), width + 1.0);
    EXPECT_GT(whole.top(), 5.0);
    EXPECT_LT(whole.bottom(), 25.0);

    picture.fill(Qt::black);
    draw([&](CanvasRenderer& r) {
        r.text({4.0, 5.0, 34.0, 25.0}, L"A name that is far too long", font, kWhite, TextAlign::Right);
    });
    EXPECT_GE(drawn().left(), static_cast<int>(3 * GetParam()));
    EXPECT_LE(drawn().right(), static_cast<int>(35 * GetParam()));
}

TEST_P(Drawing, PicturesKeepTheirColoursAndIconsTakeOne)
{
    const Image pixels = Image::fromPixels({2, 1}, {0xffff0000, 0xff0000ff});
    draw([&](CanvasRenderer& r) {
        r.image({0, 0, 20, 20}, pixels, kWhite);
        r.image({20, 20, 40, 40}, Image::icon("keyframe-here"), Colour{0.0, 1.0, 0.0, 1.0});
        r.image({0, 20, 20, 40}, Image::icon("there is none of this name"), kWhite);
    });
    EXPECT_EQ(picture.pixelColor(QPoint(2, 10) * GetParam()), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(QPoint(17, 10) * GetParam()), QColor(Qt::blue));
    EXPECT_EQ(picture.pixelColor(QPoint(30, 30) * GetParam()), QColor(Qt::green));
    EXPECT_EQ(picture.pixelColor(QPoint(10, 30) * GetParam()), QColor(Qt::black));
}

TEST(Glyphs, EachIsDifferentLiesInItsBoxAndHasItsName)
{
    QSet<QByteArray> shapes;
    for (int i = 0; i < static_cast<int>(Glyph::Count); ++i) {
        const Glyph glyph = static_cast<Glyph>(i);
        EXPECT_EQ(glyphNamed(QString(glyphName(glyph))), glyph);
        QImage picture(48, 48, QImage::Format_Grayscale8);
        picture.fill(Qt::black);
        QPainter painter(&picture);
        paintGlyph(painter, glyph, {8, 8, 32, 32}, Qt::white);
        painter.end();
        int inside = 0;
        for (int pixel = 0; pixel < 48 * 48; ++pixel) {
            const QPoint at(pixel % 48, pixel / 48);
            const bool isSet = qGray(picture.pixel(at)) > 0;
            inside += isSet ? 1 : 0;
            ASSERT_FALSE(isSet && !QRect(8, 8, 32, 32).contains(at)) << glyphName(glyph) << " sticks out";
        }
        EXPECT_GT(inside, 40) << glyphName(glyph);
        shapes.insert(QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
    }
    // "collapse" and "down" are the same arrow.
    EXPECT_EQ(shapes.size(), static_cast<int>(Glyph::Count) - 1);
    EXPECT_FALSE(glyphNamed(u"nothing"));
}

TEST(Theme, EveryNameInTheStyleSheetIsKnownAndComesFromTheScheme)
{
    ColourScheme scheme = ColourScheme::dark();
    const QString sheet = DarkTheme::styleSheet(scheme);
    EXPECT_FALSE(sheet.contains('$')) << sheet.mid(sheet.indexOf('$'), 30).toStdString();
    EXPECT_TRUE(sheet.contains(toQt(scheme.accent()).name()));
    scheme.setColour(PaletteRole::Accent, Colour::fromRGB(0x123456));
    EXPECT_TRUE(DarkTheme::styleSheet(scheme).contains("#123456"));
    EXPECT_EQ(DarkTheme::palette(scheme).color(QPalette::Highlight), QColor(0x12, 0x34, 0x56));
}

TEST(Theme, TextReadsOnEveryGround)
{
    const QPalette palette = DarkTheme::palette(ColourScheme::dark());
    using P = QPalette;
    for (const auto& [text, ground] :
         {std::pair(P::WindowText, P::Window), std::pair(P::Text, P::Base), std::pair(P::Text, P::AlternateBase),
          std::pair(P::ButtonText, P::Button), std::pair(P::HighlightedText, P::Highlight),
          std::pair(P::ToolTipText, P::ToolTipBase), std::pair(P::PlaceholderText, P::Base)})
        EXPECT_GE(contrastRatio(fromQt(palette.color(text)), fromQt(palette.color(ground))), 4.5) << text;
}

} // namespace
} // namespace oribund::qt::test

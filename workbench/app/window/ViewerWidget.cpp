#include "workbench/app/window/ViewerWidget.h"

#include <QPainter>

#include <cmath>

namespace workbench
{

namespace
{
constexpr double kMostLost = 36.0; // the engine makes a picture so much smaller than the space, to keep its shape
} // namespace

ViewerWidget::ViewerWidget(QWidget* parent)
    : QWidget(parent)
{
    setMinimumSize(240, 135);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Viewer"));
    setAccessibleDescription(QStringLiteral("The picture at the current time"));
}

void ViewerWidget::setPicture(const FrameImagePtr& picture)
{
    picture_ = picture;
    image_ = !picture ? QImage()
                      : QImage(picture->rgba.data(), picture->width, picture->height, 4 * picture->width,
                               QImage::Format_RGBA8888);
    noteFrameArea();
    update();
}

void ViewerWidget::setStatus(const QString& status)
{
    if (status == status_)
        return;
    status_ = status;
    setAccessibleDescription(status_.isEmpty() ? QStringLiteral("The picture at the current time") : status_);
    update();
}

void ViewerWidget::setAspect(double aspect)
{
    aspect_ = aspect > 0.0 ? aspect : 16.0 / 9.0;
    tellSize();
    noteFrameArea();
    update();
}

void ViewerWidget::noteFrameArea()
{
    const QRectF area = frameArea();
    if (area == toldArea_)
        return;
    toldArea_ = area;
    if (frameAreaChanged)
        frameAreaChanged();
}

QRect ViewerWidget::pictureArea() const
{
    const double width = std::min<double>(this->width(), height() * aspect_);
    const QSize size(static_cast<int>(std::lround(width)), static_cast<int>(std::lround(width / aspect_)));
    return {QPoint((this->width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

QRectF ViewerWidget::frameArea() const
{
    const QRectF area = pictureArea();
    if (image_.isNull())
        return area;
    const double ratio = devicePixelRatioF();
    const QSizeF size = QSizeF(image_.size()) / ratio;
    const auto nearly = [&](double shown, double space) { return shown <= space + 1.0 && shown > space - kMostLost; };
    if (!nearly(size.width(), area.width()) || !nearly(size.height(), area.height()))
        return area;
    // Pixel for pixel, which is sharper than a few more pixels are large.
    const auto onPixel = [&](double place) { return std::floor(place * ratio) / ratio; };
    return {QPointF(onPixel((width() - size.width()) / 2), onPixel((height() - size.height()) / 2)), size};
}

void ViewerWidget::tellSize()
{
    const QSize size = pictureArea().size() * devicePixelRatioF();
    if (sizeWanted && !size.isEmpty())
        sizeWanted(size.width(), size.height());
}

void ViewerWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(12, 12, 12));
    if (!image_.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(frameArea(), image_);
    } else if (status_.isEmpty()) {
        painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("Open media with Ctrl+O, or drop files here"));
    }
    if (!status_.isEmpty())
        drawStatus(painter);
}

void ViewerWidget::drawStatus(QPainter& painter) const
{
    QRect box = fontMetrics().boundingRect(status_).adjusted(-14, -8, 14, 8);
    box.moveCenter(rect().center());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 190));
    painter.drawRoundedRect(box, 4, 4);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(box, Qt::AlignCenter, status_);
}

void ViewerWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    tellSize();
    noteFrameArea();
}

void ViewerWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    tellSize();
}

} // namespace workbench

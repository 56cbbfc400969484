#pragma once

#include "workbench/engine/protocol/FrameImage.h"

#include <QImage>
#include <QWidget>

#include <functional>

class QPainter;

namespace workbench
{

/** Shows the picture at the current time, as large as it fits, over black. */
class ViewerWidget final : public QWidget
{
public:
    explicit ViewerWidget(QWidget* parent = nullptr);

    /** Null for no picture: a hint takes its place. */
    void setPicture(const FrameImagePtr& picture);

    /** What is being waited for, above the picture or in its place; empty for nothing. */
    void setStatus(const QString& status);

    const QString& status() const { return status_; }

    const FrameImagePtr& picture() const { return picture_; }

    /** The shape in which the picture is shown, width by height. */
    void setAspect(double aspect);

    /** Called with the size in which pictures are wanted, in pixels of the screen. */
    std::function<void(int width, int height)> sizeWanted;

    /** Where in the widget the frame is shown, in logical pixels; the area for it while there is no picture. */
    QRectF frameArea() const;

    /** Called when frameArea() is another. */
    std::function<void()> frameAreaChanged;

    QSize sizeHint() const override { return {640, 360}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QRect pictureArea() const;
    void noteFrameArea();
    void tellSize();
    void drawStatus(QPainter& painter) const;

    FrameImagePtr picture_;
    QImage image_; // of the picture's pixels
    QString status_;
    double aspect_ = 16.0 / 9.0;
    QRectF toldArea_;
};

} // namespace workbench

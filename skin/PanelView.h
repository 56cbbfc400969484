#pragma once

#include "skin/Export.h"
#include "skin/PanelSurface.h"

#include <QScrollArea>

namespace oribund::qt
{

/** Shows a panel in a window: gives it its own width, and scrolls it when it is too high. */
class ORIBUND_QT_API PanelView final : public QScrollArea
{
public:
    explicit PanelView(QWidget* parent = nullptr);

    PanelSurface& surface() { return *surface_; }

    /** What a panel for this view is to be made for. */
    oribund::Canvas& canvas() { return surface_->canvas(); }

    /** As PanelSurface::setPanel(). */
    bool setPanel(std::unique_ptr<oribund::Glob> panel) { return surface_->setPanel(std::move(panel)); }

    oribund::Glob* panel() const { return surface_->panel(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fit();

    PanelSurface* surface_;
};

} // namespace oribund::qt

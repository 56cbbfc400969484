#include "workbench/app/window/Docks.h"

#include <QDockWidget>
#include <QMainWindow>

namespace workbench
{

namespace
{
QDockWidget* addDock(QMainWindow& window, Qt::DockWidgetArea area, const char* title, const char* name,
                     QWidget& contents)
{
    auto* dock = new QDockWidget(QString::fromUtf8(title), &window);
    dock->setObjectName(QLatin1String(name));
    dock->setFeatures(QDockWidget::DockWidgetMovable);
    dock->setWidget(&contents);
    window.addDockWidget(area, dock);
    return dock;
}
} // namespace

Docks::Docks(QMainWindow& window, QWidget& effectList, QWidget& effectControls, QWidget& timeline, QWidget& cue)
    : window_(window)
{
    window.setCorner(Qt::BottomLeftCorner, Qt::BottomDockWidgetArea);
    window.setCorner(Qt::BottomRightCorner, Qt::BottomDockWidgetArea);
    effectList_ = addDock(window, Qt::LeftDockWidgetArea, "Effects", "effectList", effectList);
    effectControls_ = addDock(window, Qt::RightDockWidgetArea, "Effect controls", "effectPanels", effectControls);
    timeline_ = addDock(window, Qt::BottomDockWidgetArea, "Timeline", "timeline", timeline);
    // Below the controls of the effects.
    cue_ = addDock(window, Qt::RightDockWidgetArea, "Cue", "cue", cue);
    cue_->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetClosable);
    cue_->hide();
}

void Docks::arrange()
{
    window_.resizeDocks({effectList_, effectControls_}, {250, 430}, Qt::Horizontal);
    window_.resizeDocks({timeline_}, {timeline_->widget()->sizeHint().height() + 30}, Qt::Vertical);
}

void Docks::showCue()
{
    cue_->show();
}

} // namespace workbench

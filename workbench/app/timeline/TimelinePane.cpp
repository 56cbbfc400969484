#include "workbench/app/timeline/TimelinePane.h"

#include "workbench/app/timeline/TimelineStrip.h"

#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace workbench
{

TimelinePane::TimelinePane(Workspace& workspace, QWidget* parent)
    : QWidget(parent)
    , strip_(new TimelineStrip(workspace))
    , bar_(new QScrollBar(Qt::Horizontal))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(strip_, 1);
    column->addWidget(bar_);
    bar_->setAccessibleName(QStringLiteral("Part of the edit in view"));
    strip_->viewChanged = [this] { showView(); };
    QObject::connect(bar_, &QScrollBar::valueChanged, this, [this](int frame) { strip_->scrollTo(frame); });
    showView();
}

void TimelinePane::showView()
{
    const QSignalBlocker quiet(bar_);
    const TimelineGeometry& geometry = strip_->geometryOfEdit();
    bar_->setRange(0, static_cast<int>(geometry.lastFirstFrame()));
    bar_->setPageStep(std::max(1, static_cast<int>(geometry.framesInView())));
    bar_->setSingleStep(std::max(1, bar_->pageStep() / 10));
    bar_->setValue(static_cast<int>(geometry.firstFrame()));
}

} // namespace workbench

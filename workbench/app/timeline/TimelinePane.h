#pragma once

#include <QWidget>

class QScrollBar;

namespace workbench
{

class TimelineStrip;
class Workspace;

/** The strip that shows the edit, with its scroll bar. */
class TimelinePane final : public QWidget
{
public:
    explicit TimelinePane(Workspace& workspace, QWidget* parent = nullptr);

    TimelineStrip& strip() { return *strip_; }

private:
    void showView();

    TimelineStrip* strip_;
    QScrollBar* bar_;
};

} // namespace workbench

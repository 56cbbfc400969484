#pragma once

class QDockWidget;
class QMainWindow;
class QWidget;

namespace workbench
{

/** Where the panes stand around the viewer; the user may move them. */
class Docks
{
public:
    /** The window outlives this, and owns the panes from now on. */
    Docks(QMainWindow& window, QWidget& effectList, QWidget& effectControls, QWidget& timeline, QWidget& cue);

    /** Gives the panes the sizes that they have at first. */
    void arrange();

    /** The pane of a cue, which is there when it is asked for. */
    void showCue();

private:
    QMainWindow& window_;
    QDockWidget* effectList_;
    QDockWidget* effectControls_;
    QDockWidget* timeline_;
    QDockWidget* cue_;
};

} // namespace workbench

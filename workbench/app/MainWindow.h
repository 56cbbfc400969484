#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/services/MessageSink.h"
#include "workbench/app/ActionTable.h"
#include "workbench/app/EffectAdder.h"
#include "workbench/app/MediaImporter.h"
#include "workbench/app/Playback.h"
#include "workbench/app/Workspace.h"

#include <QMainWindow>

#include <memory>
#include <string>
#include <vector>

namespace workbench
{

class EffectListPane;
class EffectsPanelPane;
class MessageBar;
class ViewerWidget;

/** The window: menus, the panes and what connects them. */
class MainWindow final : public QMainWindow
{
public:
    /** The workspace outlives the window. */
    explicit MainWindow(Workspace& workspace);
    ~MainWindow() override;

    void openFiles(const std::vector<std::string>& paths);

    void showMessage(const QString& message, oribund::MessageSink::Severity severity);

    /** Whether nothing is under way, and the picture shows what was edited. */
    bool isSettled() const;

    ViewerWidget& viewer() { return *viewer_; }

    EffectsPanelPane& effectsPanel() { return *effects_; }

    EffectListPane& effectList() { return *list_; }

    MessageBar& messages() { return *messages_; }

    QAction& action(Command command) { return actions_->action(command); }

private:
    std::map<Command, ActionTable::Handler> handlers();
    void build();
    QDockWidget* addDock(Qt::DockWidgetArea area, const char* title, const char* name, QWidget* contents);
    void stepBy(int frames);
    void goTo(int frame);
    void togglePlay();
    void split();
    void removeSelected();

    int handleReplaced(const EditReplaced&);
    int handleUndo(const UndoStackEvent&);

    Workspace& workspace_;
    MediaImporter importer_;
    EffectAdder adder_;
    std::unique_ptr<ActionTable> actions_;
    ViewerWidget* viewer_;
    MessageBar* messages_;
    EffectListPane* list_;
    EffectsPanelPane* effects_;
    std::unique_ptr<Playback> playback_;
    oribund::MethodCallback<MainWindow, EditReplaced> replacedCallback_;
    oribund::MethodCallback<MainWindow, UndoStackEvent> undoCallback_;
};

} // namespace workbench

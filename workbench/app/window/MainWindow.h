#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/services/MessageSink.h"
#include "workbench/app/cues/CueCommands.h"
#include "workbench/app/effects/EffectAdder.h"
#include "workbench/app/effects/KeyframeActions.h"
#include "workbench/app/files/Document.h"
#include "workbench/app/files/FileCommands.h"
#include "workbench/app/files/MediaImporter.h"
#include "workbench/app/session/ActionTable.h"
#include "workbench/app/session/Playback.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/app/timeline/TimelineCommands.h"

#include <QMainWindow>

#include <memory>
#include <string>
#include <vector>

namespace workbench
{

class CuePane;
class DeleteKey;
class Docks;
class EffectListPane;
class EffectsPanelPane;
class ExportBar;
class MessageBar;
class TimeBarPane;
class TimelinePane;
class ViewerOverlay;
class ViewerWidget;

/** The window: menus, the panes and what connects them. */
class MainWindow final : public QMainWindow
{
public:
    /** Both outlive the window. */
    MainWindow(Workspace& workspace, Document& document);
    ~MainWindow() override;

    /** Where there is room for it. */
    static constexpr QSize kUsualSize{1440, 880};

    /** Takes the size, with the panes as they are at first. */
    void arrange(const QSize& size);

    void showMessage(const QString& message, oribund::MessageSink::Severity severity);

    /** Takes the place and arrangement that it had when it was last closed. */
    void restorePlace();

    /** Whether nothing is under way, and the picture shows what was edited. */
    bool isSettled() const;

    FileCommands& files() { return *files_; }

    ViewerWidget& viewer() { return *viewer_; }

    ViewerOverlay& overlay() { return *overlay_; }

    EffectsPanelPane& effectsPanel() { return *effects_; }

    EffectListPane& effectList() { return *list_; }

    TimelinePane& timeline() { return *timeline_; }

    TimeBarPane& timeBar() { return *timeBar_; }

    CuePane& cuePane() { return *cuePane_; }

    MessageBar& messages() { return *messages_; }

    ExportBar& exportBar() { return *exportBar_; }

    QAction& action(Command command) { return actions_->action(command); }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    std::map<Command, ActionTable::Handler> fileHandlers();
    std::map<Command, ActionTable::Handler> viewHandlers();
    void build();
    void connectCues();
    void enterTyped();
    void rememberPlace() const;
    void showTitle();
    void showLoading();
    void showProblem(const EngineProblem& problem);

    int handleReplaced(const EditReplaced&);
    int handleUndo(const UndoStackEvent&);
    int handleDocument(const DocumentChanged&);

    Workspace& workspace_;
    Document& document_;
    MediaImporter importer_;
    EffectAdder adder_;
    TimelineCommands segments_;
    CueCommands cues_;
    KeyframeActions keyframes_;
    std::unique_ptr<DeleteKey> deleteKey_;
    std::unique_ptr<ActionTable> actions_;
    ViewerWidget* viewer_;
    MessageBar* messages_;
    ExportBar* exportBar_;
    EffectListPane* list_;
    EffectsPanelPane* effects_;
    TimelinePane* timeline_;
    TimeBarPane* timeBar_;
    CuePane* cuePane_;
    QString loading_; ///< what the viewer says while media are read; empty when none are
    std::unique_ptr<Docks> docks_;
    std::unique_ptr<FileCommands> files_;
    std::unique_ptr<Playback> playback_;
    std::unique_ptr<ViewerOverlay> overlay_;
    oribund::MethodCallback<MainWindow, EditReplaced> replacedCallback_;
    oribund::MethodCallback<MainWindow, UndoStackEvent> undoCallback_;
    oribund::MethodCallback<MainWindow, DocumentChanged> documentCallback_;
};

} // namespace workbench

#include "workbench/app/window/MainWindow.h"

#include "oribund/host/services/EditorPreferences.h"
#include "skin/PanelSurface.h"
#include "skin/QtConversions.h"
#include "workbench/app/cues/CueColourMenu.h"
#include "workbench/app/cues/CuePane.h"
#include "workbench/app/effects/EffectListPane.h"
#include "workbench/app/effects/EffectsPanelPane.h"
#include "workbench/app/files/ExportBar.h"
#include "workbench/app/overlay/ViewerOverlay.h"
#include "workbench/app/session/PreferenceKeys.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/timeline/TimeBarPane.h"
#include "workbench/app/timeline/TimelinePane.h"
#include "workbench/app/timeline/TimelineStrip.h"
#include "workbench/app/window/DeleteKey.h"
#include "workbench/app/window/DialogPlace.h"
#include "workbench/app/window/Docks.h"
#include "workbench/app/window/MessageBar.h"
#include "workbench/app/window/TransportBar.h"
#include "workbench/app/window/ViewerWidget.h"
#include "workbench/model/projection/Projector.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QUrl>
#include <QVBoxLayout>

namespace workbench
{

using oribund::qt::toMenuText;

namespace
{
std::vector<std::string> localFilesOf(const QMimeData& data)
{
    std::vector<std::string> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            // Byte by byte: a name need not be UTF-8.
            paths.push_back(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString());
    return paths;
}
} // namespace

MainWindow::MainWindow(Workspace& workspace, Document& document)
    : workspace_(workspace)
    , document_(document)
    , importer_(workspace)
    , adder_(workspace)
    , segments_(workspace)
    , cues_(workspace)
    , keyframes_(workspace)
    , viewer_(new ViewerWidget)
    , messages_(new MessageBar)
    , exportBar_(new ExportBar(workspace.engine()))
    , list_(new EffectListPane(workspace.catalogue()))
    , effects_(new EffectsPanelPane(workspace))
    , timeline_(new TimelinePane(workspace))
    , timeBar_(new TimeBarPane(workspace, cues_))
    , cuePane_(new CuePane(workspace))
    , files_(std::make_unique<FileCommands>(workspace, document, importer_, *exportBar_, *this))
    , replacedCallback_(this, &MainWindow::handleReplaced)
    , undoCallback_(this, &MainWindow::handleUndo)
    , documentCallback_(this, &MainWindow::handleDocument)
{
    auto handlers = fileHandlers();
    handlers.merge(viewHandlers());
    handlers.merge(segments_.handlers());
    handlers.merge(cues_.handlers());
    handlers.merge(keyframes_.handlers());
    deleteKey_ = std::make_unique<DeleteKey>(workspace_, timeline_->strip(), *effects_, keyframes_);
    handlers[Command::Delete] = [this] { deleteKey_->press(); };
    handlers[Command::SelectKeyframes] = [this] {
        keyframes_.selectAll(true);
        deleteKey_->meanKeyframes();
    };
    actions_ = std::make_unique<ActionTable>(*this, handlers);
    build();
    connectCues();
    Playback::Display display;
    display.picture = [this](const FrameImagePtr& picture) {
        viewer_->setPicture(picture);
        showLoading();
        if (picture)
            files_->pictureShown();
    };
    display.problem = [this](const EngineProblem& problem) { showProblem(problem); };
    display.leftOutMayDiffer = [this] { effects_->showLeftOut(); };
    playback_ = std::make_unique<Playback>(workspace_.engine(), workspace_.vob(), std::move(display));
    overlay_ = std::make_unique<ViewerOverlay>(workspace_, *viewer_, *effects_);
    QAction& showHandles = actions_->action(Command::ShowHandles);
    showHandles.setCheckable(true);
    showHandles.setChecked(overlay_->isShown());
    effects_->leftOut = [this] { return playback_->leftOut(); };
    effects_->retryWanted = [this](ObjectId effect) { playback_->retryEffects(filterId(effect)); };
    files_->leftOut = [this] { return playback_->leftOut(); };
    viewer_->sizeWanted = [this](int width, int height) { playback_->setPictureSize(width, height); };
    keyframes_.focusedParam = [this] { return effects_->focusedParam(); };
    importer_.progressed = [this](int done, int total) {
        loading_ = total == 0   ? QString()
                   : total == 1 ? QStringLiteral("Loading media\u2026")
                                : QStringLiteral("Loading media: %1 of %2").arg(done + 1).arg(total);
        showLoading();
    };
    adder_.trying = [this](const std::string& title) {
        loading_ = title.empty() ? QString() : QString::fromStdString("Trying " + quoted(title) + "\u2026");
        showLoading();
    };
    workspace_.whenInstalledIsKnown([this] {
        list_->refresh();
        showLoading();
    });
    list_->done = [this] { timeline_->strip().setFocus(); };
    list_->chosen = [this](const std::string& service) { adder_.add(service); };
    replacedCallback_.attach(workspace_.replaced());
    documentCallback_.attach(document_.changes());
    handleReplaced({});
    qApp->installEventFilter(new DialogPlace(*viewer_, this));
    timeline_->strip().setFocus();
}

MainWindow::~MainWindow()
{
    effects_->leftOut = nullptr;
    viewer_->sizeWanted = nullptr;
}

void MainWindow::build()
{
    auto* centre = new QWidget;
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(messages_);
    column->addWidget(viewer_, 1);
    column->addWidget(timeBar_);
    column->addWidget(exportBar_);
    column->addWidget(new TransportBar(workspace_, *actions_));
    setCentralWidget(centre);
    actions_->fillMenus(*menuBar());
    docks_ = std::make_unique<Docks>(*this, *list_, *effects_, *timeline_, *cuePane_);
    setAcceptDrops(true);
    // In a large interface the screen has less room than that.
    const QSize room = screen()->availableSize() - QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
    arrange(kUsualSize.boundedTo(room));
}

void MainWindow::arrange(const QSize& size)
{
    resize(size);
    docks_->arrange();
}

void MainWindow::connectCues()
{
    actions_->action(Command::CueColour).setMenu(new CueColourMenu(cues_, this));
    cues_.descriptionWanted = [this](const oribund::Cue&) {
        docks_->showCue();
        cuePane_->takeKeyboard();
    };
    cues_.nameWanted = [this](const oribund::Cue& cue) { timeBar_->askForName(cue); };
    timeline_->strip().cueMenuWanted = [this](double editTime, const QPoint& at) {
        timeBar_->openCueMenu(editTime, at);
    };
}

std::map<Command, ActionTable::Handler> MainWindow::fileHandlers()
{
    std::map<Command, ActionTable::Handler> handlers = {
        {Command::New, [this] { files_->startNew(); }},
        {Command::Open, [this] { files_->askAndOpen(); }},
        {Command::Save, [this] { files_->save(); }},
        {Command::SaveAs, [this] { files_->saveAs(); }},
        {Command::FindMedia, [this] { files_->findMedia(); }},
        {Command::Export, [this] { files_->askAndExport(); }},
        {Command::Quit, [this] { close(); }},
    };
    for (auto& [command, handler] : handlers)
        handler = [this, act = handler] {
            enterTyped();
            act();
        };
    return handlers;
}

std::map<Command, ActionTable::Handler> MainWindow::viewHandlers()
{
    return {
        {Command::ZoomIn, [this] { timeline_->strip().zoom(1.5); }},
        {Command::ZoomOut, [this] { timeline_->strip().zoom(1.0 / 1.5); }},
        {Command::ZoomAll, [this] { timeline_->strip().showAll(); }},
        {Command::ShowHandles, [this] { overlay_->setShown(!overlay_->isShown()); }},
        {Command::FindEffect, [this] { list_->search(); }},
        {Command::RetryEffects, [this] { playback_->retryEffects(); }},
    };
}

void MainWindow::showMessage(const QString& message, oribund::MessageSink::Severity severity)
{
    messages_->show(message, severity);
}

void MainWindow::showProblem(const EngineProblem& problem)
{
    using Kind = EngineProblem::Kind;
    if (problem.kind == Kind::MediaMissing && document_.hasSaid(problem.message))
        return;
    MessageBar::Action action;
    if (problem.kind == Kind::EffectHung || problem.kind == Kind::EffectCrashed)
        action = {QStringLiteral("Try again"), [this, id = problem.subject] { playback_->retryEffects(id); }};
    messages_->show(QString::fromStdString(problem.message), oribund::MessageSink::Severity::Warning,
                    std::move(action));
}

void MainWindow::showLoading()
{
    const bool isFirstToCome = !viewer_->picture() && workspace_.edit().timeline().endFrame() > 0;
    const bool isToCome = isFirstToCome || !workspace_.knowsInstalled();
    viewer_->setStatus(loading_.isEmpty() && isToCome ? QStringLiteral("Loading\u2026") : loading_);
}

bool MainWindow::isSettled() const
{
    return workspace_.knowsInstalled() && !importer_.isBusy() && !files_->isBusy() && !adder_.isBusy() &&
           playback_->isUpToDate() && timeline_->strip().isSettled();
}

// The window itself

void MainWindow::restorePlace()
{
    const auto bytes = [](const char* key) {
        return QByteArray::fromBase64(QByteArray(oribund::prefs().getPreference(key, "").c_str()));
    };
    restoreGeometry(bytes(PreferenceKeys::kWindowGeometry));
    restoreState(bytes(PreferenceKeys::kWindowState));
}

void MainWindow::rememberPlace() const
{
    oribund::prefs().setPreference(PreferenceKeys::kWindowGeometry, saveGeometry().toBase64().constData());
    oribund::prefs().setPreference(PreferenceKeys::kWindowState, saveState().toBase64().constData());
    files_->rememberProject();
}

void MainWindow::showTitle()
{
    setWindowTitle(QString::fromStdString(document_.name()) + QStringLiteral("[*] \u2013 Oribund workbench"));
    setWindowModified(document_.isModified());
}

void MainWindow::enterTyped()
{
    const QPointer<QWidget> entry = focusWidget();
    if (!qobject_cast<QLineEdit*>(entry.data()))
        return;
    // The keyboard goes away from the entry and comes back, as for a menu. A panel makes its entry anew.
    const QPointer<QWidget> panel = dynamic_cast<oribund::qt::PanelSurface*>(entry->parentWidget());
    timeline_->strip().setFocus(Qt::MenuBarFocusReason);
    if (const QPointer<QWidget>& back = panel ? panel : entry; back && back->isVisible())
        back->setFocus(Qt::MenuBarFocusReason);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    enterTyped();
    if (!files_->mayEndExport() || !files_->mayGiveUpChanges()) {
        event->ignore();
        return;
    }
    workspace_.vob().stopPlay();
    exportBar_->cancel();
    document_.abandonChanges();
    rememberPlace();
    event->accept();
}

void MainWindow::keyPressEvent(QKeyEvent* event)
{
    // A key that a control might have wanted, and did not: it means what it means everywhere else.
    const QKeySequence keys(event->keyCombination());
    for (QAction* action : actions())
        if (action->isEnabled() && action->shortcuts().contains(keys))
            return action->trigger();
    QMainWindow::keyPressEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFilesOf(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // What is asked before a project is opened must not hold up whoever the files were dragged from.
    QMetaObject::invokeMethod(
        this,
        [this, paths = localFilesOf(*event->mimeData())] {
            enterTyped();
            files_->open(paths);
        },
        Qt::QueuedConnection);
}

// What happens to the edit

int MainWindow::handleReplaced(const EditReplaced&)
{
    const FormatData& format = workspace_.edit().format();
    viewer_->setAspect(static_cast<double>(format.width) * format.sampleAspectNumerator /
                       (static_cast<double>(format.height) * format.sampleAspectDenominator));
    playback_->editReplaced();
    showLoading();
    showTitle();
    undoCallback_.detach();
    undoCallback_.attach(workspace_.edit().undoStack().changes());
    return handleUndo({});
}

int MainWindow::handleUndo(const UndoStackEvent&)
{
    const UndoStack& undo = workspace_.edit().undoStack();
    const auto show = [](QAction& action, const char* verb, const oribund::WString& title, bool can) {
        QString text = QString::fromUtf8(verb);
        if (can)
            text += QLatin1Char(' ') + toMenuText(oribund::UIString(title));
        action.setText(text);
        action.setEnabled(can);
    };
    show(actions_->action(Command::Undo), "&Undo", undo.undoTitle(), undo.canUndo());
    show(actions_->action(Command::Redo), "&Redo", undo.redoTitle(), undo.canRedo());
    return 0;
}

int MainWindow::handleDocument(const DocumentChanged&)
{
    showTitle();
    return 0;
}

} // namespace workbench

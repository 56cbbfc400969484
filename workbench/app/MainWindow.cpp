#include "workbench/app/MainWindow.h"

#include "workbench/app/ClipPlacement.h"
#include "workbench/app/EffectListPane.h"
#include "workbench/app/EffectsPanelPane.h"
#include "workbench/app/MessageBar.h"
#include "workbench/app/Say.h"
#include "workbench/app/TimeCode.h"
#include "workbench/app/TransportBar.h"
#include "workbench/app/ViewerWidget.h"
#include "workbench/skin/QtConversions.h"

#include <QAction>
#include <QDockWidget>
#include <QMenuBar>
#include <QVBoxLayout>

namespace workbench
{

MainWindow::MainWindow(Workspace& workspace)
    : workspace_(workspace)
    , importer_(workspace)
    , adder_(workspace)
    , actions_(std::make_unique<ActionTable>(*this, handlers()))
    , viewer_(new ViewerWidget)
    , messages_(new MessageBar)
    , list_(new EffectListPane(workspace.catalogue()))
    , effects_(new EffectsPanelPane(workspace))
    , replacedCallback_(this, &MainWindow::handleReplaced)
    , undoCallback_(this, &MainWindow::handleUndo)
{
    build();
    Playback::Display display;
    display.picture = [this](const FrameImagePtr& picture) { viewer_->setPicture(picture); };
    display.problem = [this](const EngineProblem& problem) {
        showMessage(QString::fromStdString(problem.message), oribund::MessageSink::Severity::Warning);
    };
    playback_ = std::make_unique<Playback>(workspace_.session(), workspace_.vob(), std::move(display));
    viewer_->sizeWanted = [this](int width, int height) { playback_->setPictureSize(width, height); };
    list_->chosen = [this](const std::string& service) { adder_.add(service); };
    replacedCallback_.attach(workspace_.replaced());
    handleReplaced({});
}

MainWindow::~MainWindow()
{
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
    column->addWidget(new TransportBar(workspace_, *actions_));
    setCentralWidget(centre);
    actions_->fillMenus(*menuBar());
    setCorner(Qt::BottomLeftCorner, Qt::BottomDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::BottomDockWidgetArea);
    addDock(Qt::LeftDockWidgetArea, "Effects", "effectList", list_);
    addDock(Qt::RightDockWidgetArea, "Effect controls", "effectPanels", effects_);
    resize(1440, 860);
}

QDockWidget* MainWindow::addDock(Qt::DockWidgetArea area, const char* title, const char* name, QWidget* contents)
{
    auto* dock = new QDockWidget(QString::fromUtf8(title), this);
    dock->setObjectName(QLatin1String(name));
    dock->setFeatures(QDockWidget::DockWidgetMovable);
    dock->setWidget(contents);
    addDockWidget(area, dock);
    return dock;
}

std::map<Command, ActionTable::Handler> MainWindow::handlers()
{
    ModelVob& vob = workspace_.vob();
    return {
        {Command::Quit, [this] { close(); }},
        {Command::Undo, [this] { workspace_.edit().undoStack().undo(); }},
        {Command::Redo, [this] { workspace_.edit().undoStack().redo(); }},
        {Command::Split, [this] { split(); }},
        {Command::Remove, [this] { removeSelected(); }},
        {Command::Play, [this] { togglePlay(); }},
        {Command::StepBack, [this] { stepBy(-1); }},
        {Command::StepForward, [this] { stepBy(1); }},
        {Command::SecondBack, [this] { stepBy(-framesPerSecond(workspace_.edit().format())); }},
        {Command::SecondForward, [this] { stepBy(framesPerSecond(workspace_.edit().format())); }},
        {Command::ToStart, [this] { goTo(0); }},
        {Command::ToEnd, [this] { goTo(workspace_.edit().timeline().endFrame() - 1); }},
        {Command::PreviousCut, [this, &vob] { goTo(previousCut(workspace_.edit(), vob.currentFrame())); }},
        {Command::NextCut, [this, &vob] { goTo(nextCut(workspace_.edit(), vob.currentFrame())); }},
        {Command::AddEffect, [this] { list_->search(); }},
        {Command::RetryEffects, [this] { playback_->retryEffects(); }},
    };
}

void MainWindow::openFiles(const std::vector<std::string>& paths)
{
    importer_.import(paths);
}

void MainWindow::showMessage(const QString& message, oribund::MessageSink::Severity severity)
{
    messages_->show(message, severity);
}

bool MainWindow::isSettled() const
{
    return !importer_.isBusy() && !adder_.isBusy() && playback_->isUpToDate();
}

// What the commands do

void MainWindow::goTo(int frame)
{
    workspace_.vob().setCurrentTime(workspace_.vob().timeOf(frame));
}

void MainWindow::stepBy(int frames)
{
    workspace_.vob().stopPlay();
    goTo(workspace_.vob().currentFrame() + frames);
}

void MainWindow::togglePlay()
{
    ModelVob& vob = workspace_.vob();
    if (vob.isPlaying())
        vob.stopPlay();
    else if (workspace_.edit().timeline().endFrame() > 0)
        vob.startPlay();
}

void MainWindow::split()
{
    const int frame = workspace_.vob().currentFrame();
    const Segment* segment = workspace_.edit().timeline().findSegment(workspace_.selection().get());
    if (!segment || frame <= segment->data.start || frame >= segment->data.end())
        segment = topSegmentAt(workspace_.edit(), frame);
    if (!segment)
        return say("There is no segment at the current time.");
    const EditOutcome outcome = workspace_.editor().splitSegment(segment->id(), frame);
    if (outcome)
        workspace_.selection().set(outcome.object);
    else
        say(outcome.refused);
}

void MainWindow::removeSelected()
{
    if (!workspace_.edit().timeline().findSegment(workspace_.selection().get()))
        return say("Select a segment to remove.");
    if (const EditOutcome outcome = workspace_.editor().removeSegment(workspace_.selection().get()); !outcome)
        say(outcome.refused);
}

// What happens to the edit

int MainWindow::handleReplaced(const EditReplaced&)
{
    const FormatData& format = workspace_.edit().format();
    viewer_->setAspect(static_cast<double>(format.width) * format.sampleAspectNumerator /
                       (static_cast<double>(format.height) * format.sampleAspectDenominator));
    playback_->editReplaced();
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

} // namespace workbench

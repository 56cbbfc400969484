#include "workbench/app/PictureMaker.h"

#include "workbench/app/EffectStack.h"
#include "workbench/app/EffectsPanelPane.h"
#include "workbench/app/MainWindow.h"
#include "workbench/app/Workspace.h"
#include "workbench/skin/PanelView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QThread>

#include <algorithm>
#include <cstdio>

namespace workbench
{

namespace
{
constexpr int kPanelWidth = 400;
constexpr int kHighestPanel = 2000;
} // namespace

PictureMaker::PictureMaker(Workspace& workspace, MainWindow& window, double scale)
    : workspace_(workspace)
    , window_(window)
    , scale_(scale)
{
}

bool PictureMaker::settle(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    int calm = 0;
    while (clock.elapsed() < milliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        calm = window_.isSettled() ? calm + 1 : 0;
        if (calm > 3)
            return true;
        QThread::msleep(5);
    }
    return false;
}

void PictureMaker::save(QWidget& widget, const std::string& name)
{
    // The platform's own scale is in the widget's ratio already; what is asked for beyond it is painted larger.
    QImage picture(widget.size() * scale_, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale_);
    widget.render(&picture);
    const std::string path = folder_ + "/" + name + ".png";
    if (picture.save(QString::fromStdString(path)))
        std::printf("%s\n", path.c_str());
    else if (fault_.empty())
        fault_ = path + " could not be written.";
}

std::string PictureMaker::write(const std::string& folder)
{
    folder_ = folder;
    if (!QDir().mkpath(QString::fromStdString(folder)))
        return folder + " could not be made.";
    pictureWindow();
    if (fault_.empty())
        picturePanels();
    return fault_;
}

void PictureMaker::pictureWindow()
{
    window_.show();
    settle();
    save(window_, "window");
}

void PictureMaker::picturePanels()
{
    const Segment* const segment = workspace_.targetSegment();
    if (!segment) {
        fault_ = "There is no segment to put effects on.";
        return;
    }
    for (const EffectCatalogue::Entry& effect : workspace_.catalogue().all()) {
        if (!effect->curated || !effect->blockedBecause.empty() || !fault_.empty())
            continue;
        const EditOutcome added = workspace_.editor().addEffect(segment->id(), effect->service);
        if (!added)
            continue;
        PanelView view;
        view.resize(kPanelWidth, kHighestPanel);
        view.ensurePolished();
        EffectStack::InitArgs args(kPanelWidth, 0, &view.canvas());
        view.setPanel(std::make_unique<EffectStack>(
            args, workspace_.vob(), EffectStack::Effects{workspace_.edit().timeline().findEffect(added.object)},
            EffectStack::Requests()));
        view.show();
        view.resize(kPanelWidth, std::clamp(view.panel()->getHeight(), 24, kHighestPanel));
        QCoreApplication::processEvents();
        std::string name = effect->service;
        std::replace(name.begin(), name.end(), '/', '-');
        save(view, "panel-" + name);
        view.setPanel(nullptr);
        workspace_.edit().undoStack().undo();
    }
}

} // namespace workbench

#include "workbench/app/start/PictureMaker.h"

#include "oribund/controls/rows/KeyframeAngleCtrls.h"
#include "oribund/cues/CueColours.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/services/EditorPreferences.h"
#include "skin/PanelSurface.h"
#include "workbench/app/cues/CuePane.h"
#include "workbench/app/effects/EffectListPane.h"
#include "workbench/app/effects/EffectStack.h"
#include "workbench/app/effects/EffectTimePanel.h"
#include "workbench/app/effects/EffectsPanelPane.h"
#include "workbench/app/files/ExportDialog.h"
#include "workbench/app/session/ClipPlacement.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/app/timeline/TimeBar.h"
#include "workbench/app/timeline/TimeBarPane.h"
#include "workbench/app/timeline/TimelinePane.h"
#include "workbench/app/timeline/TimelineStrip.h"
#include "workbench/app/window/MainWindow.h"
#include "workbench/app/window/MessageBar.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPixmap>
#include <QThread>

#include <algorithm>
#include <cstdio>

namespace workbench
{

using oribund::qt::PanelSurface;

namespace
{
constexpr int kPanelWidth = 400;
constexpr int kHighestPanel = 2000;

PlainValue plainValueOf(const ParamDescription& param)
{
    if (const auto* number = std::get_if<double>(&*param.demo))
        return *number;
    if (const auto* colour = std::get_if<std::array<double, 4>>(&*param.demo))
        return *colour;
    if (const auto* point = std::get_if<std::array<double, 2>>(&*param.demo))
        return *point;
    const int index = std::get<int>(*param.demo);
    if (param.kind == ParamKind::Bool)
        return index != 0;
    return param.items[static_cast<std::size_t>(index)].raw;
}

oribund::Keyframe smoothKeyframe(double time, double value)
{
    oribund::Keyframe keyframe;
    keyframe.time = time;
    keyframe.value = value;
    keyframe.type = oribund::KeyframeType::Smooth;
    return keyframe;
}

/** The effect with settings that show what it does; its first number is animated: it gets there at `turn`, and goes
    half of the way back. */
EffectData demoOf(const EffectDescription& effect, double turn)
{
    EffectData data;
    data.service = effect.service;
    bool animated = false;
    for (const ParamDescription& param : effect.params) {
        if (!param.demo)
            continue;
        ParamData value{param.property, plainValueOf(param), false, {}};
        if (const auto* number = std::get_if<double>(&value.constant); number && param.animatable && !animated) {
            animated = value.keyframed = true;
            value.channels = {{smoothKeyframe(0.0, param.defaultValue), smoothKeyframe(turn, *number),
                               smoothKeyframe(0.8, (param.defaultValue + *number) / 2.0)}};
        }
        data.params.push_back(std::move(value));
    }
    return data;
}
} // namespace

PictureMaker::PictureMaker(Workspace& workspace, MainWindow& window)
    : workspace_(workspace)
    , window_(window)
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
    write(widget.grab(), name);
}

void PictureMaker::saveAtBothScales(QWidget& widget, const std::string& name)
{
    save(widget, name);
    constexpr int kScale = 2;
    QPixmap large(widget.size() * kScale);
    large.setDevicePixelRatio(kScale);
    widget.render(&large);
    write(large, name + "@2x");
}

void PictureMaker::write(const QPixmap& picture, const std::string& name)
{
    const std::string path = folder_ + "/" + name + ".png";
    if (picture.save(QString::fromStdString(path)))
        std::printf("%s\n", path.c_str());
    else if (fault_.empty())
        fault_ = path + " could not be written.";
}

std::string PictureMaker::write(const std::string& folder, const std::vector<std::string>& files)
{
    folder_ = folder;
    if (!QDir().mkpath(QString::fromStdString(folder)))
        return folder + " could not be made.";
    // The same pictures everywhere, whatever the screen.
    window_.arrange(MainWindow::kUsualSize);
    window_.show();
    settle();
    save(window_, "window-empty");
    window_.files().open(files);
    settle();
    if (!workspace_.targetSegment())
        return window_.messages().text().toStdString();
    if (fault_.empty())
        picturePanels();
    if (fault_.empty())
        pictureWindow();
    if (fault_.empty())
        pictureEffectBar();
    if (fault_.empty())
        pictureTimeBar();
    if (fault_.empty())
        pictureCueTable();
    if (fault_.empty())
        pictureStates();
    if (fault_.empty())
        pictureExport();
    if (fault_.empty())
        pictureDials();
    return fault_;
}

void PictureMaker::pictureWindow()
{
    // An edit in which something has been done: three segments, effects on one of them, one value animated.
    EditModel& edit = workspace_.edit();
    const int end = edit.timeline().endFrame();
    for (const int cut : {end / 4, end * 2 / 3})
        if (const Segment* segment = topSegmentAt(edit, cut))
            workspace_.editor().splitSegment(segment->id(), cut);
    const Segment* const segment = topSegmentAt(edit, end / 2);
    workspace_.selection().set(segment->id());
    double turn = 0.2;
    for (const char* service : {"lift_gamma_gain", "frei0r.saturat0r", "frei0r.vignette", "frei0r.sharpness"})
        if (const EffectCatalogue::Entry effect = workspace_.catalogue().find(service))
            workspace_.editor().addEffect(segment->id(), demoOf(*effect, turn += 0.1));
    addCues();
    workspace_.vob().setCurrentTime(workspace_.vob().timeOf(end / 2));
    if (!settle())
        fault_ = "The picture did not come in time.";
    save(window_, "window");
}

void PictureMaker::addCues()
{
    const ModelVob& vob = workspace_.vob();
    const int end = workspace_.edit().timeline().endFrame();
    std::size_t colour = 0;
    for (const auto& [place, name] : {std::pair{0.12, L"Boats leave"},
                                      {0.27, L"Bell"},
                                      {0.5, L"Sun breaks through"},
                                      {0.52, L"Gulls"},
                                      {0.8, L"Title"}}) {
        oribund::Cue cue;
        cue.time = vob.timeOf(static_cast<int>(end * place));
        cue.name = name;
        cue.colour = oribund::cueColours()[colour++].colour;
        workspace_.editor().addCue(cue);
    }
}

void PictureMaker::pictureTimeBar()
{
    TimeBarPane& pane = window_.timeBar();
    TimelineStrip& strip = window_.timeline().strip();
    saveAtBothScales(pane, "time-bar");
    strip.zoom(4.0);
    saveAtBothScales(pane, "time-bar-zoomed");
    save(window_, "window-zoomed");
    strip.scrollTo(0.0);
    workspace_.vob().setCurrentTime(0.0);
    const oribund::XY<int> size = pane.bar().getSize();
    pane.bar().resize(size.x, size.y - 6);
    saveAtBothScales(pane, "time-bar-low");
    pane.bar().resize(size);
    strip.showAll();
}

void PictureMaker::pictureEffectBar()
{
    EffectTimePanel& panel = window_.effectsPanel().timePanel();
    QWidget* const shown = PanelSurface::showing(panel);
    oribund::CompoundEffectMonitor& effects = *workspace_.vob().getEffectMonitor();
    const auto& stack = workspace_.targetSegment()->effects;
    effects.selectAllKeyframes(stack.back()->id(), {}, true);
    saveAtBothScales(*shown, "effect-bar");
    effects.getSignificantRegionServer().set({oribund::FXTime{0.25}, oribund::FXTime{0.6}});
    saveAtBothScales(*shown, "effect-bar-with-region");
    panel.setZoomed(true);
    saveAtBothScales(*shown, "effect-bar-zoomed");
    panel.setZoomed(false);
    effects.getSignificantRegionServer().set({});
    effects.selectAllKeyframes(oribund::IdStamp::wildcard(), {}, false);
}

void PictureMaker::pictureCueTable()
{
    workspace_.goToCue(workspace_.edit().getCues()[2]);
    window_.action(Command::DescribeCue).trigger();
    settle();
    saveAtBothScales(window_.cuePane(), "cue-table");
    save(window_, "window-cue");
}

void PictureMaker::pictureStates()
{
    window_.effectList().searchField().setText(QStringLiteral("blur"));
    window_.showMessage(QStringLiteral("The media file /films/harbour.mp4 is not there. Its segments are kept; put the "
                                       "file back and open the project again."),
                        oribund::MessageSink::Severity::Warning);
    settle();
    save(window_, "window-search-and-message");
    window_.effectList().searchField().clear();
}

void PictureMaker::pictureExport()
{
    ExportDialog::Suggestion suggestion;
    suggestion.folder = QDir::tempPath(); // one that is there on every machine
    suggestion.name = QStringLiteral("Harbour");
    suggestion.format = workspace_.edit().format();
    suggestion.frames = workspace_.edit().timeline().endFrame();
    ExportDialog dialog(suggestion, workspace_.exportPresets());
    dialog.show();
    QCoreApplication::processEvents();
    save(dialog, "export");
}

void PictureMaker::picturePanels()
{
    for (const EffectCatalogue::Entry& effect : workspace_.catalogue().all()) {
        if (effect->curated && effect->blockedBecause.empty() && fault_.empty())
            picturePanel(effect->service, effect->service);
    }
}

void PictureMaker::picturePanel(const std::string& service, std::string name)
{
    const EditOutcome added = workspace_.editor().addEffect(workspace_.targetSegment()->id(), service);
    if (!added)
        return;
    PanelSurface view;
    view.resize(kPanelWidth, kHighestPanel);
    view.ensurePolished();
    EffectStack::InitArgs args(kPanelWidth, 0, &view.canvas());
    auto stack = std::make_unique<EffectStack>(args, workspace_.vob(), EffectStack::Requests());
    EffectStack::Folded folded;
    stack->show({workspace_.edit().timeline().findEffect(added.object)}, folded);
    view.setPanel(std::move(stack));
    view.show();
    view.resize(kPanelWidth, std::clamp(view.panel()->getHeight(), 24, kHighestPanel));
    QCoreApplication::processEvents();
    std::replace(name.begin(), name.end(), '/', '-');
    saveAtBothScales(view, "panel-" + name);
    view.setPanel(nullptr);
    workspace_.edit().undoStack().undo();
}

void PictureMaker::pictureDials()
{
    // The preferences are those of this run alone.
    oribund::prefs().setPreference("use_dials_for_angles", 1);
    oribund::KeyframeAngleCtrls::forgetUseDials();
    picturePanel("affine", "affine-with-dials");
}

} // namespace workbench

#include "workbench/app/overlay/ViewerOverlay.h"

#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/services/EditorPreferences.h"
#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/panels/EffectComponentPanel.h"
#include "skin/PanelSurface.h"
#include "skin/QtConversions.h"
#include "workbench/app/effects/EffectsPanelPane.h"
#include "workbench/app/overlay/HandleGlob.h"
#include "workbench/app/overlay/OverlayPanel.h"
#include "workbench/app/overlay/PictureHandles.h"
#include "workbench/app/overlay/ViewerPicker.h"
#include "workbench/app/session/PreferenceKeys.h"
#include "workbench/app/window/ViewerWidget.h"
#include "workbench/model/Ids.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <utility>

namespace workbench
{

using oribund::qt::PanelSurface;

namespace
{
bool hasHandles(const oribund::EffectInstance& effect)
{
    PictureMapping anywhere;
    anywhere.area = {0.0, 0.0, 1.0, 1.0};
    return !handlesOf(effect, 0.0, anywhere).handles.empty();
}

/** The effect in whose panel a glob stands, masks counted with the effects that they belong to. */
ObjectId effectAround(const oribund::Glob* glob)
{
    ObjectId found = kNoObject;
    for (; glob; glob = glob->parent()) {
        const auto* const panel = dynamic_cast<const oribund::EffectComponentPanel*>(glob);
        if (panel && panel->getEffectPtr())
            found = objectOf(panel->getEffectPtr()->id());
    }
    return found;
}
} // namespace

ViewerOverlay::ViewerOverlay(Workspace& workspace, ViewerWidget& viewer, EffectsPanelPane& effects)
    : workspace_(workspace)
    , viewer_(viewer)
    , effects_(effects)
    , surface_(new PanelSurface(&viewer))
    , statistics_(workspace)
    , shown_(oribund::prefs().getPreference(PreferenceKeys::kShowHandles, true))
    , replaced_(this, &ViewerOverlay::handleReplaced)
    , selection_(this, &ViewerOverlay::handleSelection)
    , time_(this, &ViewerOverlay::handleTime)
    , playing_(this, &ViewerOverlay::handlePlaying)
    , edit_(this, &ViewerOverlay::handleModification)
{
    surface_->setAutoFillBackground(false); // the picture is below
    surface_->setAccessibleName(QStringLiteral("Handles in the picture"));
    auto panel = std::make_unique<OverlayPanel>(oribund::GlobCreationInfo(1, 1, &surface_->canvas()));
    panel_ = panel.get();
    surface_->setPanel(std::move(panel), PanelSurface::Fits::Both);
    picker_ =
        std::make_unique<ViewerPicker>(workspace_, *surface_, panel_->pickArea(), [this] { return viewer_.picture(); });
    picker_->changed = [this] { showOrHide(); };
    chooseTimer_.setSingleShot(true);
    QObject::connect(&chooseTimer_, &QTimer::timeout, this, [this] { choose(); });
    viewer_.installEventFilter(this);
    surface_->installEventFilter(this);
    effects_.surface().installEventFilter(this);
    QObject::connect(qApp, &QApplication::focusChanged, this, [this] { followPanels(); });
    viewer_.frameAreaChanged = [this] { fit(); };
    replaced_.attach(workspace_.replaced());
    selection_.attach(workspace_.selection().notifier());
    time_.attach(workspace_.vob().getCurrentTimeServer().notifier());
    playing_.attach(workspace_.vob().playServer().notifier());
    handleReplaced({});
}

ViewerOverlay::~ViewerOverlay()
{
    viewer_.frameAreaChanged = nullptr;
    picker_->changed = nullptr;
    picker_.reset();
    surface_->setPanel(nullptr); // before the effects that it shows
}

PictureHandles& ViewerOverlay::handles()
{
    return panel_->handles();
}

void ViewerOverlay::setShown(bool shown)
{
    if (shown == shown_)
        return;
    shown_ = shown;
    oribund::prefs().setPreference(PreferenceKeys::kShowHandles, shown);
    showOrHide();
}

void ViewerOverlay::showOrHide()
{
    const bool picking = picker_->isPicking();
    const bool wereSeen = handles().isVisible();
    const bool areSeen = shown_ && !picking && !workspace_.vob().isPlaying();
    if (wereSeen && !areSeen)
        handles().noteKeyboard();
    handles().setVisible(areSeen);
    surface_->setVisible(shown_ || picking);
    // The keyboard stays on the surface while the edit is played, and so for the handle that had it.
    if (!wereSeen && areSeen && surface_->hasFocus())
        handles().takeKeyboardBack();
    surface_->setFocusPolicy(picking || !handles().handles().empty() ? Qt::TabFocus : Qt::NoFocus);
}

void ViewerOverlay::fit()
{
    surface_->setGeometry(viewer_.rect());
    const QRectF area = viewer_.frameArea();
    PictureMapping mapping;
    mapping.area = {area.left(), area.top(), area.right(), area.bottom()};
    const FormatData& format = workspace_.edit().format();
    mapping.frameSize = {static_cast<double>(format.width), static_cast<double>(format.height)};
    panel_->setMapping(mapping);
}

// Whose handles

int ViewerOverlay::handleReplaced(const EditReplaced&)
{
    handles().showEffect({});
    edit_.detach();
    edit_.attach(workspace_.edit().modifications());
    wanted_ = kNoObject;
    knownOf_ = kNoObject; // a segment of the new edit may have the same id
    fit();
    choose();
    return 0;
}

int ViewerOverlay::handleSelection(const oribund::ValServerEvent<ObjectId>& event)
{
    if (event.kind == oribund::ValEventKind::Changed)
        chooseSoon();
    return 0;
}

int ViewerOverlay::handleTime(const oribund::ValServerEvent<double>& event)
{
    // Without a selection it is the time that decides on the segment.
    if (event.kind == oribund::ValEventKind::Changed && workspace_.selection().get() == kNoObject)
        chooseSoon();
    return 0;
}

int ViewerOverlay::handlePlaying(const oribund::ValServerEvent<bool>& event)
{
    if (event.kind == oribund::ValEventKind::Changed)
        showOrHide();
    return 0;
}

int ViewerOverlay::handleModification(const oribund::EditModification&)
{
    chooseSoon();
    return 0;
}

void ViewerOverlay::chooseSoon()
{
    chooseTimer_.start(0);
}

void ViewerOverlay::followPanels()
{
    if (const ObjectId focused = effectAround(effects_.surface().canvas().focusOwner()); focused != kNoObject)
        wanted_ = focused;
    chooseSoon();
}

void ViewerOverlay::choose()
{
    chooseTimer_.stop();
    const Segment* const segment = workspace_.targetSegment();
    const Effects effects = segment ? segment->effects : Effects();
    if (std::exchange(knownOf_, segment ? segment->id() : kNoObject) != (segment ? segment->id() : kNoObject))
        known_.clear();
    effect_ = chosenAmong(effects);
    const auto found = std::ranges::find_if(effects, [&](const auto& one) { return objectOf(one->id()) == effect_; });
    auto* const monitor = workspace_.vob().getEffectMonitor();
    handles().showEffect(found != effects.end() && monitor ? oribund::FXViewHandle(monitor->getFXVob(*found))
                                                           : oribund::FXViewHandle());
    showOrHide();
}

ObjectId ViewerOverlay::chosenAmong(const Effects& effects)
{
    ObjectId last = kNoObject;
    bool isThere = false;
    std::set<ObjectId> present;
    std::vector<ObjectId> added;
    for (const auto& effect : effects) {
        const ObjectId id = objectOf(effect->id());
        present.insert(id);
        isThere = isThere || id == wanted_;
        if (!hasHandles(*effect))
            continue;
        last = id;
        if (known_.count(id) == 0)
            added.push_back(id);
    }
    // One that was just added is what the user is at.
    if (!known_.empty() && added.size() == 1) {
        wanted_ = added.front();
        isThere = true;
    }
    known_ = std::move(present);
    return isThere ? wanted_ : last;
}

bool ViewerOverlay::eventFilter(QObject* watched, QEvent* event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (watched == &viewer_ && event->type() == QEvent::Resize) {
        fit();
    } else if (watched == surface_ && isPress) {
        // Beside the handles a press is none: the keyboard stays where it is.
        const auto* const router = oribund::EventRouter::find(&surface_->canvas());
        const auto& press = static_cast<QMouseEvent&>(*event);
        return router && !router->globAt(oribund::qt::fromQt(press.position().toPoint()));
    } else if (watched == &effects_.surface() && isPress) {
        const auto* const router = oribund::EventRouter::find(&effects_.surface().canvas());
        const auto& press = static_cast<QMouseEvent&>(*event);
        const oribund::Glob* const pressed =
            router ? router->globAt(oribund::qt::fromQt(press.position().toPoint())) : nullptr;
        if (const ObjectId effect = effectAround(pressed); effect != kNoObject)
            wanted_ = effect;
        chooseSoon();
    } else if (watched == &effects_.surface() && event->type() == QEvent::KeyRelease) {
        followPanels();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace workbench

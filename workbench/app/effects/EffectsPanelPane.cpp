#include "workbench/app/effects/EffectsPanelPane.h"

#include "oribund/controls/bars/CompoundEffectTherm.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/toolkit/scroll/ScrollPanel.h"
#include "oribund/panels/EffectComponentPanel.h"
#include "skin/PanelSurface.h"
#include "workbench/app/effects/EffectTimePanel.h"
#include "workbench/app/session/Say.h"
#include "workbench/model/Ids.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace workbench
{

using oribund::EditModification;
using oribund::qt::PanelSurface;

namespace
{
/** With less a slider is too short to be dragged; and the width is remembered when the window was small once. */
constexpr int kLeastWidth = 240;
} // namespace

EffectsPanelPane::EffectsPanelPane(Workspace& workspace, QWidget* parent)
    : QStackedWidget(parent)
    , workspace_(workspace)
    , timeSurface_(new PanelSurface)
    , surface_(new PanelSurface)
    , panels_(new QWidget)
    , outside_(new QLabel)
    , hint_(new QLabel)
    , replaced_(this, &EffectsPanelPane::handleReplaced)
    , selection_(this, &EffectsPanelPane::handleSelection)
    , time_(this, &EffectsPanelPane::handleTime)
    , edit_(this, &EffectsPanelPane::handleModification)
{
    setAccessibleName(QStringLiteral("Effects of the selected segment"));
    setMinimumWidth(kLeastWidth);
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setWordWrap(true);
    hint_->setMargin(16);
    hint_->setEnabled(false);
    addWidget(hint_);
    buildPanels();
    addWidget(panels_);
    refreshTimer_.setSingleShot(true);
    QObject::connect(&refreshTimer_, &QTimer::timeout, this, [this] { refresh(); });
    replaced_.attach(workspace_.replaced());
    selection_.attach(workspace_.selection().notifier());
    time_.attach(workspace_.vob().getCurrentTimeServer().notifier());
    bind();
}

EffectsPanelPane::~EffectsPanelPane()
{
    // Before the effects that they show.
    timePanel_->timeDragEnded = nullptr;
    surface_->setPanel(nullptr);
    timeSurface_->setPanel(nullptr);
}

void EffectsPanelPane::buildPanels()
{
    auto time =
        std::make_unique<EffectTimePanel>(EffectTimePanel::InitArgs(1, 0, &timeSurface_->canvas()), workspace_.vob());
    timePanel_ = time.get();
    timePanel_->timeDragEnded = [this] { refreshSoon(); };
    timeSurface_->setPanel(std::move(time));
    // It stays where it is while the panels below are scrolled.
    timeSurface_->setFixedHeight(timePanel_->getHeight());
    auto scroll = std::make_unique<oribund::ScrollPanel>(oribund::GlobCreationInfo(1, 1, &surface_->canvas()));
    scroll_ = scroll.get();
    surface_->setPanel(std::move(scroll), PanelSurface::Fits::Both);
    auto* const column = new QVBoxLayout(panels_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(timeSurface_);
    outside_->setText(QStringLiteral("The time is outside this segment. Changing an animated value moves it there."));
    outside_->setWordWrap(true);
    outside_->setMargin(6);
    outside_->setAutoFillBackground(true);
    outside_->setBackgroundRole(QPalette::AlternateBase);
    outside_->hide();
    // Below: it comes and goes with the time, and must not move a control that is being dragged.
    column->addWidget(surface_, 1);
    column->addWidget(outside_);
}

void EffectsPanelPane::bind()
{
    edit_.detach();
    edit_.attach(workspace_.edit().modifications());
    refreshSoon();
}

void EffectsPanelPane::refreshSoon()
{
    // A drag of the time on the bar stays with the effects on which it began, even beyond their end.
    const bool isDragged = workspace_.selection().get() == kNoObject && timePanel_->bar().dragState() != 0;
    if (!isDragged)
        refreshTimer_.start(0);
}

int EffectsPanelPane::handleReplaced(const EditReplaced&)
{
    scroll_->setContent(nullptr); // it shows the effects of an edit that is about to go
    shown_.clear();
    folded_.clear();
    timePanel_->setTrack({});
    timeOf_ = kNoObject; // one of the new edit may have the same id
    bind();
    return 0;
}

int EffectsPanelPane::handleSelection(const oribund::ValServerEvent<ObjectId>& event)
{
    if (event.kind == oribund::ValEventKind::Changed) {
        showWhetherOutside();
        showTime(workspace_.targetSegment()); // now: a drag on the bar must not go on over other effects
        refreshSoon();
    }
    return 0;
}

int EffectsPanelPane::handleTime(const oribund::ValServerEvent<double>& event)
{
    if (event.kind != oribund::ValEventKind::Changed)
        return 0;
    showWhetherOutside();
    // Without a selection the panels follow the picture.
    if (workspace_.selection().get() == kNoObject)
        refreshSoon();
    return 0;
}

void EffectsPanelPane::showWhetherOutside()
{
    const ModelVob& vob = workspace_.vob();
    const Segment* const selected = workspace_.edit().timeline().findSegment(workspace_.selection().get());
    // While the edit is played the time comes and goes.
    if (!vob.isPlaying())
        outside_->setVisible(selected &&
                             vob.isOutside({vob.timeOf(selected->data.start), vob.timeOf(selected->data.end())}));
}

bool EffectsPanelPane::saysOutside() const
{
    return outside_->isVisible();
}

int EffectsPanelPane::handleModification(const EditModification& modification)
{
    if (modification.type != EditModification::Type::EffectContent) // details may be another place in the order
        refreshSoon();
    return 0;
}

QString EffectsPanelPane::hint() const
{
    const Segment* const segment = workspace_.targetSegment();
    if (!segment)
        return QStringLiteral("Select a segment to see its effects.");
    return QStringLiteral("%1 has no effects.\n\nDouble-click one in the list to add it.")
        .arg(QString::fromStdString(quoted(segment->data.name)));
}

void EffectsPanelPane::refresh()
{
    refreshTimer_.stop();
    const Segment* const segment = workspace_.targetSegment();
    const EffectStack::Effects effects = segment ? segment->effects : EffectStack::Effects();
    hint_->setText(hint());
    setCurrentWidget(effects.empty() ? static_cast<QWidget*>(hint_) : panels_);
    showTime(segment);
    showWhetherOutside();
    if (effects == shown_)
        return;
    const EffectStack::Effects before = std::exchange(shown_, effects);
    showPanels(effects);
    reveal(before);
}

void EffectsPanelPane::showLeftOut()
{
    if (auto* const stack = dynamic_cast<EffectStack*>(scroll_->getContent()); stack && leftOut)
        stack->showLeftOut(leftOut());
}

void EffectsPanelPane::reveal(const EffectStack::Effects& before)
{
    auto* const stack = dynamic_cast<EffectStack*>(scroll_->getContent());
    const auto isNew = [&](const auto& effect) {
        return std::find(before.begin(), before.end(), effect) == before.end();
    };
    const auto added = std::find_if(shown_.begin(), shown_.end(), isNew);
    if (!stack || before.empty() || shown_.size() != before.size() + 1 || added == shown_.end())
        return;
    stack->reveal(stack->boxOf(objectOf((*added)->id())));
}

void EffectsPanelPane::showTime(const Segment* segment)
{
    const ObjectId id = segment ? segment->id() : kNoObject;
    if (std::exchange(timeOf_, id) == id)
        return;
    // What is selected is in view: no command reaches keyframes that the user has lost sight of.
    workspace_.vob().getEffectMonitor()->selectAllKeyframes(oribund::IdStamp::wildcard(), {}, false);
    timePanel_->setTrack(segment ? stampOf(segment->track) : oribund::IdStamp());
}

const oribund::EffectComponentPanel* EffectsPanelPane::focusedPanel() const
{
    const oribund::Glob* glob = surface_->canvas().focusOwner();
    while (glob && !dynamic_cast<const oribund::EffectComponentPanel*>(glob))
        glob = glob->parent();
    return dynamic_cast<const oribund::EffectComponentPanel*>(glob);
}

std::optional<oribund::CompoundEffectKeyframes::PasteTarget> EffectsPanelPane::focusedParam() const
{
    const oribund::EffectComponentPanel* const panel = focusedPanel();
    const auto* const shown = panel ? panel->findParamDescription(surface_->canvas().focusOwner()) : nullptr;
    if (!shown)
        return {};
    return oribund::CompoundEffectKeyframes::PasteTarget{panel->getEffectPtr()->id(), shown->id};
}

ObjectId EffectsPanelPane::focusedTitle() const
{
    const oribund::EffectComponentPanel* const panel = focusedPanel();
    const oribund::Glob* const owner = surface_->canvas().focusOwner();
    const bool inTitle =
        panel && (owner == panel || (owner->parent() == panel && !panel->widgetVisibilityCanChange(owner)));
    return inTitle && panel->getEffectPtr() ? objectOf(panel->getEffectPtr()->id()) : kNoObject;
}

EffectStack& EffectsPanelPane::stack()
{
    if (auto* const there = dynamic_cast<EffectStack*>(scroll_->getContent()))
        return *there;
    EffectStack::Requests requests;
    requests.move = [this](ObjectId effect, int index) {
        if (const EditOutcome outcome = workspace_.editor().moveEffect(effect, index); !outcome)
            say(outcome.refused);
    };
    requests.retry = [this](ObjectId effect) { retryWanted(effect); };
    EffectStack::InitArgs args(static_cast<unsigned short>(std::max(scroll_->getWidth(), 1)), 0, &surface_->canvas());
    auto made = std::make_unique<EffectStack>(args, workspace_.vob(), std::move(requests));
    EffectStack& stack = *made;
    scroll_->setContent(std::move(made));
    return stack;
}

void EffectsPanelPane::showPanels(const EffectStack::Effects& effects)
{
    const bool hadKeyboard = surface_->canvas().focusOwner() != nullptr;
    stack().show(effects, folded_);
    showLeftOut();
    if (hadKeyboard && !surface_->canvas().focusOwner())
        surface_->setFocus();
}

} // namespace workbench

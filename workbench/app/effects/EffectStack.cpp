#include "workbench/app/effects/EffectStack.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/panels/EffectComponentPanel.h"
#include "oribund/panels/FXPanelFactory.h"
#include "workbench/app/effects/GenericEffectPanel.h"
#include "workbench/model/Ids.h"
#include "workbench/model/projection/Projector.h"

#include <algorithm>
#include <utility>

namespace workbench
{

using namespace oribund;

namespace
{
/** Between two panels; it is where the line that parts them is drawn. */
constexpr int kPanelGap = 1;

/** Why an effect is not at work; empty for one that is. */
WString inactiveBecause(const ModelEffect& effect)
{
    const auto& description = effect.description();
    const WString name = L"\u201c" + effect.getName() + L"\u201d";
    if (!description)
        return name + L" is not active: it is not installed, or is none that a project may use. It is kept as it is.";
    if (description->blockedBecause.empty())
        return {};
    return name + L" is not active. " + toWide(description->blockedBecause) + L" It is kept as it is.";
}
} // namespace

EffectStack::EffectStack(const InitArgs& args, Vob& vob, Requests requests)
    : WidgetGroup(args)
    , vob_(vob)
    , requests_(std::move(requests))
    , reorder_(*this, [this](std::size_t from, std::size_t to) {
        requests_.move(objectOf(entries_[from].effect->id()), static_cast<int>(to));
    })
{
}

EffectStack::~EffectStack() = default;

void EffectStack::show(const Effects& effects, Folded& folded)
{
    const RedrawHold hold;
    const LayoutHold layoutHold(*this);
    const std::size_t focused = focusedEntry();
    const bool hadFocus = focused < entries_.size();
    for (const Entry& entry : entries_) {
        const ObjectId id = objectOf(entry.effect->id());
        entry.panel->getSizeState() == eSizeMinimised ? void(folded.insert(id)) : void(folded.erase(id));
    }
    reorder_.follow({});
    dropPanelsBut(effects);
    std::vector<Entry> entries;
    std::vector<Glob*> order;
    std::vector<EffectComponentPanel*> panels;
    for (const auto& effect : effects) {
        const auto found = std::ranges::find(entries_, effect, &Entry::effect);
        Entry entry = found != entries_.end() ? *found : makeEntry(effect);
        if (!entry.panel)
            continue;
        if (found == entries_.end() && folded.count(objectOf(effect->id())) > 0)
            entry.panel->setSizeState(eSizeMinimised);
        order.push_back(entry.panel);
        if (entry.note)
            order.push_back(entry.note);
        panels.push_back(entry.panel);
        entries.push_back(entry);
    }
    entries_ = std::move(entries);
    stackWidgets(order, kPanelGap);
    alignLabels();
    reorder_.follow(panels);
    // The keyboard goes on to the next effect when its own is gone, so that several are removed by one key.
    if (hadFocus && !entries_.empty() && focusedEntry() == entries_.size())
        entries_[std::min(focused, entries_.size() - 1)].panel->takeFocus();
}

/** The one that has the keyboard; the number of entries when none has. */
std::size_t EffectStack::focusedEntry() const
{
    const Glob* const owner = canvas() ? canvas()->focusOwner() : nullptr;
    const auto found =
        std::ranges::find_if(entries_, [owner](const Entry& entry) { return entry.panel->isAncestorOf(owner); });
    return static_cast<std::size_t>(found - entries_.begin());
}

void EffectStack::dropPanelsBut(const Effects& effects)
{
    const auto stays = [&effects](const Entry& entry) {
        return std::ranges::find(effects, entry.effect) != effects.end();
    };
    const auto gone = std::stable_partition(entries_.begin(), entries_.end(), stays);
    const std::vector<Entry> dropped(gone, entries_.end());
    entries_.erase(gone, entries_.end());
    for (const Entry& entry : dropped) {
        destroyWidget(*entry.panel);
        if (entry.note)
            destroyWidget(*entry.note);
    }
}

EffectStack::Entry EffectStack::makeEntry(const Kt::Ptr<ModelEffect>& effect)
{
    const auto width =
        static_cast<unsigned short>(std::clamp(getUserArea().width() - UifStd::getWidgetGap(), 0, 65535));
    FXPanelCreationOptions options(&vob_, effect, width, canvas());
    options.flags &= ~FXPanelCreationOptions::kDrawBorder; // the stack draws lines between its panels
    std::unique_ptr<EffectComponentPanel> panel(FXPanelFactory::instance().makeComponentPanel(options));
    if (!panel)
        return {};
    Entry entry{effect, panel.get(), panel->getMaskPanel()};
    addBelow(std::move(panel));
    entry.note = addNote(*effect);
    return entry;
}

Glob* EffectStack::addNote(const ModelEffect& effect)
{
    Label::InitArgs args(0, static_cast<unsigned short>(UifStd::getRowHeight()));
    args.text = UIString(inactiveBecause(effect));
    args.role = PaletteRole::DisabledText;
    if (args.text.empty())
        return nullptr;
    auto note = std::make_unique<Label>(args);
    Glob* const made = note.get();
    addBelow(std::move(note));
    return made;
}

void EffectStack::addBelow(std::unique_ptr<Glob> widget)
{
    Glob* const above = previousWidget();
    WidgetSurround surround;
    surround.followWidth = true;
    surround.right = UifStd::getWidgetGap();
    addWidget(std::move(widget), above ? WidgetPosition::below(*above, kPanelGap) : UserTopLeft(0, 0), surround);
}

void EffectStack::handleChildResize(const Glob* child, const XY<int>& oldSize)
{
    WidgetGroup::handleChildResize(child, oldSize);
    const auto found = std::ranges::find(entries_, child, &Entry::panel);
    if (found == entries_.end() || found->panel->getMaskPanel() == found->mask)
        return;
    found->mask = found->panel->getMaskPanel();
    alignLabels();
}

/** Controls of all panels, and of masks within them, stand in one column. */
void EffectStack::alignLabels()
{
    std::vector<std::pair<GenericEffectPanel*, int>> panels; // and how far their rows are indented
    for (const Entry& entry : entries_) {
        if (auto* const panel = dynamic_cast<GenericEffectPanel*>(entry.panel))
            panels.emplace_back(panel, 0);
        if (auto* const mask = dynamic_cast<GenericEffectPanel*>(entry.panel->getMaskPanel()))
            panels.emplace_back(mask, mask->getUserArea().left); // it stands where the rows of its effect do
    }
    int widest = 0;
    for (const auto& [panel, indent] : panels)
        widest = std::max(widest, panel->widestLabel() + indent);
    for (const auto& [panel, indent] : panels)
        panel->setLeastLabelWidth(widest - indent);
}

void EffectStack::showLeftOut(const std::vector<LeftOutEffect>& leftOut)
{
    const RedrawHold hold;
    for (const Entry& entry : entries_) {
        const ObjectId effect = objectOf(entry.effect->id());
        auto* const panel = dynamic_cast<GenericEffectPanel*>(entry.panel);
        const auto found = std::find_if(leftOut.begin(), leftOut.end(),
                                        [id = filterId(effect)](const auto& one) { return one.id == id; });
        if (!panel)
            continue;
        if (found == leftOut.end())
            panel->hideNotice();
        else
            panel->showNotice(found->hung ? L"Left out of the picture: it did not answer."
                                          : L"Left out of the picture: it crashed.",
                              L"Try again", [this, effect] { requests_.retry(effect); });
    }
}

Kt::Box<int> EffectStack::boxOf(ObjectId effect) const
{
    const auto found =
        std::ranges::find_if(entries_, [effect](const Entry& entry) { return objectOf(entry.effect->id()) == effect; });
    return found == entries_.end() ? Kt::Box<int>() : found->panel->box();
}

void EffectStack::draw(CanvasRenderer& renderer)
{
    WidgetGroup::draw(renderer);
    for (const Entry& entry : entries_)
        if (const double top = entry.panel->box().top; top > 0.0)
            renderer.fillRect({0.0, top - kPanelGap, static_cast<double>(getWidth()), top}, getPalette().border());
}

} // namespace workbench

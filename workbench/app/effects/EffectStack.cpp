#include "workbench/app/effects/EffectStack.h"

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

/** Carries a click in a title row to a request. */
class EffectStack::TitleButton
{
public:
    TitleButton(Button& shown, Place where, std::function<void()> act)
        : button(shown)
        , place(std::move(where))
        , act_(std::move(act))
        , click_(this, &TitleButton::handleClick)
    {
        click_.attach(shown.clicks());
    }

    Button& button;
    const Place place;

private:
    int handleClick(const ButtonEvent&)
    {
        const std::function<void()> act = act_; // the click may end this object
        act();
        return 0;
    }

    std::function<void()> act_;
    MethodCallback<TitleButton, ButtonEvent> click_;
};

EffectStack::EffectStack(const InitArgs& args, Vob& vob, const Effects& effects, const Folded& folded,
                         Requests requests)
    : WidgetGroup(args)
    , requests_(std::move(requests))
{
    const RedrawHold hold;
    for (std::size_t i = 0; i < effects.size(); ++i)
        addPanel(vob, effects[i], i == 0, i + 1 == effects.size());
    alignLabels();
    for (const auto& [id, panel] : panels_)
        if (folded.count(id) > 0)
            panel->setSizeState(eSizeMinimised);
}

EffectStack::~EffectStack() = default;

void EffectStack::alignLabels()
{
    std::vector<GenericEffectPanel*> panels;
    int widest = 0;
    for (const auto& [id, panel] : panels_)
        if (auto* const simple = dynamic_cast<GenericEffectPanel*>(panel)) {
            panels.push_back(simple);
            widest = std::max(widest, simple->widestLabel());
        }
    for (GenericEffectPanel* const panel : panels)
        panel->setLeastLabelWidth(widest);
}

void EffectStack::showLeftOut(const std::vector<LeftOutEffect>& leftOut)
{
    const RedrawHold hold;
    for (const auto& [effect, shown] : panels_) {
        auto* const panel = dynamic_cast<GenericEffectPanel*>(shown);
        const auto found = std::find_if(leftOut.begin(), leftOut.end(),
                                        [id = filterId(effect)](const auto& one) { return one.id == id; });
        if (!panel)
            continue;
        if (found == leftOut.end())
            panel->hideNotice();
        else
            panel->showNotice(found->hung ? L"Left out of the picture: it did not answer."
                                          : L"Left out of the picture: it crashed.",
                              L"Try again", [this, id = effect] { requests_.retry(id); });
    }
}

Kt::Box<int> EffectStack::boxOf(ObjectId effect) const
{
    const auto found =
        std::find_if(panels_.begin(), panels_.end(), [effect](const auto& one) { return one.first == effect; });
    return found == panels_.end() ? Kt::Box<int>() : found->second->box();
}

void EffectStack::noteFolded(Folded& folded) const
{
    for (const auto& [id, panel] : panels_)
        if (panel->getSizeState() == eSizeMinimised)
            folded.insert(id);
        else
            folded.erase(id);
}

EffectStack::Place EffectStack::focusedButton() const
{
    const auto found =
        std::find_if(buttons_.begin(), buttons_.end(), [](const auto& one) { return one->button.hasFocus(); });
    return found == buttons_.end() ? Place() : (*found)->place;
}

bool EffectStack::focusButton(const Place& place)
{
    // From the last added, so that what removes the effect is the last resort.
    Button* best = nullptr;
    for (auto one = buttons_.rbegin(); one != buttons_.rend(); ++one)
        if ((*one)->place.effect == place.effect && (*one)->button.canTakeFocus() &&
            (!best || (*one)->place.button == place.button))
            best = &(*one)->button;
    return best && best->takeFocus();
}

void EffectStack::draw(CanvasRenderer& renderer)
{
    WidgetGroup::draw(renderer);
    std::vector<Glob*> panels;
    getChildren(panels);
    for (const Glob* panel : panels)
        if (const double top = panel->box().top; top > 0.0)
            renderer.fillRect({0.0, top - 1.0, static_cast<double>(getWidth()), top}, getPalette().border());
}

void EffectStack::addBelow(std::unique_ptr<Glob> widget)
{
    Glob* const above = previousWidget();
    WidgetSurround surround;
    surround.followWidth = true;
    surround.right = UifStd::getWidgetGap();
    addWidget(std::move(widget), above ? WidgetPosition::below(*above, 1) : WidgetPosition::userTopLeft(0, 0),
              surround);
}

void EffectStack::addPanel(Vob& vob, const Kt::Ptr<ModelEffect>& effect, bool first, bool last)
{
    const auto width =
        static_cast<unsigned short>(std::clamp(getUserArea().width() - UifStd::getWidgetGap(), 0, 65535));
    FXPanelCreationOptions options(&vob, effect, width, canvas());
    options.flags &= ~FXPanelCreationOptions::kDrawBorder; // the stack draws lines between its panels
    std::unique_ptr<EffectComponentPanel> panel(FXPanelFactory::instance().makeComponentPanel(options));
    if (!panel)
        return;
    addButtons(*panel, *effect, first, last);
    panels_.emplace_back(objectOf(effect->id()), panel.get());
    addBelow(std::move(panel));
    if (!effect->description())
        addNote(L"\u201c" + effect->getName() +
                L"\u201d is not active: it is not installed, or is none that a project may use. "
                L"It is kept as it is.");
    else if (const std::string& why = effect->description()->blockedBecause; !why.empty())
        addNote(L"\u201c" + effect->getName() + L"\u201d is not active. " + toWide(why) + L" It is kept as it is.");
}

void EffectStack::addNote(const WString& text)
{
    Label::InitArgs args(0, static_cast<unsigned short>(UifStd::getRowHeight()));
    args.text = UIString(text);
    args.role = PaletteRole::DisabledText;
    addBelow(std::make_unique<Label>(args));
}

void EffectStack::addButtons(EffectComponentPanel& panel, const ModelEffect& effect, bool first, bool last)
{
    const int size = UifStd::getControlHeight();
    int fromRight = size + UifStd::getWidgetGap() / 2; // the switch stands at the end of the row
    const ObjectId id = objectOf(effect.id());
    const auto add = [&](const char* icon, const wchar_t* what, bool enabled, std::function<void()> act) {
        Button::InitArgs args(static_cast<unsigned short>(size), static_cast<unsigned short>(size));
        args.icon = Image::icon(icon);
        args.style = Button::Style::Flat;
        Button* const button = panel.addTitleWidget(std::make_unique<Button>(args), fromRight);
        const UIString name(WString(what) + L" " + effect.getName());
        button->setTooltip(name);
        button->setAccessibleName(name);
        button->setEnabled(enabled);
        buttons_.push_back(std::make_unique<TitleButton>(*button, Place{id, icon}, std::move(act)));
        fromRight += size;
    };
    add("trash", L"Remove", true, [this, id] { requests_.remove(id); });
    add("down", L"Apply later:", !last, [this, id] { requests_.move(id, 1); });
    add("up", L"Apply earlier:", !first, [this, id] { requests_.move(id, -1); });
    putTitleFirst(panel);
}

/** In the Tab order: the buttons are the panel's last widgets, and stand above its rows. */
void EffectStack::putTitleFirst(EffectComponentPanel& panel)
{
    std::vector<Glob*> widgets;
    panel.getChildren(widgets);
    // Each was added left of the one before.
    for (auto widget = widgets.rbegin(); widget != widgets.rend(); ++widget)
        if (!panel.widgetVisibilityCanChange(*widget))
            panel.addTabStop(dynamic_cast<TabOrderable*>(*widget));
}

} // namespace workbench

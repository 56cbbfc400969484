#include "oribund/panels/EffectMenu.h"

#include "oribund/host/base/FXTime.h"
#include "oribund/host/edit/FXEditor.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Menu.h"

#include <algorithm>
#include <iterator>

namespace oribund
{

namespace
{
using Command = FXEditor::Command;
using Offer = FXEditor::Offer;
using EffectPtr = Kt::Ptr<EffectInstance>;

/** At the current time, which is moved to the effect first. */
FXEditor::RC keyframeAll(FXEditor& editor, Vob& vob, const EffectPtr& effect)
{
    CompoundEffectMonitor* const monitor = vob.getEffectMonitor();
    if (!monitor)
        return FXEditor::RC::NotOffered;
    vob.prepareEdit(monitor->getEditRegion(effect->id()));
    return editor.keyframeAll(*effect, std::clamp(monitor->getCurrentFXTime(effect), FXTime{0.0}, FXTime{1.0}));
}

/** What an item sends, and what is done at that. */
struct HostAction {
    const char* message;
    int text;
    Command command;
    FXEditor::RC (*perform)(FXEditor& editor, Vob& vob, const EffectPtr& effect);
};

constexpr HostAction kReset{"ResetComponent", TextIds::kResetAll, Command::Reset,
                            [](FXEditor& editor, Vob&, const EffectPtr& effect) { return editor.reset(*effect); }};
constexpr HostAction kKey{"KeyframeComponent", TextIds::kKeyframeAll, Command::KeyframeAll, keyframeAll};
constexpr HostAction kCopy{
    "CopyComponent", TextIds::kCopySettings, Command::CopySettings,
    [](FXEditor& editor, Vob&, const EffectPtr& effect) { return editor.copySettings(*effect); }};
constexpr HostAction kPaste{
    "PasteComponent", TextIds::kPasteSettings, Command::PasteSettings,
    [](FXEditor& editor, Vob&, const EffectPtr& effect) { return editor.pasteSettings(*effect); }};
constexpr HostAction kMoveUp{"MoveComponentUp", TextIds::kMoveUp, Command::MoveUp,
                             [](FXEditor& editor, Vob&, const EffectPtr& effect) { return editor.move(*effect, -1); }};
constexpr HostAction kMoveDown{"MoveComponentDown", TextIds::kMoveDown, Command::MoveDown,
                               [](FXEditor& editor, Vob&, const EffectPtr& effect) { return editor.move(*effect, 1); }};
constexpr const HostAction* kHostActions[] = {&kReset, &kKey, &kCopy, &kPaste, &kMoveUp, &kMoveDown};

constexpr const char* kMask = "MaskComponent";

/** Fills the menu of one effect. */
class MenuFiller
{
public:
    MenuFiller(Menu& menu, Vob& vob, const EffectInstance& effect)
        : menu_(menu)
        , vob_(vob)
        , effect_(effect)
        , editor_(vob.fxEditor())
    {
    }

    void fill()
    {
        addHost(kReset);
        addHost(kKey);
        endBlock();
        addHost(kCopy);
        addHost(kPaste);
        endBlock();
        addCommand(Command::Rename, TextIds::kRename, EffectMenuItems::kRename);
        addMask();
        endBlock();
        addHost(kMoveUp);
        addHost(kMoveDown);
        endBlock();
        if (editor_ && editor_->findNode(effect_) != FXEditor::Node::None)
            add(UIString(TextIds::kRemove), EffectMenuItems::kRemove, !vob_.isReadOnly());
    }

private:
    /** A line before the next item, if there is one, that sets it off from those before. */
    void endBlock()
    {
        const auto& items = menu_.items();
        lineWanted_ = !items.empty() && items.back().kind != MenuItem::Kind::Separator;
    }

    MenuItem& add(const UIString& label, const char* message, bool enabled)
    {
        if (lineWanted_)
            menu_.addSeparator();
        lineWanted_ = false;
        MenuItem& item = menu_.addItem(label, String(message));
        item.enabled = enabled;
        return item;
    }

    void addCommand(Command command, int text, const char* message)
    {
        const Offer offer = editor_ ? editor_->offers(command, effect_) : Offer::No;
        const bool changesNothing = command == Command::CopySettings;
        if (offer != Offer::No)
            add(UIString(text), message, offer == Offer::Yes && (changesNothing || !vob_.isReadOnly()));
    }

    void addHost(const HostAction& action) { addCommand(action.command, action.text, action.message); }

    /** One that cannot be had is there all the same, and says why. */
    void addMask()
    {
        UIString reason;
        const bool maskable = editor_ && editor_->isMaskable(effect_, reason);
        if (!maskable && reason.empty())
            return;
        const UIString label = maskable ? UIString(TextIds::kMaskTitle)
                                        : UIString(TextIds::kNoMask).withPlaceholder(L"REASON", displayText(reason));
        add(label, kMask, maskable && !vob_.isReadOnly()).checked = effect_.getMask() != nullptr;
    }

    Menu& menu_;
    Vob& vob_;
    const EffectInstance& effect_;
    FXEditor* editor_;
    bool lineWanted_ = false;
};

} // namespace

void EffectMenuItems::getItemsForComponent(Menu& menu, Vob& vob, const EffectPtr& effect)
{
    if (effect)
        MenuFiller(menu, vob, *effect).fill();
}

bool EffectMenuItems::perform(const String& message, Vob& vob, const EffectPtr& effect)
{
    FXEditor* const editor = vob.fxEditor();
    if (!effect || !editor)
        return false;
    if (message == kMask) {
        editor->setMask(*effect, !effect->getMask());
        return true;
    }
    const auto* const action =
        std::ranges::find_if(kHostActions, [&](const HostAction* each) { return message == each->message; });
    if (action == std::end(kHostActions))
        return false;
    (*action)->perform(*editor, vob, effect);
    return true;
}

} // namespace oribund

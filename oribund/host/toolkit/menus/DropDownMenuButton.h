#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/core/Control.h"

#include <chrono>
#include <vector>

namespace oribund
{

template <class Widget>
class KeyTable;

class DropDownMenuButton;

/** The user's choice of an item. */
struct DropDownMenuEvent {
    /** Valid when the call begins. */
    DropDownMenuButton* button = nullptr;
    unsigned index = 0;
};

/**
 * A button that shows one of several texts and drops down a menu of them. Arrow keys choose without it, and so does the
 * beginning of a text when it is typed; the same letter again goes on to the next text that begins with it.
 */
class ORIBUND_API DropDownMenuButton : public Control
{
public:
    static constexpr unsigned kNoSelection = static_cast<unsigned>(-1);

    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        std::vector<UIString> items;
        unsigned selected = kNoSelection;
        /** Shown instead of a text; the selection then shows in the menu only. */
        Image icon;
    };

    explicit DropDownMenuButton(const InitArgs& args);

    /** Keeps the selection as long as there is an item with its number. */
    void setItems(const std::vector<UIString>& items, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    const std::vector<WString>& getItems() const { return items_; }

    /** A number that there is no item for selects nothing. */
    void setSelected(unsigned index, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    /** kNoSelection when nothing is. */
    unsigned getSelected() const { return selected_; }

    /** Empty when nothing is selected. */
    const WString& getSelectedText() const;

    const Image& getIcon() const { return icon_; }

    /** As wide as its widest item needs. */
    void autoSize();
    XY<int> calcNaturalSize() const;

    /** Tells of what the user chooses; not of setSelected(). */
    Notifier<DropDownMenuEvent>& choices() { return choices_; }

    /** The user has chosen an item. Choosing the selected one does nothing. */
    void userSelect(unsigned index);
    /** The user wants to see the menu. */
    void userOpenMenu();

    /** The selected text when it is cut short, unless another tooltip was set. */
    UIString tooltip() const override;
    UIString accessibleName() const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleActivate(int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** Takes a choice; false when it is refused. By default it tells choices(). May destroy the button. */
    virtual bool handleChoice(unsigned index);

    bool hasMenu() const override { return !items_.empty(); }

    void reviewMenu(const Event* event) override;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    static const KeyTable<DropDownMenuButton>& keys();
    void selectNeighbour(int step);
    void selectByTyping(wchar_t letter);
    bool selectBeginningWith(const WString& beginning, bool fromNext);
    Kt::Box<int> textBox() const;

    std::vector<WString> items_;
    unsigned selected_ = kNoSelection;
    Image icon_;
    WString typed_;
    std::chrono::steady_clock::time_point typedAt_;
    Notifier<DropDownMenuEvent> choices_;
};

} // namespace oribund

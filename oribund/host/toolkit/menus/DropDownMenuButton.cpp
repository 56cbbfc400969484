#include "oribund/host/toolkit/menus/DropDownMenuButton.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/KeyTable.h"
#include "oribund/host/toolkit/core/Menu.h"
#include "oribund/host/toolkit/widgets/Button.h"

#include <algorithm>
#include <array>

namespace oribund
{

namespace
{

/** The room that the arrow at the right end takes. */
int arrowWidth()
{
    return UifStd::getControlHeight() * 3 / 4;
}

std::vector<WString> textsOf(const std::vector<UIString>& items)
{
    std::vector<WString> texts;
    texts.reserve(items.size());
    for (const UIString& item : items)
        texts.push_back(displayText(item));
    return texts;
}

bool isLetter(const Event& press)
{
    return press.isPlainKeyPress() && press.key == Key::Character && !press.text.empty();
}

} // namespace

DropDownMenuButton::DropDownMenuButton(const InitArgs& args)
    : Control(args)
    , items_(textsOf(args.items))
    , selected_(args.selected < items_.size() ? args.selected : kNoSelection)
    , icon_(args.icon)
{
    applyNaturalSize(args, calcNaturalSize());
}

void DropDownMenuButton::setItems(const std::vector<UIString>& items, eRedrawFlag redrawFlag)
{
    std::vector<WString> texts = textsOf(items);
    if (texts == items_)
        return;
    items_ = std::move(texts);
    if (selected_ >= items_.size())
        selected_ = kNoSelection;
    changed(GlobChange::kLook, redrawFlag);
}

void DropDownMenuButton::setSelected(unsigned index, eRedrawFlag redrawFlag)
{
    if (index >= items_.size())
        index = kNoSelection;
    if (index == selected_)
        return;
    selected_ = index;
    changed(GlobChange::kLook, redrawFlag);
}

const WString& DropDownMenuButton::getSelectedText() const
{
    static const WString kNone;
    return selected_ < items_.size() ? items_[selected_] : kNone;
}

XY<int> DropDownMenuButton::calcNaturalSize() const
{
    XY<int> size = Button::calcSizeFor({}, font());
    if (!icon_.empty())
        return {size.y + arrowWidth(), size.y};
    for (const WString& item : items_)
        size.x = std::max(size.x, Button::calcSizeFor(item, font()).x);
    return {size.x + arrowWidth(), size.y};
}

void DropDownMenuButton::autoSize()
{
    const XY<int> natural = calcNaturalSize();
    resize({natural.x, std::max(natural.y, getHeight())});
}

void DropDownMenuButton::userSelect(unsigned index)
{
    if (!canInteract() || index >= items_.size() || index == selected_)
        return;
    const GlobRef<DropDownMenuButton> self(this);
    const RedrawHold hold;
    const unsigned before = selected_;
    setSelected(index);
    const bool accepted = handleChoice(index);
    if (self && !accepted && selected_ == index)
        setSelected(before);
}

bool DropDownMenuButton::handleChoice(unsigned index)
{
    choices_.notify({this, index});
    return true;
}

void DropDownMenuButton::userOpenMenu()
{
    openMenu({0, controlBox().bottom});
}

void DropDownMenuButton::reviewMenu(const Event*)
{
    editMenu().setMinWidth(getWidth());
    for (unsigned i = 0; i < items_.size(); ++i) {
        const GlobRef<DropDownMenuButton> self(this);
        MenuItem& item = editMenu().addItem(items_[i], [self, i] {
            if (self)
                self->userSelect(i);
        });
        item.checked = i == selected_;
    }
}

void DropDownMenuButton::selectNeighbour(int step)
{
    const int last = static_cast<int>(items_.size()) - 1;
    const int from = selected_ == kNoSelection ? (step > 0 ? -1 : last + 1) : static_cast<int>(selected_);
    userSelect(static_cast<unsigned>(std::clamp(from + step, 0, std::max(0, last))));
}

void DropDownMenuButton::selectByTyping(wchar_t letter)
{
    constexpr std::chrono::seconds kPause(1); // after it typing begins anew
    const auto now = std::chrono::steady_clock::now();
    const bool goesOn = now - typedAt_ < kPause;
    const bool isSameLetter = goesOn && !typed_.empty() && foldCase(typed_.view().back()) == foldCase(letter);
    typedAt_ = now;
    const WString one(std::wstring(1, letter).c_str());
    const WString beginning = goesOn ? typed_ + one : one;
    typed_ = beginning;
    if (goesOn && selectBeginningWith(beginning, false))
        return;
    typed_ = one;
    selectBeginningWith(one, !goesOn || isSameLetter);
}

/** From the item that is selected, or the one after it, on. False when none begins so; else it may be gone now. */
bool DropDownMenuButton::selectBeginningWith(const WString& beginning, bool fromNext)
{
    const auto begins = [&](const WString& text) {
        const auto all = text.view();
        const auto first = beginning.view();
        return all.size() >= first.size() &&
               std::equal(first.begin(), first.end(), all.begin(),
                          [](wchar_t a, wchar_t b) { return foldCase(a) == foldCase(b); });
    };
    const std::size_t count = items_.size();
    const std::size_t from = selected_ == kNoSelection ? 0 : selected_ + (fromNext ? 1 : 0);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t candidate = (from + i) % count;
        if (begins(items_[candidate])) {
            userSelect(static_cast<unsigned>(candidate));
            return true;
        }
    }
    return false;
}

bool DropDownMenuButton::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left)) {
        userOpenMenu();
        return true;
    }
    // The menu is what the button drops down; a context menu is that of the row.
    if (event.isPress(MouseButton::Right))
        return false;
    return Control::handleMouseEvent(event);
}

const KeyTable<DropDownMenuButton>& DropDownMenuButton::keys()
{
    static constexpr KeyAction<DropDownMenuButton> kActions[] = {
        {Key::Up, [](DropDownMenuButton& widget, const Event&) { widget.selectNeighbour(-1); }},
        {Key::Down, [](DropDownMenuButton& widget, const Event&) { widget.selectNeighbour(1); }},
        {Key::Home, [](DropDownMenuButton& widget, const Event&) { widget.userSelect(0); }},
        {Key::End, [](DropDownMenuButton& widget,
                      const Event&) { widget.userSelect(static_cast<unsigned>(widget.items_.size()) - 1); }},
        {Key::Space, [](DropDownMenuButton& widget, const Event&) { widget.userOpenMenu(); }},
        {Key::Enter, [](DropDownMenuButton& widget, const Event&) { widget.userOpenMenu(); }},
    };
    static constexpr KeyTable<DropDownMenuButton> kKeys(kActions);
    return kKeys;
}

bool DropDownMenuButton::usesKey(const Event& press) const
{
    return isLetter(press) || keys().has(press) || Control::usesKey(press);
}

bool DropDownMenuButton::handleKeyEvent(const Event& event)
{
    if (isLetter(event)) {
        selectByTyping(event.text.view().front());
        return true;
    }
    return keys().run(*this, event) || Control::handleKeyEvent(event);
}

UIString DropDownMenuButton::tooltip() const
{
    const UIString own = Control::tooltip();
    const bool isCut = icon_.empty() && UifStd::measure(getSelectedText(), font()) > textBox().width();
    return own.empty() && isCut ? UIString(getSelectedText()) : own;
}

UIString DropDownMenuButton::accessibleName() const
{
    const UIString own = Control::accessibleName();
    return own.empty() ? Control::tooltip() : own;
}

/** What the frame and the arrow leave. */
Kt::Box<int> DropDownMenuButton::textBox() const
{
    Kt::Box<int> box = controlBox().inset(UifStd::getWidgetGap(), 2);
    box.right = controlBox().right - arrowWidth();
    return box;
}

void DropDownMenuButton::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::DropDown;
    description.action = AccessibleAction::ShowMenu;
    description.value = getSelectedText();
    description.hasMenu = true;
    description.expandable = true;
    description.expanded = isMenuOpen();
}

bool DropDownMenuButton::accessibleActivate(int)
{
    userOpenMenu();
    return true;
}

void DropDownMenuButton::draw(CanvasRenderer& renderer)
{
    const Palette& palette = getPalette();
    const Kt::Box<int> box = controlBox();
    const Colour colour = ink(palette.buttonText());
    drawBox(renderer, box, buttonGround(isMenuOpen()));

    const double side = arrowWidth();
    const Kt::Box<double> rest = CanvasRenderer::toDouble(textBox());
    if (!icon_.empty()) {
        const double length = std::min(rest.width(), rest.height());
        const XY<double> middle = rest.centre();
        renderer.image({middle.x - length / 2, middle.y - length / 2, middle.x + length / 2, middle.y + length / 2},
                       icon_, colour);
    } else if (selected_ != kNoSelection) {
        renderer.text(rest, getSelectedText(), font(), colour);
    }

    const XY<double> tip{box.right - side / 2, (box.top + box.bottom) / 2.0};
    const double half = side / 4;
    const std::array<XY<double>, 3> arrow = {
        XY<double>{tip.x - half, tip.y - half / 2}, {tip.x + half, tip.y - half / 2}, {tip.x, tip.y + half / 2}};
    renderer.polygon(arrow, colour);
}

} // namespace oribund

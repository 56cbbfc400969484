#include "oribund/host/toolkit/entries/TextBox.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/Skin.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

constexpr int kFrame = 1;
constexpr int kPadding = 4;
constexpr double kCoarse = 10.0;
constexpr double kFine = 0.1;

} // namespace

TextBox::TextBox(const InitArgs& args)
    : Control(args)
    , placeholder_(displayText(args.placeholder))
    , align_(args.align)
    , maxLength_(args.maxLength)
    , readOnly_(args.readOnly)
{
    text_ = cleaned(displayText(args.text));
    setCursor(MouseCursor::Text);
    applyNaturalSize(args, {4 * UifStd::getRowHeight(), UifStd::getControlHeight()});
}

WString TextBox::cleaned(const WString& text) const
{
    const auto isControl = [](wchar_t c) { return c < 0x20 || (c >= 0x7f && c < 0xa0) || c == 0x2028 || c == 0x2029; };
    if (text.size() <= maxLength_ && std::none_of(text.begin(), text.end(), isControl))
        return text;
    WString clean;
    bool gap = false;
    for (const wchar_t c : text) {
        // Pasted lines come one after the other, with a space between.
        if (isControl(c)) {
            gap = !clean.empty();
            continue;
        }
        if (gap && clean.size() < maxLength_)
            clean += L' ';
        gap = false;
        if (clean.size() >= maxLength_)
            break;
        clean += c;
    }
    return clean;
}

void TextBox::setText(const WString& text, eRedrawFlag redrawFlag)
{
    ++revision_;
    const WString clean = cleaned(text);
    if (clean == text_)
        return;
    text_ = clean;
    changed(GlobChange::kLook, redrawFlag);
}

void TextBox::setPlaceholder(const UIString& text)
{
    placeholder_ = displayText(text);
    changed(GlobChange::kLook);
}

void TextBox::setAlignment(TextAlign align)
{
    align_ = align;
    changed(GlobChange::kLook);
}

void TextBox::setReadOnly(bool readOnly)
{
    if (readOnly == readOnly_)
        return;
    readOnly_ = readOnly;
    typed_ = typed_ && !readOnly;
    changed(GlobChange::kLook);
}

void TextBox::userStartEditing()
{
    const GlobRef<TextBox> self(this);
    takeFocus();
    if (!self || !hasFocus())
        return;
    editing_ = !readOnly_;
    allSelected_ = true;
    changed(GlobChange::kLook);
}

void TextBox::userEdit(const WString& text)
{
    if (readOnly_ || !canInteract())
        return;
    typing_ = cleaned(text);
    // Back at the value it follows that again, whatever changes it.
    typed_ = typing_ != text_;
    editing_ = true;
    allSelected_ = false;
    setProblem({});
    changed(GlobChange::kLook);
    handleTyping();
}

bool TextBox::userCommit(const WString& text)
{
    if (readOnly_ || !canInteract()) {
        stopTyping();
        return false;
    }
    const GlobRef<TextBox> self(this);
    const RedrawHold hold;
    const WString entered = cleaned(text);
    const WString problem = entered == text_ ? WString() : problemWith(entered);
    if (!problem.empty()) {
        refuse(entered, problem);
        return false;
    }
    stopTyping();
    if (entered == text_)
        return true;
    const unsigned revision = revision_;
    const bool accepted = handleCommit(entered);
    // Whoever took it may have put it in another form.
    if (self && accepted && revision_ == revision)
        setText(entered);
    return accepted;
}

void TextBox::refuse(const WString& text, const WString& problem)
{
    if (hasFocus())
        userEdit(text);
    else
        stopTyping();
    setProblem(problem);
}

void TextBox::setProblem(const WString& problem)
{
    if (problem == problem_)
        return;
    problem_ = problem;
    changed(GlobChange::kLook | GlobChange::kTooltip);
    if (Skin* skin = isShown() ? canvas()->skin() : nullptr)
        skin->showHint(*this, problem);
}

WString TextBox::problemWith(const WString&) const
{
    return {};
}

bool TextBox::handleCommit(const WString& text)
{
    commits_.notify({this, text});
    return true;
}

void TextBox::userCancel()
{
    stopTyping();
    handleTyping();
}

void TextBox::stopTyping()
{
    typed_ = false;
    typing_.clear();
    editing_ = false;
    allSelected_ = hasFocus();
    setProblem({});
    changed(GlobChange::kLook);
}

bool TextBox::userStep(double steps)
{
    if (readOnly_ || !canInteract() || steps == 0.0 || !canStep())
        return false;
    handleStep(steps);
    return true;
}

bool TextBox::canStep() const
{
    return false;
}

void TextBox::handleStep(double) {}

bool TextBox::ownsPress() const
{
    return false;
}

double TextBox::stepScale(const Event& event)
{
    return (event.has(Event::kShift) ? kCoarse : 1.0) * (event.has(Event::kCtrl) ? kFine : 1.0);
}

bool TextBox::turn(double notches, double scale)
{
    if (!canStep())
        return false;
    wheelRest_ += notches;
    const double whole = std::trunc(wheelRest_);
    wheelRest_ -= whole;
    return whole == 0.0 || userStep(whole * scale);
}

bool TextBox::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left))
        return true;
    // Without the keyboard the wheel scrolls what the box stands in.
    if (event.code == EventCode::MouseWheel && hasFocus() && turn(event.wheel, stepScale(event)))
        return true;
    const GlobRef<TextBox> self(this);
    if (Control::handleMouseEvent(event))
        return true;
    // The native menu of texts pastes into what has the keyboard.
    if (self && event.isPress(MouseButton::Right))
        takeFocus();
    return false;
}

void TextBox::handleFocusEvent(bool gained)
{
    const GlobRef<TextBox> self(this);
    wheelRest_ = 0.0;
    if (gained)
        allSelected_ = true;
    else if (isModified())
        userCommit(typing_);
    else
        stopTyping();
    if (self)
        Control::handleFocusEvent(gained);
}

void TextBox::type(const Event& event)
{
    const WString old = allSelected_ ? WString() : getShownText();
    if (event.key == Key::Backspace)
        userEdit(WString(old.view().substr(0, old.empty() ? 0 : old.size() - 1)));
    else if (event.key == Key::Delete)
        userEdit(old);
    else
        userEdit(old + (event.text.empty() ? WString(L" ") : event.text));
}

bool TextBox::usesKey(const Event& press) const
{
    const bool steps = press.isKeyPress(Key::Up) || press.isKeyPress(Key::Down);
    if (steps && !press.has(Event::kAlt | Event::kMeta) && !readOnly_ && canInteract() && canStep())
        return true;
    if (!press.isPlainKeyPress())
        return Control::usesKey(press);
    switch (press.key) {
    case Key::Enter:
    case Key::Character:
    case Key::Space:
    case Key::Backspace:
    case Key::Delete:
        return true;
    case Key::Escape:
        // Without anything to give up the key is for whoever the box stands in.
        return canCancel();
    default:
        return Control::usesKey(press);
    }
}

bool TextBox::handleKeyEvent(const Event& event)
{
    const double direction = event.isKeyPress(Key::Up) ? 1.0 : event.isKeyPress(Key::Down) ? -1.0 : 0.0;
    if (direction != 0.0 && !event.has(Event::kAlt | Event::kMeta) && userStep(direction * stepScale(event)))
        return true;
    if (!event.isPlainKeyPress())
        return Control::handleKeyEvent(event);
    switch (event.key) {
    case Key::Enter:
        userCommit(getShownText());
        return true;
    case Key::Escape:
        userCancel();
        return true;
    case Key::Character:
    case Key::Space:
    case Key::Backspace:
    case Key::Delete:
        type(event);
        return true;
    default:
        return Control::handleKeyEvent(event);
    }
}

bool TextBox::worksOnText(const Event& press)
{
    if (press.has(Event::kAlt | Event::kMeta))
        return false;
    switch (press.key) {
    case Key::Enter:
    case Key::Escape:
    case Key::Tab:
    case Key::Up:
    case Key::Down:
    case Key::PageUp:
    case Key::PageDown:
    case Key::Menu:
    case Key::F2:
        return false;
    default:
        return true;
    }
}

Kt::Box<int> TextBox::editorBox() const
{
    return controlBox().inset(kFrame, kFrame);
}

UIString TextBox::tooltip() const
{
    return problem_.empty() ? Control::tooltip() : UIString(problem_);
}

UIString TextBox::accessibleName() const
{
    const UIString own = Control::accessibleName();
    return own.empty() ? UIString(placeholder_) : own;
}

void TextBox::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::TextEntry;
    description.value = getShownText();
    description.editable = !readOnly_;
    description.readOnly = readOnly_;
    description.invalid = !problem_.empty();
}

bool TextBox::accessibleSetText(const WString& text, int)
{
    return userCommit(text);
}

void TextBox::draw(CanvasRenderer& renderer)
{
    const Palette& palette = getPalette();
    const Kt::Box<int> box = controlBox();
    drawBox(renderer, box, readOnly_ ? palette.window() : palette.field());
    if (!problem_.empty())
        renderer.frameRect(CanvasRenderer::toDouble(box), UifStd::getColourScheme().error);
    const Kt::Box<double> inner = CanvasRenderer::toDouble(box.inset(kPadding, 2));
    const WString& text = getShownText();
    if (text.empty()) {
        renderer.text(inner, placeholder_, font(), palette.disabledText(), align_);
        return;
    }
    const bool selected = hasFocus() && allSelected_ && !readOnly_;
    if (selected) {
        const double width = std::min<double>(UifStd::measure(text, font()), inner.width());
        const double share = align_ == TextAlign::Left ? 0.0 : align_ == TextAlign::Centre ? 0.5 : 1.0;
        const double left = inner.left + share * (inner.width() - width);
        renderer.fillRect({left, inner.top, left + width, inner.bottom}, palette.accent());
    }
    renderer.text(inner, text, font(), ink(selected ? palette.accentText() : palette.fieldText()), align_);
}

} // namespace oribund

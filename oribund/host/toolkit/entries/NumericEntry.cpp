#include "oribund/host/toolkit/entries/NumericEntry.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <cmath>
#include <limits>
#include <utility>

namespace oribund
{

namespace
{

WString textOfProblem(NumberExpression::Problem problem)
{
    using Problem = NumberExpression::Problem;
    switch (problem) {
    case Problem::None:
        return {};
    case Problem::NoNumber:
        return displayText(TextIds::kNoNumber);
    case Problem::DivisionByZero:
        return displayText(TextIds::kDivisionByZero);
    case Problem::MissingParenthesis:
        return displayText(TextIds::kMissingParenthesis);
    case Problem::TooLarge:
        return displayText(TextIds::kNumberTooLarge);
    case Problem::TooLong:
        return displayText(TextIds::kTextTooLong);
    }
    return {};
}

} // namespace

NumericEntry::NumericEntry(const InitArgs& args)
    : ValTextBox(args)
    , value_(getText())
{
}

NumericEntry::~NumericEntry()
{
    if (series_.hasWritten())
        scrubbed_->handleSeriesEnd();
}

void NumericEntry::setFormat(const NumberFormat& format)
{
    if (format == format_ || format.factor == 0.0)
        return;
    format_ = format;
    show(value_, eRedrawFlag::Yes);
}

void NumericEntry::setDecimals(int decimals)
{
    NumberFormat format = format_;
    format.decimals = decimals;
    setFormat(format);
}

void NumericEntry::setStep(double step)
{
    step_ = std::isfinite(step) ? std::abs(step) : 0.0;
    changed(GlobChange::kState | GlobChange::kCursor);
}

std::optional<double> NumericEntry::getNumber() const
{
    return parseDouble(value_.view());
}

void NumericEntry::show(const WString& value, eRedrawFlag flag)
{
    if (value != value_ && !isEditing())
        setProblem({});
    value_ = value;
    const std::optional<double> number = getNumber();
    setText(number ? format_.textOf(*number) : value, flag);
}

void NumericEntry::setWidgetValue(const WString& value, eRedrawFlag flag)
{
    if (isAnswered_ || !series_.defer(value))
        show(value, flag);
}

WString NumericEntry::getWidgetValue() const
{
    return value_;
}

bool NumericEntry::letGo()
{
    const GlobRef<NumericEntry> self(this);
    userScrubEnd();
    return static_cast<bool>(self);
}

// Single edits

NumberExpression::Result NumericEntry::evaluate(const WString& text) const
{
    return format_.valueOf(text, getNumber().value_or(0.0));
}

WString NumericEntry::problemWith(const WString& text) const
{
    return textOfProblem(evaluate(text).problem);
}

bool NumericEntry::handleCommit(const WString& text)
{
    const NumberExpression::Result entered = evaluate(text);
    return entered.value && request(*entered.value);
}

bool NumericEntry::request(double value)
{
    const GlobRef<NumericEntry> self(this);
    const RedrawHold hold;
    userCancel();
    const WString wanted = NumberFormat::plain(value);
    if (wanted == value_)
        return true;
    const bool accepted = ValTextBox::handleCommit(wanted);
    if (self && !accepted)
        setProblem(displayText(TextIds::kValueRefused));
    return accepted;
}

bool NumericEntry::userSetNumber(double value)
{
    return canInteract() && !isReadOnly() && !isScrubbing() && std::isfinite(value) && request(value);
}

bool NumericEntry::userReset()
{
    return resetValue_ && userSetNumber(*resetValue_);
}

bool NumericEntry::canStep() const
{
    return step_ > 0.0 && getNumber() && canInteract() && !isReadOnly();
}

void NumericEntry::handleStep(double steps)
{
    if (isScrubbing())
        return;
    // A step goes on from what is being typed.
    NumberExpression::Result from{getNumber()};
    if (isModified())
        from = evaluate(getShownText());
    if (from.value)
        request(decimalSum(*from.value, steps * step_));
    else
        setProblem(textOfProblem(from.problem));
}

void NumericEntry::describe(AccessibleDescription& description) const
{
    constexpr double kUnknown = std::numeric_limits<double>::infinity();
    ValTextBox::describe(description);
    description.role = AccessibleRole::NumberEntry;
    if (const std::optional<double> number = getNumber())
        description.number = AccessibleNumber{*number, -kUnknown, kUnknown, step_};
}

bool NumericEntry::accessibleSetNumber(double value, int)
{
    return userSetNumber(value);
}

// Scrubbing

bool NumericEntry::canScrub() const
{
    return canStep();
}

bool NumericEntry::ownsPress() const
{
    return canScrub() && !isEditing();
}

bool NumericEntry::focusOnPress(const XY<int>& local) const
{
    // Only a click, which is known at its end, goes on to typing. After a drag the keyboard is free for commands.
    return !ownsPress() && ValTextBox::focusOnPress(local);
}

MouseCursor NumericEntry::contextCursor(const XY<int>& local) const
{
    return ownsPress() ? MouseCursor::ResizeHorizontal : ValTextBox::contextCursor(local);
}

bool NumericEntry::userScrubStart()
{
    if (!canScrub() || isScrubbing())
        return false;
    userCancel();
    scrubbed_ = getDataAdaptor();
    series_.begin(value_);
    asked_ = NumberFormat::plain(*getNumber());
    return true;
}

void NumericEntry::userScrub(double steps)
{
    if (!isScrubbing())
        return;
    if (!canInteract() || getDataAdaptor() != scrubbed_) {
        userScrubEnd();
        return;
    }
    const std::optional<double> from = parseDouble(series_.original().view());
    const double wanted = decimalSum(from.value_or(0.0), steps * step_);
    if (std::isfinite(wanted))
        requestInSeries(NumberFormat::plain(wanted));
}

void NumericEntry::requestInSeries(const WString& value)
{
    if (value == asked_)
        return;
    asked_ = value;
    const GlobRef<NumericEntry> self(this);
    const RedrawHold hold;
    isAnswered_ = true;
    const bool accepted = requestDataChange(value, series_.nextKind());
    if (!self)
        return;
    series_.noteResult(accepted);
    // An adaptor that has limited the value to what it was before tells nobody.
    refreshFromData();
    if (self)
        isAnswered_ = false;
}

void NumericEntry::userScrubEnd()
{
    finishScrub(false);
}

void NumericEntry::userScrubCancel()
{
    finishScrub(true);
}

void NumericEntry::finishScrub(bool cancelled)
{
    if (!isScrubbing())
        return;
    const RedrawHold hold;
    const auto outcome = series_.close(cancelled);
    const Kt::Ptr<Adaptor> adaptor = std::exchange(scrubbed_, {});
    if (getDataAdaptor() != adaptor) {
        // The value that it shows now has nothing to do with the one that was dragged.
        if (adaptor && outcome.written)
            adaptor->handleSeriesEnd();
        refreshFromData();
        return;
    }
    if (outcome.shown)
        show(*outcome.shown, eRedrawFlag::Yes);
    if (!outcome.written)
        return;
    if (cancelled)
        cancelDataSeries(outcome.original);
    else
        endDataSeries();
}

// Events

bool NumericEntry::handleMouseEvent(const Event& event)
{
    if (drag_ && drag_->handle(event))
        return true;
    if (event.isPress(MouseButton::Left) && ownsPress()) {
        drag_ = std::make_unique<ScrubDrag>(*this, event.canvasPosition.x);
        return true;
    }
    return ValTextBox::handleMouseEvent(event);
}

bool NumericEntry::isDone(const Event& event) const
{
    return hasFocus() && event.isPlainKeyPress() && (event.key == Key::Enter || event.key == Key::Escape);
}

bool NumericEntry::usesKey(const Event& press) const
{
    // The keys of a drag are commands: what is dragged is not typed in.
    if (drag_ && drag_->isOpen())
        return drag_->usesKey(press);
    return ValTextBox::usesKey(press) || isDone(press);
}

bool NumericEntry::handleKeyEvent(const Event& event)
{
    if (drag_ && drag_->isOpen())
        return drag_->handle(event);
    const GlobRef<NumericEntry> self(this);
    const bool done = isDone(event);
    const bool taken = ValTextBox::handleKeyEvent(event);
    if (!self || !done || !getProblem().empty())
        return taken;
    EventRouter::of(*canvas()).handBackFocus();
    return true;
}

} // namespace oribund

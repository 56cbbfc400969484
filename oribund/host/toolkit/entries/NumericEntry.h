#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/text/NumberFormat.h"
#include "oribund/host/toolkit/entries/ScrubDrag.h"
#include "oribund/host/toolkit/entries/ValTextBox.h"
#include "oribund/host/toolkit/values/EditSeries.h"

#include <memory>
#include <optional>

namespace oribund
{

/**
 * An entry for a number. What is typed may be a calculation, see NumberExpression; Up, Down and, while it has the
 * keyboard, the wheel change it by steps; and unless the user is at work on its text a drag to the side changes it too,
 * as one series of edits that Escape takes back. Enter and Escape end the typing and hand the keyboard back; where
 * what was typed cannot be understood, Enter leaves it there to be mended.
 *
 * Its adaptor gives it and gets from it plain numbers as text, with all digits; how they look is the entry's affair. A
 * rounded look costs no digits: a text that was not changed is not entered. Limits are the adaptor's.
 */
class ORIBUND_API NumericEntry : public ValTextBox
{
public:
    explicit NumericEntry(const InitArgs& args);
    ~NumericEntry() override;

    void setFormat(const NumberFormat& format);

    const NumberFormat& getFormat() const { return format_; }

    void setDecimals(int decimals);

    /** What one step adds to the value, in the adaptor's units; 0, as at first, for an entry without steps. */
    void setStep(double step);

    double getStep() const { return step_; }

    void setResetValue(std::optional<double> value) { resetValue_ = value; }

    /** The value, with all its digits; empty as long as the adaptor has given no number. */
    std::optional<double> getNumber() const;

    bool isScrubbing() const { return series_.isOpen(); }

    /** Whether a drag would change the number. */
    bool canScrub() const;

    /** One edit, to any value; like those below it does nothing while the number cannot be edited. */
    bool userSetNumber(double value);
    /** One edit, to the reset value; false without one. */
    bool userReset();

    // A drag, as ScrubDrag has it. While it lasts the entry stays with the user: a value that comes from elsewhere is
    // shown at its end.
    bool userScrubStart();
    /** So many steps from where it started. */
    void userScrub(double steps);
    void userScrubEnd();
    void userScrubCancel();

    void setWidgetValue(const WString& value, eRedrawFlag flag) override;
    WString getWidgetValue() const override;
    bool letGo() override;
    bool canStep() const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleSetNumber(double value, int part = kWhole) override;
    bool ownsPress() const override;
    bool focusOnPress(const XY<int>& local) const override;
    MouseCursor contextCursor(const XY<int>& local) const override;

protected:
    WString problemWith(const WString& text) const override;
    bool handleCommit(const WString& text) override;
    void handleStep(double steps) override;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    using Adaptor = ValAdaptorBase<WString>;

    bool isDone(const Event& event) const;
    NumberExpression::Result evaluate(const WString& text) const;
    bool request(double value);
    void requestInSeries(const WString& value);
    void finishScrub(bool cancelled);
    void show(const WString& value, eRedrawFlag flag);

    NumberFormat format_;
    double step_ = 0.0;
    std::optional<double> resetValue_;
    WString value_;                   ///< as the adaptor has it
    std::unique_ptr<ScrubDrag> drag_; ///< of the last press
    EditSeries<WString> series_;
    Kt::Ptr<Adaptor> scrubbed_; ///< to whom the series belongs
    WString asked_;             ///< last, in the series
    bool isAnswered_ = false;   ///< whether what comes now is the answer to the series' own request
};

} // namespace oribund

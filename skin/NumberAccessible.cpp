#include "skin/NumberAccessible.h"

#include "skin/QtConversions.h"
#include "skin/TextEntry.h"

#include "oribund/host/toolkit/entries/NumericEntry.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace workbench
{

namespace
{

oribund::NumericEntry* numberOf(const TextEntry& entry)
{
    return dynamic_cast<oribund::NumericEntry*>(entry.box());
}

/** What is known of a number and its text, as long as the entry has its box. */
class SpinBox final : public QAccessibleWidget, public QAccessibleTextInterface, public QAccessibleValueInterface
{
public:
    explicit SpinBox(TextEntry& entry)
        : QAccessibleWidget(&entry, QAccessible::SpinBox)
        , entry_(entry)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        const oribund::NumericEntry* number = numberOf(entry_);
        state.focusable = number && number->wantsFocus();
        state.readOnly = entry_.isReadOnly();
        state.editable = !entry_.isReadOnly();
        state.selectableText = true;
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? entry_.text() : QAccessibleWidget::text(kind);
    }

    void setText(QAccessible::Text kind, const QString& text) override
    {
        if (oribund::NumericEntry* number = kind == QAccessible::Value ? numberOf(entry_) : nullptr)
            number->userCommit(fromQt(text));
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    // The number; its limits are known to the parameter only.

    QVariant currentValue() const override
    {
        const oribund::NumericEntry* number = numberOf(entry_);
        const std::optional<double> value = number ? number->getNumber() : std::nullopt;
        return value ? QVariant(*value) : QVariant();
    }

    void setCurrentValue(const QVariant& value) override
    {
        bool isNumber = false;
        const double wanted = value.toDouble(&isNumber);
        if (oribund::NumericEntry* number = isNumber ? numberOf(entry_) : nullptr)
            number->userSetNumber(wanted);
    }

    QVariant maximumValue() const override { return {}; }

    QVariant minimumValue() const override { return {}; }

    QVariant minimumStepSize() const override
    {
        const oribund::NumericEntry* number = numberOf(entry_);
        return number ? QVariant(number->getStep()) : QVariant();
    }

    // The text

    QString text(int start, int end) const override { return entry_.text().mid(start, end - start); }

    int characterCount() const override { return static_cast<int>(entry_.text().size()); }

    int cursorPosition() const override { return entry_.cursorPosition(); }

    void setCursorPosition(int position) override { entry_.setCursorPosition(position); }

    int selectionCount() const override { return entry_.hasSelectedText() ? 1 : 0; }

    void selection(int index, int* start, int* end) const override
    {
        *start = index == 0 && entry_.hasSelectedText() ? entry_.selectionStart() : 0;
        *end = index == 0 && entry_.hasSelectedText() ? entry_.selectionEnd() : 0;
    }

    void setSelection(int index, int start, int end) override
    {
        if (index == 0)
            entry_.setSelection(start, end - start);
    }

    void addSelection(int start, int end) override { setSelection(0, start, end); }

    void removeSelection(int) override { entry_.deselect(); }

    QRect characterRect(int) const override { return rect(); }

    int offsetAtPoint(const QPoint& at) const override { return entry_.cursorPositionAt(entry_.mapFromGlobal(at)); }

    void scrollToSubstring(int start, int) override { entry_.setCursorPosition(start); }

    QString attributes(int, int* start, int* end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    TextEntry& entry_;
};

} // namespace

QAccessibleInterface* NumberAccessible::make(TextEntry& entry)
{
    return numberOf(entry) ? new SpinBox(entry) : nullptr;
}

void NumberAccessible::tellChange(TextEntry& entry)
{
    const oribund::NumericEntry* number = QAccessible::isActive() ? numberOf(entry) : nullptr;
    if (!number || !number->getNumber())
        return;
    QAccessibleValueChangeEvent event(&entry, *number->getNumber());
    QAccessible::updateAccessibility(&event);
}

} // namespace workbench

#include "skin/GlobAccessible.h"

#include "skin/GlobSurface.h"
#include "skin/NumberAccessible.h"
#include "skin/QtConversions.h"
#include "skin/TextEntry.h"

#include "oribund/host/toolkit/core/Glob.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace workbench
{

namespace
{

using oribund::AccessibleRole;

QAccessible::Role toQt(AccessibleRole role)
{
    switch (role) {
    case AccessibleRole::Group:
        return QAccessible::Grouping;
    case AccessibleRole::Text:
        return QAccessible::StaticText;
    case AccessibleRole::Button:
        return QAccessible::Button;
    case AccessibleRole::CheckBox:
        return QAccessible::CheckBox;
    case AccessibleRole::DropDown:
        return QAccessible::ComboBox;
    case AccessibleRole::ColourButton:
        return QAccessible::ColorChooser;
    case AccessibleRole::Slider:
    case AccessibleRole::TimeBar:
        return QAccessible::Slider;
    case AccessibleRole::Dial:
        return QAccessible::Dial;
    default:
        return QAccessible::Graphic;
    }
}

QString nameOf(oribund::AccessibleAction action)
{
    switch (action) {
    case oribund::AccessibleAction::Press:
        return QAccessibleActionInterface::pressAction();
    case oribund::AccessibleAction::Toggle:
        return QAccessibleActionInterface::toggleAction();
    case oribund::AccessibleAction::ShowMenu:
        return QAccessibleActionInterface::showMenuAction();
    case oribund::AccessibleAction::None:
        break;
    }
    return {};
}

/** What is known of a surface to assistive tools. It is told by its glob, as long as there is one. */
class GlobAccessible final : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit GlobAccessible(GlobSurface& surface)
        : QAccessibleWidget(&surface)
        , surface_(surface)
    {
    }

    QAccessible::Role role() const override
    {
        return surface_.glob() ? toQt(surface_.glob()->accessible().role) : QAccessible::NoRole;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (const oribund::Glob* glob = surface_.glob()) {
            const oribund::AccessibleDescription now = glob->accessible();
            state.disabled = !now.enabled;
            state.focusable = now.focusable;
            state.focused = now.focused;
            state.checkable = now.checkable;
            state.checked = now.checked;
            state.checkStateMixed = now.mixed;
            state.pressed = now.pressed;
            state.hasPopup = now.hasMenu;
            state.expandable = now.expandable;
            state.expanded = now.expanded;
            state.collapsed = now.expandable && !now.expanded;
        } else {
            state.invalid = true;
        }
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        const oribund::Glob* glob = surface_.glob();
        if (!glob)
            return {};
        switch (kind) {
        case QAccessible::Name:
            return toDisplay(glob->accessibleName());
        case QAccessible::Description:
            return toDisplay(glob->tooltip());
        case QAccessible::Value:
            return workbench::toQt(glob->accessible().value);
        default:
            return QAccessibleWidget::text(kind);
        }
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return number() ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
        return QAccessibleWidget::interface_cast(type);
    }

    QStringList actionNames() const override
    {
        const oribund::Glob* glob = surface_.glob();
        QStringList names;
        if (!glob || !glob->canInteract())
            return names;
        if (const QString action = nameOf(glob->accessible().action); !action.isEmpty())
            names << action;
        if (glob->wantsFocus())
            names << setFocusAction();
        return names;
    }

    void doAction(const QString& name) override
    {
        if (!actionNames().contains(name))
            return;
        if (name == setFocusAction())
            surface_.glob()->userFocus(true);
        else
            surface_.glob()->accessibleActivate();
    }

    QVariant currentValue() const override { return part(&oribund::AccessibleNumber::value); }

    void setCurrentValue(const QVariant& value) override
    {
        bool isNumber = false;
        const double wanted = value.toDouble(&isNumber);
        if (isNumber && surface_.glob())
            surface_.glob()->accessibleSetNumber(wanted);
    }

    QVariant maximumValue() const override { return part(&oribund::AccessibleNumber::max); }

    QVariant minimumValue() const override { return part(&oribund::AccessibleNumber::min); }

    QVariant minimumStepSize() const override { return part(&oribund::AccessibleNumber::step); }

private:
    std::optional<oribund::AccessibleNumber> number() const
    {
        return surface_.glob() ? surface_.glob()->accessible().number : std::nullopt;
    }

    QVariant part(double oribund::AccessibleNumber::*member) const
    {
        const auto now = number();
        return now ? QVariant((*now).*member) : QVariant();
    }

    GlobSurface& surface_;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    if (auto* entry = dynamic_cast<TextEntry*>(object))
        return NumberAccessible::make(*entry);
    auto* surface = dynamic_cast<GlobSurface*>(object);
    return surface ? new GlobAccessible(*surface) : nullptr;
}

} // namespace

void installGlobAccessibility()
{
    // Qt ignores a factory that it has already.
    QAccessible::installFactory(&makeInterface);
}

} // namespace workbench

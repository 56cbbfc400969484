#include "skin/GlobAccessible.h"

#include "skin/GlobSurface.h"
#include "skin/GlobTraits.h"
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
        return surface_.traits() ? surface_.traits()->role() : QAccessible::NoRole;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (const oribund::Glob* glob = surface_.glob()) {
            state.disabled = !glob->canInteract();
            state.focusable = glob->wantsFocus();
            state.focused = glob->hasFocus();
            surface_.traits()->addState(state);
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
            return surface_.traits()->valueText();
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
        if (const QString action = surface_.traits()->actionName(); !action.isEmpty())
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
            surface_.traits()->activate();
    }

    QVariant currentValue() const override { return part(&GlobTraits::Number::value); }

    void setCurrentValue(const QVariant& value) override
    {
        bool isNumber = false;
        const double wanted = value.toDouble(&isNumber);
        if (isNumber && surface_.traits())
            surface_.traits()->setNumber(wanted);
    }

    QVariant maximumValue() const override { return part(&GlobTraits::Number::max); }

    QVariant minimumValue() const override { return part(&GlobTraits::Number::min); }

    QVariant minimumStepSize() const override { return part(&GlobTraits::Number::step); }

private:
    std::optional<GlobTraits::Number> number() const
    {
        return surface_.traits() ? surface_.traits()->number() : std::nullopt;
    }

    QVariant part(double GlobTraits::Number::*member) const
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

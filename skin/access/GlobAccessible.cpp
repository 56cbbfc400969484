#include "skin/access/GlobAccessible.h"

#include "skin/PanelSurface.h"
#include "skin/QtConversions.h"
#include "skin/access/AccessibleGlobs.h"

#include "oribund/host/toolkit/core/Glob.h"

#include <algorithm>
#include <cmath>

namespace oribund::qt
{

using oribund::Accessible;
using oribund::AccessibleAction;
using oribund::AccessibleDescription;
using oribund::AccessibleNumber;
using oribund::AccessibleRole;
using oribund::Glob;

namespace
{

QAccessible::Role roleOf(AccessibleRole role)
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
    case AccessibleRole::ScrollBar:
        return QAccessible::ScrollBar;
    case AccessibleRole::TextEntry:
        return QAccessible::EditableText;
    case AccessibleRole::NumberEntry:
        return QAccessible::SpinBox;
    case AccessibleRole::Table:
        return QAccessible::Table;
    case AccessibleRole::ColumnHeader:
        return QAccessible::ColumnHeader;
    case AccessibleRole::Cell:
        return QAccessible::Cell;
    case AccessibleRole::Keyframe:
    case AccessibleRole::Cue:
        return QAccessible::Indicator;
    case AccessibleRole::Graphic:
        break;
    }
    return QAccessible::Graphic;
}

QString nameOf(AccessibleAction action)
{
    switch (action) {
    case AccessibleAction::Press:
        return QAccessibleActionInterface::pressAction();
    case AccessibleAction::Toggle:
        return QAccessibleActionInterface::toggleAction();
    case AccessibleAction::ShowMenu:
        return QAccessibleActionInterface::showMenuAction();
    case AccessibleAction::None:
        break;
    }
    return {};
}

} // namespace

GlobAccessible::GlobAccessible(AccessibleGlobs& all, Glob& glob, int part)
    : all_(all)
    , glob_(&glob)
    , part_(part)
{
}

bool GlobAccessible::isValid() const
{
    return glob_ && glob_->isOpen() && (!isPart() || part_ < glob_->accessiblePartCount());
}

AccessibleDescription GlobAccessible::description() const
{
    return isValid() ? glob_->accessible(part_) : AccessibleDescription();
}

// The tree: the parts of a glob, then the globs in it

int GlobAccessible::partCount() const
{
    return glob_ && !isPart() ? glob_->accessiblePartCount() : 0;
}

std::vector<Glob*> GlobAccessible::shownChildren() const
{
    std::vector<Glob*> children;
    if (glob_ && !isPart())
        glob_->getChildren(children);
    std::erase_if(children, [](const Glob* child) { return !child->isVisible(); });
    return children;
}

QAccessibleInterface* GlobAccessible::parent() const
{
    if (!glob_)
        return nullptr;
    if (isPart())
        return all_.of(*glob_);
    return glob_->parent() ? all_.of(*glob_->parent()) : QAccessible::queryAccessibleInterface(&all_.surface());
}

int GlobAccessible::childCount() const
{
    return partCount() + static_cast<int>(shownChildren().size());
}

QAccessibleInterface* GlobAccessible::child(int index) const
{
    const int parts = partCount();
    if (index < 0)
        return nullptr;
    if (index < parts)
        return all_.of(*glob_, index);
    const std::vector<Glob*> children = shownChildren();
    const auto place = static_cast<std::size_t>(index - parts);
    return place < children.size() ? all_.of(*children[place]) : nullptr;
}

int GlobAccessible::indexOfChild(const QAccessibleInterface* wanted) const
{
    const auto* const other = dynamic_cast<const GlobAccessible*>(wanted);
    if (!other || !other->glob_ || !glob_)
        return -1;
    if (other->isPart())
        return other->glob_ == glob_.get() && !isPart() ? other->part_ : -1;
    const std::vector<Glob*> children = shownChildren();
    const auto found = std::find(children.begin(), children.end(), other->glob());
    return found == children.end() ? -1 : partCount() + static_cast<int>(found - children.begin());
}

QAccessibleInterface* GlobAccessible::childAt(int x, int y) const
{
    if (!glob_ || isPart())
        return nullptr;
    const auto at = glob_->fromCanvas(fromQt(all_.surface().mapFromGlobal(QPoint(x, y))));
    Glob* found = glob_->globAt(at);
    while (found && found != glob_.get() && found->parent() != glob_.get())
        found = found->parent();
    if (found && found != glob_.get())
        return all_.of(*found);
    const int part = found ? glob_->accessiblePartAt(at) : Accessible::kNoPart;
    return part == Accessible::kNoPart ? nullptr : all_.of(*glob_, part);
}

QAccessibleInterface* GlobAccessible::focusChild() const
{
    const Glob* const owner = glob_ ? all_.surface().canvas().focusOwner() : nullptr;
    return owner && glob_->isAncestorOf(owner) ? all_.focused() : nullptr;
}

// What it is

QAccessible::Role GlobAccessible::role() const
{
    return isValid() ? roleOf(description().role) : QAccessible::NoRole;
}

QAccessible::State GlobAccessible::state() const
{
    QAccessible::State state;
    state.invalid = !isValid();
    if (state.invalid)
        return state;
    const AccessibleDescription now = description();
    state.disabled = !now.enabled;
    state.focusable = now.focusable;
    state.focused = now.focused;
    state.invisible = !glob_->isShown();
    state.offscreen =
        !now.visible || !rect().intersects(QRect(all_.surface().mapToGlobal(QPoint()), all_.surface().size()));
    state.checkable = now.checkable;
    state.checked = now.checked;
    state.checkStateMixed = now.mixed;
    state.pressed = now.pressed;
    state.expandable = now.expandable;
    state.expanded = now.expanded;
    state.collapsed = now.expandable && !now.expanded;
    state.hasPopup = now.hasMenu;
    state.editable = now.editable;
    state.readOnly = now.readOnly;
    state.selectable = now.selectable;
    state.selected = now.selected;
    state.multiSelectable = now.multiSelectable;
    return state;
}

QRect GlobAccessible::rect() const
{
    if (!isValid())
        return {};
    const oribund::Kt::Box<int> box = description().box;
    const QPoint corner = toQt(glob_->toCanvas(box.topLeft()));
    return {all_.surface().mapToGlobal(corner), QSize(box.width(), box.height())};
}

QString GlobAccessible::text(QAccessible::Text kind) const
{
    const AccessibleDescription now = description();
    switch (kind) {
    case QAccessible::Name:
        return toDisplay(now.name);
    case QAccessible::Description:
        return toDisplay(now.help);
    case QAccessible::Value:
        return toQt(now.value);
    default:
        return {};
    }
}

void GlobAccessible::setText(QAccessible::Text kind, const QString& text)
{
    if (kind == QAccessible::Value && isValid())
        glob_->accessibleSetText(fromQt(text), part_);
}

void* GlobAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface*>(this);
    if (type == QAccessible::ValueInterface && description().number)
        return static_cast<QAccessibleValueInterface*>(this);
    return nullptr;
}

// What can be done with it

QStringList GlobAccessible::actionNames() const
{
    const AccessibleDescription now = description();
    QStringList names;
    if (!isValid() || !now.enabled)
        return names;
    if (now.action != AccessibleAction::None)
        names << nameOf(now.action);
    if (now.focusable)
        names << setFocusAction();
    return names;
}

void GlobAccessible::doAction(const QString& name)
{
    if (!actionNames().contains(name))
        return;
    if (name == setFocusAction())
        glob_->takeFocus();
    else
        glob_->accessibleActivate(part_);
}

QStringList GlobAccessible::keyBindingsForAction(const QString&) const
{
    return {};
}

QVariant GlobAccessible::ofNumber(double AccessibleNumber::*member) const
{
    const std::optional<AccessibleNumber> number = description().number;
    return number && std::isfinite((*number).*member) ? QVariant((*number).*member) : QVariant();
}

QVariant GlobAccessible::currentValue() const
{
    return ofNumber(&AccessibleNumber::value);
}

void GlobAccessible::setCurrentValue(const QVariant& value)
{
    bool isNumber = false;
    const double wanted = value.toDouble(&isNumber);
    if (isNumber && isValid())
        glob_->accessibleSetNumber(wanted, part_);
}

QVariant GlobAccessible::maximumValue() const
{
    return ofNumber(&AccessibleNumber::max);
}

QVariant GlobAccessible::minimumValue() const
{
    return ofNumber(&AccessibleNumber::min);
}

QVariant GlobAccessible::minimumStepSize() const
{
    return ofNumber(&AccessibleNumber::step);
}

} // namespace oribund::qt

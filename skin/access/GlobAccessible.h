#pragma once

#include "oribund/host/toolkit/core/Accessible.h"
#include "oribund/host/toolkit/core/GlobRef.h"

#include <QAccessible>
#include <QAccessibleActionInterface>

#include <vector>

namespace oribund
{
class Glob;
}

namespace oribund::qt
{

class AccessibleGlobs;

/** A glob, or a part of one, as Qt's bridge to screen readers sees it. Says nothing any more when the glob is gone. */
class GlobAccessible final : public QAccessibleInterface,
                             public QAccessibleActionInterface,
                             public QAccessibleValueInterface
{
public:
    GlobAccessible(AccessibleGlobs& all, oribund::Glob& glob, int part);

    /** Null when it is gone. */
    oribund::Glob* glob() const { return glob_.get(); }

    bool isValid() const override;

    QObject* object() const override { return nullptr; }

    QAccessibleInterface* parent() const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* wanted) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QRect rect() const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& name) const override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    bool isPart() const { return part_ != oribund::Accessible::kWhole; }

    int partCount() const;
    std::vector<oribund::Glob*> shownChildren() const;
    oribund::AccessibleDescription description() const;
    QVariant ofNumber(double oribund::AccessibleNumber::*member) const;

    AccessibleGlobs& all_;
    oribund::GlobRef<oribund::Glob> glob_;
    int part_;
};

} // namespace oribund::qt

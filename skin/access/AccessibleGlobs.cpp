#include "skin/access/AccessibleGlobs.h"

#include "skin/PanelSurface.h"
#include "skin/TextEditor.h"
#include "skin/access/GlobAccessible.h"

#include "oribund/host/toolkit/core/Glob.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <QAccessibleWidget>

#include <algorithm>

namespace oribund::qt
{

using oribund::Accessible;
using oribund::Glob;

namespace
{

/** The surface itself: its children are the panel and, while one is open, the native editor. */
class SurfaceAccessible final : public QAccessibleWidget
{
public:
    explicit SurfaceAccessible(PanelSurface& surface)
        : QAccessibleWidget(&surface, QAccessible::Pane)
        , surface_(surface)
    {
    }

    int childCount() const override { return (surface_.panel() ? 1 : 0) + (surface_.editor() ? 1 : 0); }

    QAccessibleInterface* child(int index) const override
    {
        if (index == 0 && surface_.panel())
            return surface_.accessibles().of(*surface_.panel());
        return index >= 0 && index < childCount() ? QAccessible::queryAccessibleInterface(surface_.editor()) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* wanted) const override
    {
        for (int i = 0; i < childCount(); ++i) {
            if (child(i) == wanted)
                return i;
        }
        return -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        QAccessibleInterface* const panel = surface_.panel() ? child(0) : nullptr;
        return panel && panel->rect().contains(x, y) ? panel : nullptr;
    }

    QAccessibleInterface* focusChild() const override
    {
        if (surface_.editor())
            return QAccessible::queryAccessibleInterface(surface_.editor());
        return surface_.accessibles().focused();
    }

private:
    PanelSurface& surface_;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    auto* const surface = dynamic_cast<PanelSurface*>(object);
    return surface ? new SurfaceAccessible(*surface) : nullptr;
}

} // namespace

AccessibleGlobs::AccessibleGlobs(PanelSurface& surface)
    : surface_(surface)
{
    // Qt ignores a factory that it has already.
    QAccessible::installFactory(&makeInterface);
}

AccessibleGlobs::~AccessibleGlobs()
{
    for (const auto& [key, accessible] : known_)
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(accessible));
}

QAccessibleInterface* AccessibleGlobs::of(Glob& glob)
{
    return of(glob, Accessible::kWhole);
}

QAccessibleInterface* AccessibleGlobs::of(Glob& glob, int part)
{
    if (known_.size() >= forgetAt_)
        forgetGone();
    GlobAccessible*& known = known_[{&glob, part}];
    // Another one may have stood at this address.
    if (known && !known->glob()) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
        known = nullptr;
    }
    if (!known) {
        known = new GlobAccessible(*this, glob, part);
        QAccessible::registerAccessibleInterface(known); // owns it
    }
    return known;
}

void AccessibleGlobs::forgetGone()
{
    for (auto it = known_.begin(); it != known_.end();) {
        const bool gone = !it->second->glob();
        if (gone)
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(it->second));
        it = gone ? known_.erase(it) : std::next(it);
    }
    forgetAt_ = std::max<std::size_t>(64, 2 * known_.size());
}

QAccessibleInterface* AccessibleGlobs::focused()
{
    Glob* const owner = surface_.canvas().focusOwner();
    if (!owner)
        return nullptr;
    const int part = owner->currentAccessiblePart();
    return of(*owner, part == Accessible::kNoPart ? Accessible::kWhole : part);
}

// News

void AccessibleGlobs::tellFocus()
{
    QAccessibleInterface* const now = QAccessible::isActive() && surface_.hasFocus() ? focused() : nullptr;
    if (now == toldFocus_)
        return;
    toldFocus_ = now;
    if (!now)
        return;
    QAccessibleEvent event(now, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

void AccessibleGlobs::tellChange(Glob& glob, unsigned changes)
{
    namespace Change = oribund::GlobChange;
    if (!QAccessible::isActive())
        return;
    const auto tell = [&](QAccessible::Event what) {
        QAccessibleEvent event(of(glob), what);
        QAccessible::updateAccessibility(&event);
    };
    if (changes & Change::kVisible)
        tell(glob.isVisible() ? QAccessible::ObjectShow : QAccessible::ObjectHide);
    if (changes & Change::kTooltip)
        tell(QAccessible::NameChanged);
    if (!(changes & (Change::kState | Change::kEnabled)))
        return;
    const oribund::AccessibleDescription now = glob.accessible();
    if ((changes & Change::kState) && (now.number || !now.value.empty())) {
        QAccessibleValueChangeEvent event(of(glob), now.number ? QVariant(now.number->value)
                                                               : QVariant(of(glob)->text(QAccessible::Value)));
        QAccessible::updateAccessibility(&event);
    }
    QAccessible::State state;
    state.checked = (changes & Change::kState) && now.checkable;
    state.expanded = (changes & Change::kState) && (now.expandable || now.hasMenu);
    state.disabled = (changes & Change::kEnabled) != 0;
    if (state.checked || state.expanded || state.disabled) {
        QAccessibleStateChangeEvent event(of(glob), state);
        QAccessible::updateAccessibility(&event);
    }
    tellFocus(); // another cell of a table may have it now
}

} // namespace oribund::qt

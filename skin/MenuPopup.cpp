#include "skin/MenuPopup.h"

#include "skin/QtConversions.h"

#include "oribund/host/toolkit/core/Menu.h"

#include <QTimer>

namespace oribund::qt
{

MenuPopup* MenuPopup::open(oribund::MenuGlob& glob, QWidget& surface, const QPoint& at)
{
    auto* popup = new MenuPopup(glob, surface);
    popup->fill(*popup, std::make_shared<oribund::Menu>(glob.menu()));
    popup->setMinimumWidth(glob.menu().minWidth());
    popup->popup(at);
    return popup;
}

MenuPopup::MenuPopup(oribund::MenuGlob& glob, QWidget& surface)
    : QMenu(&surface)
    , glob_(&glob)
{
    setAccessibleName(toDisplay(glob.accessibleName()));
    // The choice is reported after the menu is hidden: what is not chosen by the next turn of the event loop is not.
    connect(this, &QMenu::aboutToHide, this, [this] { QTimer::singleShot(0, this, [this] { finish(); }); });
}

void MenuPopup::fill(QMenu& menu, const std::shared_ptr<const oribund::Menu>& from)
{
    for (std::size_t i = 0; i < from->items().size(); ++i) {
        const oribund::MenuItem& item = from->items()[i];
        switch (item.kind) {
        case oribund::MenuItem::Kind::Separator:
            menu.addSeparator();
            break;
        case oribund::MenuItem::Kind::Heading: {
            QAction* heading = menu.addAction(toMenuText(item.label));
            QFont font = menu.font();
            font.setBold(true);
            heading->setFont(font);
            heading->setEnabled(false);
            break;
        }
        case oribund::MenuItem::Kind::Submenu:
            if (item.submenu)
                fill(*menu.addMenu(toMenuText(item.label)), item.submenu);
            break;
        case oribund::MenuItem::Kind::Action:
            addAction(menu, from, i);
            break;
        }
    }
}

void MenuPopup::addAction(QMenu& menu, const std::shared_ptr<const oribund::Menu>& from, std::size_t index)
{
    const oribund::MenuItem& item = from->items()[index];
    QAction* action = menu.addAction(toMenuText(item.label));
    action->setEnabled(item.enabled);
    if (item.checked) {
        action->setCheckable(true);
        action->setChecked(true);
        menu.setActiveAction(action);
    }
    connect(action, &QAction::triggered, this, [this, from, index] {
        chosen_ = true;
        if (glob_)
            glob_->userChooseMenuItem(from->items()[index]);
    });
}

void MenuPopup::followGlob()
{
    if (glob_ && glob_->isShown())
        return;
    close();
    finish();
}

void MenuPopup::finish()
{
    if (isVisible())
        return;
    if (!chosen_ && glob_)
        glob_->userCloseMenu();
    deleteLater();
}

} // namespace oribund::qt

#pragma once

#include "skin/access/GlobFollower.h"

#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/host/toolkit/core/MenuGlob.h"

#include <QMenu>

#include <memory>

namespace oribund
{
class Menu;
}

namespace oribund::qt
{

/** The menu of a glob as a native one. It deletes itself when it is closed, and goes with the glob. */
class MenuPopup final : public QMenu, public GlobFollower
{
public:
    /** Shows the glob's menu at a point of the screen; `surface` is what shows the glob. Returns at once. */
    static MenuPopup* open(oribund::MenuGlob& glob, QWidget& surface, const QPoint& at);

    void followGlob() override;

private:
    MenuPopup(oribund::MenuGlob& glob, QWidget& surface);

    void fill(QMenu& menu, const std::shared_ptr<const oribund::Menu>& from);
    void addAction(QMenu& menu, const std::shared_ptr<const oribund::Menu>& from, std::size_t index);
    void finish();

    oribund::GlobRef<oribund::MenuGlob> glob_;
    bool chosen_ = false;
};

} // namespace oribund::qt

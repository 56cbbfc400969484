#include "workbench/app/window/DialogPlace.h"

#include <QColorDialog>
#include <QEvent>
#include <QScreen>

#include <algorithm>
#include <tuple>

namespace workbench
{

namespace
{
QRect onScreen(const QWidget& widget)
{
    return {widget.mapToGlobal(QPoint()), widget.size()};
}
} // namespace

DialogPlace::DialogPlace(const QWidget& picture, QObject* parent)
    : QObject(parent)
    , picture_(picture)
{
}

QPoint DialogPlace::placeFor(const QSize& size, const QRect& around, const QRect& picture, const QRect& screen)
{
    // Beside, above and below the picture, as far as the screen goes, or where it would stand anyway.
    const int lastX = std::max(screen.left(), screen.right() - size.width() + 1);
    const int lastY = std::max(screen.top(), screen.bottom() - size.height() + 1);
    const QPoint middle = around.center() - QPoint(size.width() / 2, size.height() / 2);
    const auto within = [&](const QPoint& place) {
        return QPoint(std::clamp(place.x(), screen.left(), lastX), std::clamp(place.y(), screen.top(), lastY));
    };
    const auto cost = [&](const QPoint& place) {
        const QRect hidden = QRect(place, size).intersected(picture);
        return std::tuple(hidden.isEmpty() ? 0 : hidden.width() * hidden.height(), (place - middle).manhattanLength());
    };
    QPoint best = within(middle);
    for (const QPoint& place :
         {QPoint(picture.right() + 1, middle.y()), QPoint(picture.left() - size.width(), middle.y()),
          QPoint(middle.x(), picture.bottom() + 1), QPoint(middle.x(), picture.top() - size.height())})
        if (cost(within(place)) < cost(best))
            best = within(place);
    return best;
}

bool DialogPlace::eventFilter(QObject* watched, QEvent* event)
{
    auto* const dialog = event->type() == QEvent::Show ? qobject_cast<QColorDialog*>(watched) : nullptr;
    if (dialog && !event->spontaneous() && dialog->parentWidget()) {
        const QWidget& window = *dialog->parentWidget()->window();
        dialog->move(
            placeFor(dialog->frameSize(), onScreen(window), onScreen(picture_), window.screen()->availableGeometry()));
    }
    return false;
}

} // namespace workbench

#include "workbench/app/window/KeyPolicy.h"

#include "workbench/app/effects/KeyframeActions.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMimeData>

namespace workbench
{

namespace
{
bool moves(int key)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        return false;
    }
}

bool presses(int key)
{
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool areKeyframesOnClipboard()
{
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasFormat(QLatin1String(kKeyframesOnClipboard));
}
} // namespace

KeyPolicy::KeyPolicy(QObject* parent)
    : QObject(parent)
{
}

bool KeyPolicy::belongsToControl(const QWidget& control, const QKeyEvent& key)
{
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    if (qobject_cast<const QAbstractItemView*>(&control))
        return moves(key.key());
    if (qobject_cast<const QAbstractButton*>(&control))
        return presses(key.key());
    return qobject_cast<const QAbstractSlider*>(&control) && moves(key.key());
}

bool KeyPolicy::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    // Whoever has copied keyframes means to paste them, wherever the keyboard is; an entry could do nothing with them.
    if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste) && areKeyframesOnClipboard())
        return true;
    const QWidget* const control = QApplication::focusWidget();
    if (control == watched && belongsToControl(*control, static_cast<QKeyEvent&>(*event)))
        event->accept();
    return event->isAccepted();
}

} // namespace workbench

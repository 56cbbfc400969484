#include "workbench/app/cues/CueNameField.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace workbench
{

namespace
{
constexpr int kWidth = 220;
constexpr int kLongestName = 200; // characters
} // namespace

CueNameField* CueNameField::open(QWidget& window, const QPoint& above, const QString& name, Taken taken)
{
    auto* const field = new CueNameField(window, name, std::move(taken));
    const QSize size(std::min(kWidth, window.width()), field->sizeHint().height());
    const QPoint wanted = above - QPoint(size.width() / 2, size.height());
    field->setGeometry(QRect(QPoint(std::clamp(wanted.x(), 0, window.width() - size.width()),
                                    std::clamp(wanted.y(), 0, std::max(0, window.height() - size.height()))),
                             size));
    field->show();
    field->raise();
    field->setFocus();
    field->selectAll();
    return field;
}

CueNameField::CueNameField(QWidget& window, const QString& name, Taken taken)
    : QLineEdit(name, &window)
    , taken_(std::move(taken))
    , before_(QApplication::focusWidget())
{
    setMaxLength(kLongestName);
    setAccessibleName(QStringLiteral("Name of the cue"));
    setPlaceholderText(QStringLiteral("Name of the cue"));
    QObject::connect(this, &QLineEdit::returnPressed, this, [this] { finish(true); });
}

void CueNameField::finish(bool take)
{
    if (std::exchange(finished_, true))
        return;
    if (hasFocus() && before_)
        before_->setFocus();
    hide();
    deleteLater();
    if (take)
        taken_(text().trimmed());
}

void CueNameField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        return finish(false);
    QLineEdit::keyPressEvent(event);
    event->accept(); // Enter is for nobody else
}

void CueNameField::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Its own menu, and another window, leave it as it is.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        finish(true);
}

} // namespace workbench

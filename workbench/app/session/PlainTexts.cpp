#include "workbench/app/session/PlainTexts.h"

#include <QEvent>
#include <QLabel>

namespace workbench
{

PlainTexts::PlainTexts(QObject* parent)
    : QObject(parent)
{
}

bool PlainTexts::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Polish)
        return false;
    // Tooltips are labels too: whoever sets one sees to its text, with markup of its own.
    auto* const label = qobject_cast<QLabel*>(watched);
    if (label && label->textFormat() == Qt::AutoText && !label->inherits("QTipLabel"))
        label->setTextFormat(Qt::PlainText);
    return false;
}

QString plainTip(const QString& text)
{
    if (text.isEmpty())
        return {};
    return QStringLiteral("<p style='white-space:pre'>") + text.toHtmlEscaped() + QStringLiteral("</p>");
}

} // namespace workbench

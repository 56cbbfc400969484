#pragma once

#include "oribund/host/services/MessageSink.h"

#include <QFrame>
#include <QStringList>

class QLabel;
class QToolButton;

namespace workbench
{

/** Messages above the picture, one at a time. They stop nobody's work, and stay until they are closed. */
class MessageBar final : public QFrame
{
public:
    using Severity = oribund::MessageSink::Severity;

    explicit MessageBar(QWidget* parent = nullptr);

    /** A message that is waiting already is not shown twice. */
    void show(const QString& message, Severity severity);

    /** The message in view; empty for none. */
    QString text() const;

private:
    struct Message {
        QString text;
        Severity severity;
    };

    void showFirst();
    void dismiss();

    QList<Message> waiting_;
    QLabel* icon_;
    QLabel* text_;
    QLabel* count_;
    QToolButton* close_;
};

} // namespace workbench

#pragma once

#include "oribund/host/services/MessageSink.h"

#include <QFrame>
#include <QList>
#include <QTimer>

#include <functional>

class QLabel;
class QPushButton;
class QToolButton;

namespace workbench
{

/**
 * Messages above the picture, one at a time. They stop nobody's work. Errors, and what offers something to do, stay
 * until they are closed; others go by themselves after the time that it takes to read them, but not from under the
 * pointer or the keyboard. What is only said gives way at once to what comes after it.
 */
class MessageBar final : public QFrame
{
public:
    using Severity = oribund::MessageSink::Severity;

    explicit MessageBar(QWidget* parent = nullptr);

    /** What somebody may do about a message; then the message goes. */
    struct Action {
        QString label; ///< empty: nothing
        std::function<void()> act;
    };

    /**
     * What is more severe than the message in view, or offers something to do, is seen at once; anything else waits for
     * its turn. A message that is waiting already is not shown twice.
     */
    void show(const QString& message, Severity severity, Action action = {});

    /** The message in view; empty for none. */
    QString text() const;

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    struct Message {
        QString text;
        Severity severity;
        Action action;
    };

    void insert(Message message);
    void makeRoom();
    void walk();
    void showFirst();
    void dismiss();
    void act();
    void startTimer();
    void goByItself();

    QList<Message> waiting_;
    QLabel* icon_;
    QLabel* text_;
    QPushButton* count_;
    QPushButton* action_;
    QToolButton* close_;
    QTimer timer_;
};

} // namespace workbench

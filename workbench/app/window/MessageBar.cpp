#include "workbench/app/window/MessageBar.h"

#include "skin/theme/Glyphs.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace workbench
{

using oribund::qt::Glyph;
using oribund::qt::glyphIcon;

namespace
{
constexpr int kMostWaiting = 20;

/** How long a message is shown, in milliseconds; 0 for one that stays. */
int lifetimeOf(MessageBar::Severity severity, const QString& text, bool offersSomething)
{
    if (severity == MessageBar::Severity::Error || offersSomething)
        return 0;
    const int reading = 3000 + 60 * static_cast<int>(text.size());
    return severity == MessageBar::Severity::Warning ? 2 * reading : reading;
}

const char* groundOf(MessageBar::Severity severity)
{
    switch (severity) {
    case MessageBar::Severity::Error:
        return "#5c2b2b";
    case MessageBar::Severity::Warning:
        return "#574a23";
    default:
        return "#2b4257";
    }
}
} // namespace

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent)
    , icon_(new QLabel)
    , text_(new QLabel)
    , count_(new QPushButton)
    , action_(new QPushButton)
    , close_(new QToolButton)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 4, 4);
    row->setSpacing(8);
    row->addWidget(icon_);
    row->addWidget(text_, 1);
    row->addWidget(count_);
    row->addWidget(action_);
    row->addWidget(close_);
    icon_->setObjectName(QStringLiteral("sign"));
    icon_->setPixmap(glyphIcon(Glyph::Warning).pixmap(QSize(16, 16), devicePixelRatioF()));
    text_->setWordWrap(true);
    text_->setTextFormat(Qt::PlainText);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    count_->setFlat(true);
    count_->setObjectName(QStringLiteral("count"));
    count_->setToolTip(QStringLiteral("Show the next message"));
    close_->setIcon(glyphIcon(Glyph::Close));
    close_->setToolTip(QStringLiteral("Close this message"));
    close_->setAccessibleName(QStringLiteral("Close this message"));
    QObject::connect(count_, &QPushButton::clicked, this, [this] { walk(); });
    QObject::connect(action_, &QPushButton::clicked, this, [this] { act(); });
    QObject::connect(close_, &QToolButton::clicked, this, [this] { dismiss(); });
    setObjectName(QStringLiteral("messageBar"));
    timer_.setParent(this);
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, this, [this] { goByItself(); });
    hide();
}

void MessageBar::show(const QString& message, Severity severity, Action action)
{
    const auto same = [&](const Message& other) { return other.text == message; };
    if (message.isEmpty())
        return;
    if (!waiting_.isEmpty() && same(waiting_.front()))
        return startTimer();
    if (std::any_of(waiting_.begin(), waiting_.end(), same))
        return;
    if (!waiting_.isEmpty() && waiting_.front().severity == Severity::Information)
        waiting_.removeFirst();
    insert({message, severity, std::move(action)});
    showFirst();
}

void MessageBar::insert(Message message)
{
    makeRoom();
    const bool isUrgent = waiting_.isEmpty() || message.action.act || message.severity > waiting_.front().severity;
    waiting_.insert(isUrgent ? 0 : waiting_.size(), std::move(message));
}

void MessageBar::makeRoom()
{
    // Whatever goes wrong in a loop must not fill the memory.
    if (waiting_.size() < kMostWaiting)
        return;
    const auto isPlain = [](const Message& message) { return !message.action.act; };
    const auto plain = std::find_if(waiting_.begin() + 1, waiting_.end(), isPlain);
    waiting_.erase(plain == waiting_.end() ? plain - 1 : plain);
}

void MessageBar::walk()
{
    waiting_.append(waiting_.takeFirst());
    showFirst();
}

QString MessageBar::text() const
{
    return waiting_.isEmpty() ? QString() : waiting_.front().text;
}

void MessageBar::showFirst()
{
    setVisible(!waiting_.isEmpty());
    startTimer();
    if (waiting_.isEmpty())
        return;
    const Message& message = waiting_.front();
    icon_->setVisible(message.severity != Severity::Information);
    setStyleSheet(QStringLiteral("#messageBar { background: %1; } QLabel { color: #f0f0f0; }")
                      .arg(QLatin1String(groundOf(message.severity))));
    text_->setText(message.text);
    setAccessibleName(message.text);
    action_->setVisible(!message.action.label.isEmpty());
    action_->setText(message.action.label);
    count_->setVisible(waiting_.size() > 1);
    count_->setText(QStringLiteral("%1 more").arg(waiting_.size() - 1));
    count_->setAccessibleName(count_->text() + QStringLiteral(", show the next message"));
}

void MessageBar::startTimer()
{
    timer_.stop();
    if (waiting_.isEmpty())
        return;
    const Message& seen = waiting_.front();
    if (const int lifetime = lifetimeOf(seen.severity, seen.text, static_cast<bool>(seen.action.act)); lifetime > 0)
        timer_.start(lifetime);
}

void MessageBar::goByItself()
{
    // Nothing goes while somebody is about to select its text or to press its button.
    if (underMouse() || isAncestorOf(QApplication::focusWidget()))
        startTimer();
    else
        dismiss();
}

void MessageBar::enterEvent(QEnterEvent* event)
{
    timer_.stop();
    QFrame::enterEvent(event);
}

void MessageBar::leaveEvent(QEvent* event)
{
    startTimer();
    QFrame::leaveEvent(event);
}

void MessageBar::act()
{
    const std::function<void()> chosen = waiting_.front().action.act;
    dismiss();
    chosen();
}

void MessageBar::dismiss()
{
    waiting_.removeFirst();
    showFirst();
}

} // namespace workbench

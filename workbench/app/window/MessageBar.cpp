#include "workbench/app/window/MessageBar.h"

#include "skin/Glyphs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

namespace workbench
{

namespace
{
constexpr int kMostWaiting = 20;

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
    , count_(new QLabel)
    , close_(new QToolButton)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 4, 4);
    row->setSpacing(8);
    row->addWidget(icon_);
    row->addWidget(text_, 1);
    row->addWidget(count_);
    row->addWidget(close_);
    icon_->setPixmap(glyphIcon(Glyph::Warning).pixmap(QSize(16, 16), devicePixelRatioF()));
    text_->setWordWrap(true);
    text_->setTextFormat(Qt::PlainText);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    close_->setIcon(glyphIcon(Glyph::Close));
    close_->setToolTip(QStringLiteral("Close this message"));
    close_->setAccessibleName(QStringLiteral("Close this message"));
    QObject::connect(close_, &QToolButton::clicked, this, [this] { dismiss(); });
    setObjectName(QStringLiteral("messageBar"));
    hide();
}

void MessageBar::show(const QString& message, Severity severity)
{
    const auto same = [&](const Message& other) { return other.text == message; };
    if (message.isEmpty() || std::any_of(waiting_.begin(), waiting_.end(), same))
        return;
    // Whatever goes wrong in a loop must not fill the memory.
    if (waiting_.size() >= kMostWaiting)
        waiting_.removeAt(1);
    waiting_.append({message, severity});
    showFirst();
}

QString MessageBar::text() const
{
    return waiting_.isEmpty() ? QString() : waiting_.front().text;
}

void MessageBar::showFirst()
{
    setVisible(!waiting_.isEmpty());
    if (waiting_.isEmpty())
        return;
    const Message& message = waiting_.front();
    setStyleSheet(QStringLiteral("#messageBar { background: %1; } QLabel { color: #f0f0f0; }")
                      .arg(QLatin1String(groundOf(message.severity))));
    text_->setText(message.text);
    setAccessibleName(message.text);
    count_->setVisible(waiting_.size() > 1);
    count_->setText(QStringLiteral("%1 more").arg(waiting_.size() - 1));
}

void MessageBar::dismiss()
{
    waiting_.removeFirst();
    showFirst();
}

} // namespace workbench

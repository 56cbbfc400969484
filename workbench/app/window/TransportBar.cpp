#include "workbench/app/window/TransportBar.h"

#include "oribund/host/edit/Cue.h"
#include "skin/QtConversions.h"
#include "workbench/app/cues/CuePlacement.h"
#include "workbench/app/session/ActionTable.h"
#include "workbench/app/timeline/TimeCode.h"

#include <QAction>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>

namespace workbench
{

using oribund::qt::Glyph;
using oribund::qt::glyphIcon;
using oribund::qt::toQt;

namespace
{
QFont figures()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(14);
    return font;
}
} // namespace

TransportBar::TransportBar(Workspace& workspace, const ActionTable& actions, QWidget* parent)
    : QWidget(parent)
    , workspace_(workspace)
    , actions_(actions)
    , time_(new QLineEdit)
    , cue_(new QLabel)
    , length_(new QLabel)
    , replacedCallback_(this, &TransportBar::handleReplaced)
    , timeCallback_(this, &TransportBar::handleTime)
    , playCallback_(this, &TransportBar::handlePlaying)
    , editCallback_(this, &TransportBar::handleModification)
{
    time_->setFont(figures());
    length_->setFont(figures());
    const int width = QFontMetrics(figures()).horizontalAdvance(QStringLiteral("00:00:00:00"));
    time_->setFixedWidth(width + 16);
    time_->setAccessibleName(QStringLiteral("Current time"));
    time_->setToolTip(QStringLiteral("The current time. Type a time code and press Enter to go there."));
    cue_->setTextFormat(Qt::PlainText);
    cue_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    cue_->setIndent(8);
    cue_->setToolTip(QStringLiteral("The cue at the current time"));
    length_->setMinimumWidth(width + 16);
    length_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    length_->setEnabled(false);
    length_->setToolTip(QStringLiteral("Length of the edit"));
    QObject::connect(time_, &QLineEdit::returnPressed, this, [this] { goToTyped(); });
    QObject::connect(time_, &QLineEdit::editingFinished, this, [this] { showTime(); });
    auto* const giveUp = new QShortcut(QKeySequence(Qt::Key_Escape), time_);
    giveUp->setContext(Qt::WidgetShortcut);
    QObject::connect(giveUp, &QShortcut::activated, this, [this] {
        showTime();
        time_->clearFocus();
    });
    addButtons();

    replacedCallback_.attach(workspace_.replaced());
    timeCallback_.attach(workspace_.vob().getCurrentTimeServer().notifier());
    playCallback_.attach(workspace_.vob().playServer().notifier());
    handleReplaced({});
}

void TransportBar::addButtons()
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 3, 8, 3);
    row->setSpacing(2);
    row->addWidget(time_);
    row->addWidget(cue_, 1);
    for (const Command command : {Command::ToStart, Command::PreviousCut, Command::StepBack, Command::Play,
                                  Command::StepForward, Command::NextCut, Command::ToEnd}) {
        auto* button = new QToolButton;
        button->setDefaultAction(&actions_.action(command));
        button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        button->setIconSize(command == Command::Play ? QSize(22, 22) : QSize(18, 18));
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(actions_.action(command).text().remove(QLatin1Char('&')));
        row->addWidget(button);
    }
    row->addStretch(1);
    row->addWidget(length_);
}

void TransportBar::goToTyped()
{
    ModelVob& vob = workspace_.vob();
    if (const auto frame = frameOfTimeCode(time_->text().trimmed().toStdString(), workspace_.edit().format()))
        vob.setCurrentTime(vob.timeOf(*frame));
    showTime();
    time_->clearFocus();
}

void TransportBar::showTime()
{
    time_->setText(QString::fromStdString(timeCodeOf(workspace_.vob().currentFrame(), workspace_.edit().format())));
}

void TransportBar::showCue()
{
    const oribund::Cue* const cue = cueInFrame(workspace_.vob(), workspace_.vob().currentFrame());
    cue_->setText(cue ? toQt(cue->name) : QString());
    if (!cue)
        return;
    QPalette palette = this->palette();
    palette.setColor(QPalette::WindowText, toQt(cue->colour));
    cue_->setPalette(palette);
}

void TransportBar::showLength()
{
    const EditModel& edit = workspace_.edit();
    length_->setText(QString::fromStdString(timeCodeOf(edit.timeline().endFrame(), edit.format())));
}

int TransportBar::handleReplaced(const EditReplaced&)
{
    editCallback_.detach();
    editCallback_.attach(workspace_.edit().modifications());
    showTime();
    showCue();
    showLength();
    return 0;
}

int TransportBar::handleTime(const oribund::ValServerEvent<double>& event)
{
    if (event.kind != oribund::ValEventKind::Changed)
        return 0;
    showCue();
    if (!(time_->hasFocus() && time_->isModified()))
        showTime();
    return 0;
}

int TransportBar::handlePlaying(const oribund::ValServerEvent<bool>& event)
{
    if (event.kind != oribund::ValEventKind::Changed)
        return 0;
    QAction& play = actions_.action(Command::Play);
    play.setIcon(glyphIcon(*event.value ? Glyph::Pause : Glyph::Play));
    play.setText(*event.value ? QStringLiteral("&Pause") : QStringLiteral("&Play"));
    return 0;
}

int TransportBar::handleModification(const oribund::EditModification&)
{
    showCue();
    showLength();
    return 0;
}

} // namespace workbench

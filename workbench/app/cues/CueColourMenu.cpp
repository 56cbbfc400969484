#include "workbench/app/cues/CueColourMenu.h"

#include "oribund/cues/CueColours.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/edit/Cue.h"
#include "oribund/host/services/TextTable.h"
#include "skin/QtConversions.h"
#include "workbench/app/cues/CueCommands.h"

namespace workbench
{

CueColourMenu::CueColourMenu(CueCommands& cues, QWidget* parent)
    : QMenu(parent)
    , cues_(cues)
{
    for (const oribund::CueColour& one : oribund::cueColours()) {
        QAction* const action = addAction(oribund::qt::toQt(oribund::displayText(one.text)));
        action->setCheckable(true);
        QObject::connect(action, &QAction::triggered, this, [this, colour = one.colour] {
            cues_.withCurrent([&](const oribund::IdStamp& cue) { cues_.recolour(cue, colour); });
        });
    }
    QObject::connect(this, &QMenu::aboutToShow, this, [this] { showCurrent(); });
}

void CueColourMenu::showCurrent()
{
    const oribund::Cue* const cue = cues_.current();
    for (qsizetype i = 0; i < actions().size(); ++i)
        actions().at(i)->setChecked(cue && cue->colour == oribund::cueColours()[static_cast<std::size_t>(i)].colour);
}

} // namespace workbench

#pragma once

#include "oribund/host/base/LightweightString.h"
#include "workbench/app/session/ActionTable.h"

#include <functional>
#include <map>

namespace oribund
{
class IdStamp;
struct Colour;
struct Cue;
} // namespace oribund

namespace workbench
{

class Workspace;
struct EditOutcome;

/** What the user can do with cues. What changes the edit is one undo step; what cannot be done is said. */
class CueCommands
{
public:
    /** The workspace outlives it. */
    explicit CueCommands(Workspace& workspace);

    /** What the menu offers: at the current time. They refer to this object. */
    std::map<Command, ActionTable::Handler> handlers();

    /** Puts a cue into the frame of that time, with a name of its own and the colour used last. */
    void add(double editTime);

    /** From the current time; where there is none further on, nothing happens. */
    void goToPrevious();
    void goToNext();

    void askForName(const oribund::IdStamp& cue);
    /** An empty name changes nothing. */
    void rename(const oribund::IdStamp& cue, const oribund::WString& name);
    void recolour(const oribund::IdStamp& cue, const oribund::Colour& colour);
    void describe(const oribund::IdStamp& cue);
    void remove(const oribund::IdStamp& cue);

    /** The cue at the current time; null for none. Valid until the cues change. */
    const oribund::Cue* current() const;

    /** The same, which says so when there is none: calls `act` with the cue. */
    void withCurrent(const std::function<void(const oribund::IdStamp& cue)>& act);

    /** Called to have the user write a name, which then comes by rename(). */
    std::function<void(const oribund::Cue& cue)> nameWanted;

    /** Called to show all that there is to a cue. */
    std::function<void(const oribund::Cue& cue)> descriptionWanted;

private:
    void goTo(const oribund::Cue* cue);
    void change(const oribund::IdStamp& id, const std::function<void(oribund::Cue& cue)>& alter);
    void sayIfRefused(const EditOutcome& outcome);

    Workspace& workspace_;
};

} // namespace workbench

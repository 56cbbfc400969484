#pragma once

#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/host/edit/monitor/CompoundEffectKeyframes.h"
#include "oribund/host/effects/keyframes/KeyframeClip.h"
#include "workbench/app/session/ActionTable.h"

#include <functional>
#include <map>
#include <optional>

namespace workbench
{

class Workspace;

/** The kind of what is on the clipboard after keyframes were copied. It has no text: an entry cannot paste it. */
inline constexpr char kKeyframesOnClipboard[] = "application/x-oribund-keyframes";

/**
 * What the menu offers for the keyframes of the effects that are shown. What changes the edit is one undo step; what
 * cannot be done is said. Copied keyframes are kept here, whatever becomes of the edit.
 */
class KeyframeActions
{
public:
    using PasteTarget = oribund::CompoundEffectKeyframes::PasteTarget;

    /** The workspace outlives it. */
    explicit KeyframeActions(Workspace& workspace);

    /** They refer to this object. */
    std::map<Command, ActionTable::Handler> handlers();

    void goTo(bool next);
    void add();
    void remove();
    bool isAnySelected() const;
    void removeSelected();
    void selectAll(bool select);
    void copy();
    void paste();
    void move(int frames);

    /** Called for the parameter in whose row the keyboard is; none when it is in no row. */
    std::function<std::optional<PasteTarget>()> focusedParam;

private:
    /** Why nothing can be changed at the current time; null when it can. */
    const char* obstacle() const;
    oribund::IdStamp track() const;
    oribund::KeyframeCommands commands() const;
    oribund::CompoundEffectKeyframes& keyframes() const;
    std::optional<PasteTarget> pasteTarget() const;

    Workspace& workspace_;
    oribund::KeyframeClip clip_;
};

} // namespace workbench

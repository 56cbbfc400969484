#pragma once

#include "oribund/host/base/LightweightString.h"
#include "workbench/model/undo/EditChange.h"
#include "workbench/model/undo/ParamDelta.h"

#include <map>
#include <utility>
#include <vector>

namespace workbench
{

/**
 * One undo step: what a person did in one go, with a text for it. Holds ids and values only, so that it outlives every
 * widget, and takes the time and memory of what it changed, whatever the size of the edit.
 */
class EditCommand
{
public:
    /** Without a title, the command tells what happened to the parameters in it. */
    explicit EditCommand(oribund::WString title = {});

    EditCommand(EditCommand&&) noexcept = default;
    EditCommand& operator=(EditCommand&&) noexcept = default;

    /** Adds a change that has been made, folding it into an earlier one where that leaves the result the same. */
    void add(EditChangePtr change);

    /** The delta of a parameter, for recording what is happening to it now. Valid until the next call. */
    ParamDelta& paramDelta(ObjectId effect, const oribund::IdStamp& param);

    /** Each change is followed by what observers are to be told of it. */
    void apply(Timeline& timeline, std::vector<oribund::EditModification>& told);
    void revert(Timeline& timeline, std::vector<oribund::EditModification>& told);

    /** Whether nothing is different at its end from what it was at its beginning. */
    bool isNull() const;

    /** "Saturation 12 % to 18 %", "Add Sharpen". For a command that is still growing. */
    oribund::WString describe(const Timeline& timeline) const;

    /** Drops what has come to nothing, makes the rest small and fixes the text, while the objects it is about are as it
     * left them. */
    void close(const Timeline& timeline);

    /** The text of a closed command. */
    const oribund::WString& title() const { return title_; }

private:
    oribund::WString title_;
    std::vector<EditChangePtr> changes_;
    std::map<std::pair<ObjectId, oribund::IdStamp>, ParamDelta*> recording_; ///< those of the changes that still grow
};

} // namespace workbench

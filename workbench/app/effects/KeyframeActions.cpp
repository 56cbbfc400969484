#include "workbench/app/effects/KeyframeActions.h"

#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/model/Ids.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <string>
#include <utility>

namespace workbench
{

using oribund::IdStamp;

namespace
{
constexpr char kNoEffects[] = "There are no effects here: select a segment that has some.";
constexpr char kOutside[] = "The current time is outside the segment whose effects are shown.";
constexpr char kNothingSelected[] = "No keyframe is selected.";
} // namespace

KeyframeActions::KeyframeActions(Workspace& workspace)
    : workspace_(workspace)
{
}

std::map<Command, ActionTable::Handler> KeyframeActions::handlers()
{
    return {
        {Command::PreviousKeyframe, [this] { goTo(false); }},
        {Command::NextKeyframe, [this] { goTo(true); }},
        {Command::AddKeyframes, [this] { add(); }},
        {Command::RemoveKeyframes, [this] { remove(); }},
        {Command::SelectKeyframes, [this] { selectAll(true); }},
        {Command::DeselectKeyframes, [this] { selectAll(false); }},
        {Command::CopyKeyframes, [this] { copy(); }},
        {Command::PasteKeyframes, [this] { paste(); }},
        {Command::KeyframesEarlier, [this] { move(-1); }},
        {Command::KeyframesLater, [this] { move(1); }},
    };
}

IdStamp KeyframeActions::track() const
{
    const Segment* const segment = workspace_.targetSegment();
    return segment ? stampOf(segment->track) : IdStamp();
}

oribund::KeyframeCommands KeyframeActions::commands() const
{
    return {&workspace_.vob(), track()};
}

oribund::CompoundEffectKeyframes& KeyframeActions::keyframes() const
{
    return *workspace_.vob().getEffectMonitor(); // there always is an edit
}

const char* KeyframeActions::obstacle() const
{
    if (keyframes().getEffects(track()).empty())
        return kNoEffects;
    return workspace_.edit().isReadOnly() ? refusal::kReadOnly : nullptr;
}

void KeyframeActions::goTo(bool next)
{
    if (keyframes().getEffects(track()).empty())
        return say(kNoEffects);
    if (!keyframes().findAdjacentKeyframe(track(), next))
        return say(next ? "There is no later keyframe." : "There is no earlier keyframe.");
    commands().goToAdjacent(next);
}

void KeyframeActions::add()
{
    if (const char* const why = obstacle())
        return say(why);
    if (keyframes().getNumKeyframedParams(track()) == 0)
        return say("No value is animated yet: click the diamond in front of its name first.");
    if (!commands().addAtCurrentTime())
        say(commands().isWithinEffects() ? "Every animated value has a keyframe here already." : kOutside);
}

void KeyframeActions::remove()
{
    if (const char* const why = obstacle())
        return say(why);
    if (!commands().removeSelectedOrHere())
        say("No keyframe is selected, and there is none at the current time.");
}

bool KeyframeActions::isAnySelected() const
{
    return commands().countSelected() > 0;
}

void KeyframeActions::removeSelected()
{
    if (!isAnySelected())
        return say(kNothingSelected);
    remove();
}

void KeyframeActions::selectAll(bool select)
{
    commands().selectAll(select);
    if (select && commands().countSelected() == 0)
        say("There are no keyframes to select.");
}

void KeyframeActions::copy()
{
    oribund::KeyframeClip copied = keyframes().copySelectedKeyframes(IdStamp::wildcard(), IdStamp());
    if (copied.empty())
        return say(kNothingSelected);
    clip_ = std::move(copied);
    auto* const mark = new QMimeData;
    mark->setData(QLatin1String(kKeyframesOnClipboard), QByteArray());
    QGuiApplication::clipboard()->setMimeData(mark);
}

std::optional<KeyframeActions::PasteTarget> KeyframeActions::pasteTarget() const
{
    const auto target = focusedParam ? focusedParam() : std::nullopt;
    if (!target || clip_.parts().size() != 1)
        return {};
    const auto effect = keyframes().findEffect(target->effect);
    const auto param = effect ? effect->findParam(target->param) : nullptr;
    const bool fits =
        param && param->isKeyframable() && param->constantValue().index() == clip_.parts().front().valueType;
    return fits ? target : std::nullopt;
}

void KeyframeActions::paste()
{
    if (const char* const why = obstacle())
        return say(why);
    if (clip_.empty())
        return say("No keyframes have been copied.");
    if (!commands().isWithinEffects())
        return say(kOutside);
    const int pasted = keyframes().pasteKeyframes(track(), clip_, pasteTarget());
    if (pasted == 0)
        say("None of these effects has a value of that name and kind. With the keyboard in the row of another value of "
            "that kind, the keyframes of a single value go there.");
    else if (const int left = clip_.size() - pasted; left > 0)
        say(std::to_string(left) + " of " + std::to_string(clip_.size()) +
            (left == 1 ? " keyframes has no place here, or lies" : " keyframes have no place here, or lie") +
            " beyond the end of the segment.");
}

void KeyframeActions::move(int frames)
{
    if (const char* const why = obstacle())
        return say(why);
    if (commands().countSelectedOnTrack() == 0)
        return say(kNothingSelected);
    if (!commands().moveSelected(frames))
        say("The selected keyframes cannot go further: another keyframe or the end of the segment is next.");
}

} // namespace workbench

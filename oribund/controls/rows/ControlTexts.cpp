#include "oribund/controls/rows/ControlTexts.h"

#include "oribund/host/services/Host.h"
#include "oribund/host/services/TextTable.h"

namespace oribund
{

namespace
{

const wchar_t* englishText(ControlText text)
{
    switch (text) {
    case ControlText::Keyframes:
        return L"Keyframes";
    case ControlText::PreviousKeyframe:
        return L"Go to the previous keyframe";
    case ControlText::NextKeyframe:
        return L"Go to the next keyframe";
    case ControlText::AddKeyframes:
        return L"Add a keyframe to every animated parameter";
    case ControlText::RemoveKeyframes:
        return L"Remove the selected keyframes, or those at the current time";
    case ControlText::ZoomIn:
        return L"Zoom in to the part worked on";
    case ControlText::ZoomOut:
        return L"Show the whole effect";
    case ControlText::EffectTime:
        return L"Time in the effect";
    case ControlText::SelectAll:
        return L"Select all keyframes";
    case ControlText::DeselectAll:
        return L"Deselect all keyframes";
    case ControlText::RemoveSelected:
        return L"Remove selected keyframes";
    case ControlText::AddStep:
        return L"Add keyframes";
    case ControlText::RemoveStep:
        return L"Remove keyframes";
    case ControlText::KeyframeCount:
        return L"keyframe $NUMBER$ of $COUNT$";
    case ControlText::Selected:
        return L"selected";
    case ControlText::AndMore:
        return L"and $COUNT$ more";
    case ControlText::NotAnimated:
        return L"Not animated: click to set the first keyframe";
    case ControlText::NoKeyframeHere:
        return L"Animated, no keyframe here: click to add one";
    case ControlText::KeyframeHere:
        return L"Keyframe here: click to remove it";
    }
    return L"";
}

} // namespace

UIString controlText(ControlText text)
{
    const int id = static_cast<int>(text);
    if (Host::isInstalled() && Host::current().texts().find(id, 0))
        return UIString(id);
    return UIString(englishText(text));
}

} // namespace oribund

#pragma once

/**
 * The texts of the library: name, resource id, English. A host's table may have its own text for an id, with the same
 * placeholders. `Text(name, id, english)` is written out for each of them.
 */
// clang-format off
#define ORIBUND_TEXTS(Text) \
    Text(kColourRange, 10348, L"Colour range") \
    Text(kEffectSettings, 11497, L"Settings of $EFFECT$") \
    Text(kMaskTitle, 13682, L"Mask") \
    Text(kSwitchEffect, 20001, L"Switch $EFFECT$ on or off") \
    Text(kSwitchAllEffects, 20002, L"Switch all effects of $TRACK$ on or off") \
    Text(kEffectOnTrack, 20003, L"$EFFECT$ on $TRACK$") \
    Text(kResetAll, 20004, L"Reset all") \
    Text(kKeyframeAll, 20005, L"Keyframe all") \
    Text(kCopySettings, 20006, L"Copy settings") \
    Text(kPasteSettings, 20007, L"Paste settings") \
    Text(kRename, 20008, L"Rename") \
    Text(kNoMask, 20009, L"No mask: $REASON$") \
    Text(kMoveUp, 20010, L"Move up") \
    Text(kMoveDown, 20011, L"Move down") \
    Text(kRemove, 20012, L"Remove") \
    Text(kKeyframes, 20101, L"Keyframes") \
    Text(kPreviousKeyframe, 20102, L"Go to the previous keyframe") \
    Text(kNextKeyframe, 20103, L"Go to the next keyframe") \
    Text(kAddKeyframes, 20104, L"Add a keyframe to every animated parameter") \
    Text(kRemoveKeyframes, 20105, L"Remove the selected keyframes, or those at the current time") \
    Text(kZoomIn, 20106, L"Zoom in to the part worked on") \
    Text(kZoomOut, 20107, L"Show the whole effect") \
    Text(kEffectTime, 20108, L"Time in the effect") \
    Text(kSelectAllKeyframes, 20109, L"Select all keyframes") \
    Text(kDeselectAllKeyframes, 20110, L"Deselect all keyframes") \
    Text(kRemoveSelectedKeyframes, 20111, L"Remove selected keyframes") \
    Text(kAddKeyframesStep, 20112, L"Add keyframes") \
    Text(kRemoveKeyframesStep, 20113, L"Remove keyframes") \
    Text(kKeyframeCount, 20114, L"keyframe $NUMBER$ of $COUNT$") \
    Text(kSelected, 20115, L"selected") \
    Text(kAndMore, 20116, L"and $COUNT$ more") \
    Text(kNotAnimated, 20117, L"Not animated: click to set the first keyframe") \
    Text(kNoKeyframeHere, 20118, L"Animated, no keyframe here: click to add one") \
    Text(kKeyframeHere, 20119, L"Keyframe here: click to remove it") \
    Text(kKeyframeOf, 20120, L"$NAME$: keyframe") \
    Text(kTime, 20121, L"Time") \
    Text(kPartOf, 20122, L"$NAME$ $PART$") \
    Text(kOneKeyframe, 20123, L"keyframe") \
    Text(kManyKeyframes, 20124, L"$COUNT$ keyframes") \
    Text(kRemoveStep, 20125, L"Remove $WHAT$") \
    Text(kPasteStep, 20126, L"Paste $WHAT$") \
    Text(kWholeTurns, 20201, L"Whole turns") \
    Text(kWholeTurnsPart, 20202, L"whole turns") \
    Text(kChooseColour, 20203, L"Choose a colour") \
    Text(kChooserPart, 20204, L"chooser") \
    Text(kYes, 20205, L"yes") \
    Text(kNo, 20206, L"no") \
    Text(kDefault, 20207, L"Default: $VALUE$") \
    Text(kRange, 20208, L"Range: $RANGE$") \
    Text(kRangeOf, 20209, L"Range of $NAME$: $RANGE$") \
    Text(kFromTo, 20210, L"$LOW$ to $HIGH$") \
    Text(kFrom, 20211, L"from $LOW$") \
    Text(kUpTo, 20212, L"up to $HIGH$") \
    Text(kResetGroup, 20221, L"Reset $GROUP$") \
    Text(kNoParams, 20222, L"There is nothing to set.") \
    Text(kCueTimecode, 20301, L"Timecode") \
    Text(kCueName, 20302, L"Name") \
    Text(kCueDescription, 20303, L"Description") \
    Text(kCueColour, 20304, L"Colour") \
    Text(kNoCue, 20305, L"No cue") \
    Text(kCueField, 20306, L"Field") \
    Text(kCueText, 20307, L"Text") \
    Text(kNotUnderstood, 20308, L"\"$TEXT$\" is not understood as $FIELD$.") \
    Text(kCueRefused, 20309, L"The edit does not take this change of the cue. There may be another cue at that time.") \
    Text(kRed, 20311, L"Red") \
    Text(kOrange, 20312, L"Orange") \
    Text(kYellow, 20313, L"Yellow") \
    Text(kGreen, 20314, L"Green") \
    Text(kCyan, 20315, L"Cyan") \
    Text(kBlue, 20316, L"Blue") \
    Text(kPurple, 20317, L"Purple") \
    Text(kWhite, 20318, L"White") \
    Text(kRangeLowerStart, 20501, L"start of the lower soft edge") \
    Text(kRangeBandStart, 20502, L"start of the full selection") \
    Text(kRangeBandEnd, 20503, L"end of the full selection") \
    Text(kRangeUpperEnd, 20504, L"end of the upper soft edge") \
    Text(kRangeWhole, 20505, L"whole range") \
    Text(kRangeHandleTip, 20506, L"$NAME$: $VALUE$\nDrag it, or double-click to type a number") \
    Text(kRangeReset, 20507, L"Reset the range") \
    Text(kRangeType, 20508, L"Type a number") \
    Text(kPickColours, 20509, L"Pick colours in the viewer: click a point or drag a rectangle. Shift adds to the range, Alt takes away; Escape ends it") \
    Text(kPickStep, 20510, L"Pick colour range") \
    Text(kColourWheel, 20511, L"colour offset") \
    Text(kWheelDirection, 20512, L"direction") \
    Text(kWheelStrength, 20513, L"strength") \
    Text(kWheelTip, 20514, L"Drag towards a colour; double-click to take the offset away") \
    Text(kLevel, 20515, L"Level") \
    Text(kShadowsWhole, 20518, L"end of the full shadows") \
    Text(kMidtonesStart, 20519, L"start of the full midtones") \
    Text(kMidtonesEnd, 20520, L"end of the full midtones") \
    Text(kHighlightsWhole, 20521, L"start of the full highlights") \
    Text(kShadows, 20522, L"Shadows") \
    Text(kMidtones, 20523, L"Midtones") \
    Text(kHighlights, 20524, L"Highlights") \
    Text(kNoNumber, 20401, L"Failed to parse string") \
    Text(kDivisionByZero, 20402, L"Division by zero") \
    Text(kMissingParenthesis, 20403, L"A parenthesis is missing") \
    Text(kNumberTooLarge, 20404, L"The number is too large") \
    Text(kTextTooLong, 20405, L"The text is too long") \
    Text(kValueRefused, 20406, L"This value is not possible now")

// clang-format on

namespace oribund::TextIds
{

// NOLINTNEXTLINE(bugprone-macro-parentheses): a name takes none.
#define ORIBUND_TEXT_ID(name, id, english) name = id,

enum : int { ORIBUND_TEXTS(ORIBUND_TEXT_ID) };

#undef ORIBUND_TEXT_ID

} // namespace oribund::TextIds

#pragma once

#include "skin/Export.h"

#include <QIcon>
#include <QStringView>

#include <optional>

class QColor;
class QPainter;
class QRectF;

namespace oribund::qt
{

/** The icons of the interface. Vector shapes on a grid of 16 by 16, so that they are sharp in any size and at any
 * scale. */
enum class Glyph {
    Play,
    Pause,
    StepBack,
    StepForward,
    ToStart,
    ToEnd,
    PreviousCut,
    NextCut,
    Loop,
    Undo,
    Redo,
    KeyframeOff,  ///< the value is not animated
    KeyframeAway, ///< animated, without a keyframe at the current time
    KeyframeHere, ///< a keyframe at the current time
    PreviousKeyframe,
    NextKeyframe,
    AddKeyframe,
    RemoveKeyframe,
    ZoomIn,
    ZoomOut,
    Expand,   ///< folded: points to the right
    Collapse, ///< unfolded: points down
    Up,
    Down,
    Trash,
    Power,
    Plus,
    Minus,
    Close,
    Check,
    Search,
    Settings,
    More,
    Reset,
    Open,
    Save,
    Export,
    Split,
    Volume,
    Mute,
    Warning,
    EyeDropper,
    Film,
    Count
};

/** The glyph of a name such as "play" or "keyframe-here", by which the library asks for icons; none for another. */
ORIBUND_QT_API std::optional<Glyph> glyphNamed(QStringView name);

/** Its name, plain ASCII. */
ORIBUND_QT_API const char* glyphName(Glyph glyph);

/** Paints it in one colour into the largest square that is centred in the box. */
ORIBUND_QT_API void paintGlyph(QPainter& painter, Glyph glyph, const QRectF& box, const QColor& colour);

/**
 * For actions and native buttons. It is painted anew in each size and at each scale, in the colour of button texts of
 * the application's palette at that time; greyed where the control is disabled.
 */
ORIBUND_QT_API QIcon glyphIcon(Glyph glyph);

} // namespace oribund::qt

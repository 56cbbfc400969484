#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/base/XY.h"

#include <optional>

namespace oribund
{

/** What kind of thing something is, for who does not see it. */
enum class AccessibleRole {
    Graphic, ///< something drawn, of no kind below
    Group,
    Text,
    Button,
    CheckBox,
    DropDown,
    ColourButton,
    Slider,
    Dial,
    ScrollBar,
    TextEntry,
    NumberEntry,
    Table,
    ColumnHeader,
    Cell,
    TimeBar,
    Keyframe,
    Cue,
};

/** What activating something does. */
enum class AccessibleAction { None, Press, Toggle, ShowMenu };

/** A number that something stands for. Limits that are not known are infinite, a step that is not known is 0. */
struct AccessibleNumber {
    double value = 0.0;
    double min = 0.0;
    double max = 0.0;
    double step = 0.0;
};

/** What a glob, or a part of one, is to someone who does not see it. A plain value. */
struct AccessibleDescription {
    AccessibleRole role = AccessibleRole::Graphic;
    UIString name;
    /** More about it than its name: what its tooltip says. */
    UIString help;
    /** What it shows, as text; empty for what has no value. */
    WString value;
    std::optional<AccessibleNumber> number;
    AccessibleAction action = AccessibleAction::None;
    /** Where it is, in the coordinates of its glob. */
    Kt::Box<int> box;
    /** Of a cell or column header: column and row; -1 for neither. */
    XY<int> cell{-1, -1};

    bool enabled = true;
    bool focusable = false;
    bool focused = false;
    bool visible = true; ///< false for what is scrolled out of view
    bool checkable = false;
    bool checked = false;
    bool mixed = false; ///< neither checked nor not
    bool pressed = false;
    bool expandable = false;
    bool expanded = false;
    bool hasMenu = false;
    bool editable = false; ///< its text can be set
    bool readOnly = false;
    bool invalid = false; ///< what was entered cannot be its value
    bool selectable = false;
    bool selected = false;
    bool multiSelectable = false; ///< several of its parts can be selected at once
};

/**
 * What a glob tells assistive tools about itself, and what they may ask of it.
 *
 * A glob may have parts: what it draws and a user can tell apart, but is no glob of its own, such as the cells of a
 * table. They are numbered from 0, in reading order, and a number means something until the glob changes. What asks
 * goes through the same rules as a user: nothing happens while the glob cannot interact. User-interface thread only.
 */
class ORIBUND_API Accessible
{
public:
    /** Stands for the glob itself where a part is asked for. */
    static constexpr int kWhole = -1;
    static constexpr int kNoPart = -1;

    virtual ~Accessible();

    /** Adds what this kind of glob is and shows; the rest is there already, see Glob::accessible(). */
    virtual void describe(AccessibleDescription& description) const;

    virtual int accessiblePartCount() const;

    /** `part` is below accessiblePartCount(). */
    virtual void describePart(int part, AccessibleDescription& description) const;

    /** The part at a point, in the glob's coordinates; kNoPart for none. */
    virtual int accessiblePartAt(const XY<int>& local) const;

    /** The part that is meant by keys while the glob has the keyboard; kNoPart for none. */
    virtual int currentAccessiblePart() const;

    /** Does what the description names as its action. May destroy the glob. False where there is none. */
    virtual bool accessibleActivate(int part = kWhole);

    /** Makes the number another, as one edit. May destroy the glob. False where there is none. */
    virtual bool accessibleSetNumber(double value, int part = kWhole);

    /** Enters a whole text. May destroy the glob. False when it is refused. */
    virtual bool accessibleSetText(const WString& text, int part = kWhole);
};

} // namespace oribund

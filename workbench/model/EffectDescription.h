#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace workbench
{

/** One choice of a list parameter: the text shown, and the text that the service understands. */
struct ListItem {
    std::string label;
    std::string raw;

    bool operator==(const ListItem&) const = default;
};

/** A Range is four numbers on one axis, in ascending order: a band and the soft edges on both its sides. */
enum class ParamKind { Double, Bool, Angle, Colour, Point, IntList, TextList, Range, VideoInput };

/** The value with which an effect is demonstrated: a number, a switch or list index, a colour (r, g, b, a), a point. */
using DemoValue = std::variant<double, int, std::array<double, 4>, std::array<double, 2>>;

/**
 * One parameter of an effect: how it is shown, and how it is written into the service's properties.
 *
 * Numbers are in shown units throughout; shown = raw * scale + offset, and what is written is raw.
 */
struct ParamDescription {
    std::string property; ///< name of the service's property; unique within the effect, and the key in saved projects
    std::string name;     ///< shown beside the control
    std::string unit;     ///< shown after the number: "%", "px"; may be empty
    /**
     * The headings under which it is shown, the outermost first; empty for none. Parameters of a group are consecutive.
     */
    std::vector<std::string> groups;
    bool collapsed = false; ///< its innermost group is shown folded until somebody unfolds it
    std::string help;       ///< one or two sentences; may be empty
    ParamKind kind = ParamKind::Double;

    /**
     * Its row is there only while that list or switch of the same effect has one of these values, as its service has
     * them ("0" and "1" for a switch). Empty for a row that is always there.
     */
    std::string shownWith;
    std::vector<std::string> shownWithValues;

    double minimum = 0.0; ///< of each number of a Range, of a Point, and of a Colour that is an offset
    double maximum = 1.0;
    double defaultValue = 0.0; ///< of Double and Angle (degrees)
    double scale = 1.0;        ///< never 0
    double offset = 0.0;
    bool integer = false;    ///< whole raw values only
    bool animatable = false; ///< the service reads the property at every frame

    unsigned displayFlags = 0;   ///< as EffectValParamBase::displayFlags()
    std::vector<ListItem> items; ///< of the list kinds
    int defaultItem = 0;
    std::array<double, 4> defaultColour{0.0, 0.0, 0.0, 1.0}; ///< r, g, b, a, each 0..1; or the numbers of a Range
    std::array<double, 2> defaultPoint{0.0, 0.0};
    bool defaultBool = false;

    /**
     * For a Colour, Range or Point that the service keeps as several numbers: the property of each component in turn
     * (r, g, b and possibly a; x, y). Each is written as a number, with scale and offset. Empty for one property that
     * holds all.
     */
    std::vector<std::string> components;

    /**
     * How a Point is written into its one property: "%1" and "%2" stand for raw x and y. "%1 %2 0 0 1" makes a
     * rectangle that the service can interpolate. A Colour is written as "#aarrggbb", or as "0xrrggbbaa" where this is
     * "rgba"; where it is "rgb" all are opaque.
     */
    std::string format = "%1 %2";

    std::optional<DemoValue> demo; ///< a setting that visibly or audibly differs from the default

    bool operator==(const ParamDescription&) const = default;
};

/** What a catalogue entry is: an effect that can be added to a segment. */
struct EffectDescription {
    enum class Medium { Video, Audio };

    std::string service; ///< name of the service, also the effect's identity in saved projects
    std::string title;
    std::string category;
    std::string help;
    Medium medium = Medium::Video;
    std::vector<ParamDescription> params;
    std::vector<std::pair<std::string, std::string>> fixedProperties; ///< set once, never shown
    bool curated = false;          ///< described by hand rather than by the service's own metadata alone
    std::string blockedBecause;    ///< the reason for which it must not be added; empty when it may be
    std::string unmaskableBecause; ///< the reason for which it can have no mask, a sentence; empty when it can

    bool maskable() const { return unmaskableBecause.empty(); }

    /** Null when there is none. */
    const ParamDescription* find(std::string_view property) const
    {
        for (const ParamDescription& param : params)
            if (param.property == property)
                return &param;
        return nullptr;
    }

    bool operator==(const EffectDescription&) const = default;
};

} // namespace workbench

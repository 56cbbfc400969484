#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/notify/Notifier.h"

#include <cstdint>
#include <span>

namespace oribund
{

class FXViewHandle;

/** What comes of a pick. Valid during the call. */
struct ColourPickEvent {
    enum class Kind {
        Picked, ///< a point or an area was chosen; the pick goes on, as there may be more
        Ended,  ///< no more comes, whoever ended it; it is not told of a pick that was not begun
    };

    Kind kind = Kind::Ended;
    /** Which pick, as begin() gave it. */
    std::uint64_t pick = 0;
    /** Of a point its colour; of an area those of points spread evenly over it, no more than some thousands. */
    std::span<const Colour> colours = {};
    /** The keys held, as in Event::modifiers. */
    unsigned modifiers = 0;
};

/**
 * Lets the user pick colours from a viewer's picture, by a click or by dragging a rectangle. One pick at a time: each
 * takes over the pointer in the picture until it is ended by Escape there, by who asked for it, or by the next one. A
 * viewer may offer it. User-interface thread only.
 */
class iColourPicker
{
public:
    using Number = std::uint64_t;

    static constexpr Number kNone = 0;

    /** Ends the present pick, and begins one for the input of an effect. kNone where there is no picture to pick from.
     */
    virtual Number begin(const FXViewHandle& effect) = 0;

    /** Does nothing when that one is over. */
    virtual void end(Number pick) = 0;

    virtual Notifier<ColourPickEvent>& picks() = 0;

protected:
    ~iColourPicker() = default;
};

} // namespace oribund

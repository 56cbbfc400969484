#pragma once

namespace oribund
{

class Checkbox;

/** Something that the user did with a check box. */
struct CheckboxEvent {
    /** The numbers are part of the contract. */
    enum class Kind : int {
        Toggled = 0,
        ModifiedClick = 2, ///< a click with keys held; only of a box that tells them, which is left as it was
    };

    Kind kind = Kind::Toggled;
    /** Valid when the call begins. */
    Checkbox* box = nullptr;
    /** As the user has set it; of a modified click, as a plain one would have. */
    bool checked = false;
    /** Bits of Event::modifiers. */
    unsigned modifiers = 0;
};

} // namespace oribund

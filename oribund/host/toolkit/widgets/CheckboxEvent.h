#pragma once

namespace oribund
{

class Checkbox;

/** Something that the user did with a check box. */
struct CheckboxEvent {
    enum class Kind : int { Toggled = 0 };

    Kind kind = Kind::Toggled;
    /** Valid when the call begins. */
    Checkbox* box = nullptr;
    /** As the user has set it. */
    bool checked = false;
};

} // namespace oribund

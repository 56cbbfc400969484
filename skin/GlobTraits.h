#pragma once

#include <QAccessible>
#include <QString>

#include <memory>
#include <optional>

namespace oribund
{
class Button;
class Checkbox;
class DropDownMenuButton;
class Event;
class Glob;
class Label;
class Slider;
enum class Key;
} // namespace oribund

namespace workbench
{

/**
 * What a painted glob is to someone who does not see it, and which keys it has a use for. Belongs to the surface of the
 * glob and is gone before the glob is.
 */
class GlobTraits
{
public:
    struct Number {
        double value = 0.0;
        double min = 0.0;
        double max = 0.0;
        double step = 0.0;
    };

    virtual ~GlobTraits();

    virtual QAccessible::Role role() const = 0;

    /** Whether a press of the key, without Ctrl or Alt, is for this glob while it has the keyboard, not for a command.
     */
    virtual bool usesKey(oribund::Key key) const = 0;

    /** The same of a press with Ctrl, Alt or Meta. */
    virtual bool usesCommandKey(const oribund::Event& press) const;

    virtual void addState(QAccessible::State& state) const;

    /** Its value as text, the number if that is all it has; empty without a value. */
    virtual QString valueText() const;

    virtual std::optional<Number> number() const;
    virtual void setNumber(double value);

    /** The name of what activating it does, as QAccessibleActionInterface has them; empty where that is nothing. */
    virtual QString actionName() const;
    virtual void activate();

    static std::unique_ptr<GlobTraits> of(oribund::Label& label);
    static std::unique_ptr<GlobTraits> of(oribund::Button& button);
    static std::unique_ptr<GlobTraits> of(oribund::Checkbox& checkbox);
    static std::unique_ptr<GlobTraits> of(oribund::Slider& slider);
    static std::unique_ptr<GlobTraits> of(oribund::DropDownMenuButton& button);

    /** Of a glob that draws itself, or holds others. */
    static std::unique_ptr<GlobTraits> of(oribund::Glob& glob);
};

} // namespace workbench

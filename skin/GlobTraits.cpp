#include "skin/GlobTraits.h"

#include "skin/QtConversions.h"

#include "oribund/controls/bars/FXThermBase.h"
#include "oribund/controls/keyframes/KeyframeKeys.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/widgets/AngleIndicatorWidget.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/host/toolkit/widgets/Slider.h"

#include <QAccessibleActionInterface>

#include <algorithm>
#include <cmath>

namespace workbench
{

using oribund::Key;

namespace
{

bool isActivation(Key key)
{
    return key == Key::Space || key == Key::Enter;
}

bool isArrow(Key key)
{
    return key == Key::Left || key == Key::Right || key == Key::Up || key == Key::Down;
}

bool isNavigation(Key key)
{
    return isArrow(key) || key == Key::PageUp || key == Key::PageDown || key == Key::Home || key == Key::End;
}

/** Of a glob that is known by its class alone. */
class PlainTraits : public GlobTraits
{
public:
    PlainTraits(QAccessible::Role role, bool takesKeys)
        : role_(role)
        , takesKeys_(takesKeys)
    {
    }

    QAccessible::Role role() const override { return role_; }

    bool usesKey(Key key) const override
    {
        return takesKeys_ && (isNavigation(key) || key == Key::Delete || key == Key::Backspace);
    }

private:
    QAccessible::Role role_;
    bool takesKeys_;
};

/** Of a glob that a click, Space or Enter activates. */
template <class G>
class ActiveTraits : public GlobTraits
{
public:
    explicit ActiveTraits(G& glob)
        : glob_(glob)
    {
    }

    bool usesKey(Key key) const override { return isActivation(key); }

    QString actionName() const override { return QAccessibleActionInterface::pressAction(); }

protected:
    G& glob_;
};

class ButtonTraits final : public ActiveTraits<oribund::Button>
{
public:
    using ActiveTraits::ActiveTraits;

    QAccessible::Role role() const override { return QAccessible::Button; }

    void addState(QAccessible::State& state) const override
    {
        // A keyframe button is not checkable by itself, but has the states.
        const int now = glob_.getState();
        state.checkable = glob_.isCheckable() || now != oribund::Button::eOff;
        state.checked = now == oribund::Button::eOn;
        state.checkStateMixed = now == oribund::Button::eMixed;
        state.pressed = glob_.isPressed();
    }

    void activate() override { glob_.userClick(); }
};

class CheckboxTraits final : public ActiveTraits<oribund::Checkbox>
{
public:
    using ActiveTraits::ActiveTraits;

    QAccessible::Role role() const override { return QAccessible::CheckBox; }

    void addState(QAccessible::State& state) const override
    {
        state.checkable = true;
        state.checked = glob_.isChecked();
    }

    QString actionName() const override { return QAccessibleActionInterface::toggleAction(); }

    void activate() override { glob_.userToggle(); }
};

class MenuButtonTraits final : public ActiveTraits<oribund::DropDownMenuButton>
{
public:
    using ActiveTraits::ActiveTraits;

    QAccessible::Role role() const override { return QAccessible::ComboBox; }

    bool usesKey(Key key) const override { return isActivation(key) || key == Key::Up || key == Key::Down; }

    void addState(QAccessible::State& state) const override
    {
        state.hasPopup = true;
        state.expanded = glob_.isMenuOpen();
    }

    QString valueText() const override { return toQt(glob_.getSelectedText()); }

    QString actionName() const override { return QAccessibleActionInterface::showMenuAction(); }

    void activate() override { glob_.userOpenMenu(); }
};

class SwatchTraits final : public ActiveTraits<oribund::ColourSwatch>
{
public:
    using ActiveTraits::ActiveTraits;

    QAccessible::Role role() const override { return QAccessible::ColorChooser; }

    QString valueText() const override
    {
        const QColor colour = toQt(glob_.getColour());
        return colour.name(glob_.hasAlpha() ? QColor::HexArgb : QColor::HexRgb);
    }

    void activate() override { glob_.userClick(); }
};

class GroupTraits final : public ActiveTraits<oribund::MinimizableGroup>
{
public:
    using ActiveTraits::ActiveTraits;

    QAccessible::Role role() const override { return QAccessible::Grouping; }

    bool usesKey(Key key) const override { return isActivation(key) || key == Key::Left || key == Key::Right; }

    void addState(QAccessible::State& state) const override
    {
        const bool open = glob_.getSizeState() == oribund::Glob::eSizeNormal;
        state.expandable = glob_.isMinimisable();
        state.expanded = open;
        state.collapsed = !open;
    }

    void activate() override { glob_.userToggleSizeState(); }
};

class SliderTraits final : public GlobTraits
{
public:
    explicit SliderTraits(oribund::Slider& slider)
        : slider_(slider)
    {
    }

    QAccessible::Role role() const override { return QAccessible::Slider; }

    bool usesKey(Key key) const override { return isNavigation(key); }

    std::optional<Number> number() const override
    {
        return Number{slider_.getValue(), slider_.getMin(), slider_.getMax(), slider_.getStep()};
    }

    void setNumber(double value) override { slider_.userSet(value); }

private:
    oribund::Slider& slider_;
};

class TimeBarTraits final : public PlainTraits
{
public:
    explicit TimeBarTraits(oribund::ThermBase& bar)
        : PlainTraits(QAccessible::Slider, true)
        , bar_(bar)
    {
    }

    bool usesKey(Key key) const override
    {
        return PlainTraits::usesKey(key) || (holdsKeyframes() && key == Key::Space);
    }

    bool usesCommandKey(const oribund::Event& press) const override
    {
        return holdsKeyframes() && oribund::isKeyframeKey(press);
    }

    QString valueText() const override { return toQt(bar_.valueText()); }

    std::optional<Number> number() const override
    {
        const oribund::ThermGeometry shown = bar_.geometry();
        return Number{bar_.getTime(oribund::eExact), shown.start, shown.end, 0.0};
    }

    void setNumber(double value) override
    {
        if (bar_.canInteract())
            bar_.setTime(bar_.constrainTime(value));
    }

private:
    bool holdsKeyframes() const { return dynamic_cast<const oribund::FXThermBase*>(&bar_) != nullptr; }

    oribund::ThermBase& bar_;
};

class DialTraits final : public GlobTraits
{
public:
    explicit DialTraits(oribund::AngleIndicatorWidget& dial)
        : dial_(dial)
    {
    }

    QAccessible::Role role() const override { return QAccessible::Dial; }

    bool usesKey(Key key) const override { return isArrow(key); }

    /** An angle has no bounds: they are given as far out as it has been turned, in whole turns. */
    std::optional<Number> number() const override
    {
        const double angle = dial_.getAngle();
        const double reach = kFullTurn * std::max(1.0, std::ceil(std::abs(angle) / kFullTurn));
        return Number{angle, -reach, reach, 1.0};
    }

    void setNumber(double value) override { dial_.userSet(value); }

    QString valueText() const override { return GlobTraits::valueText() + QChar(0xB0); }

private:
    static constexpr double kFullTurn = 360.0;

    oribund::AngleIndicatorWidget& dial_;
};

} // namespace

GlobTraits::~GlobTraits() = default;

bool GlobTraits::usesCommandKey(const oribund::Event&) const
{
    return false;
}

void GlobTraits::addState(QAccessible::State&) const {}

QString GlobTraits::valueText() const
{
    const auto now = number();
    return now ? toQt(oribund::toWide(oribund::formatNumber(now->value))) : QString();
}

std::optional<GlobTraits::Number> GlobTraits::number() const
{
    return std::nullopt;
}

void GlobTraits::setNumber(double) {}

QString GlobTraits::actionName() const
{
    return {};
}

void GlobTraits::activate() {}

std::unique_ptr<GlobTraits> GlobTraits::of(oribund::Label&)
{
    return std::make_unique<PlainTraits>(QAccessible::StaticText, false);
}

std::unique_ptr<GlobTraits> GlobTraits::of(oribund::Button& button)
{
    return std::make_unique<ButtonTraits>(button);
}

std::unique_ptr<GlobTraits> GlobTraits::of(oribund::Checkbox& checkbox)
{
    return std::make_unique<CheckboxTraits>(checkbox);
}

std::unique_ptr<GlobTraits> GlobTraits::of(oribund::Slider& slider)
{
    return std::make_unique<SliderTraits>(slider);
}

std::unique_ptr<GlobTraits> GlobTraits::of(oribund::DropDownMenuButton& button)
{
    return std::make_unique<MenuButtonTraits>(button);
}

std::unique_ptr<GlobTraits> GlobTraits::of(oribund::Glob& glob)
{
    if (auto* swatch = dynamic_cast<oribund::ColourSwatch*>(&glob))
        return std::make_unique<SwatchTraits>(*swatch);
    if (auto* group = dynamic_cast<oribund::MinimizableGroup*>(&glob))
        return std::make_unique<GroupTraits>(*group);
    if (auto* bar = dynamic_cast<oribund::ThermBase*>(&glob))
        return std::make_unique<TimeBarTraits>(*bar);
    if (auto* dial = dynamic_cast<oribund::AngleIndicatorWidget*>(&glob))
        return std::make_unique<DialTraits>(*dial);
    const bool isPanel = dynamic_cast<oribund::StandardPanel*>(&glob) != nullptr;
    return std::make_unique<PlainTraits>(isPanel ? QAccessible::Grouping : QAccessible::Graphic, !isPanel);
}

} // namespace workbench

#include "tests/skin/SkinSupport.h"

#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/widgets/AngleIndicatorWidget.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/host/toolkit/widgets/Slider.h"

#include <gtest/gtest.h>

#include <QAccessible>

namespace oribund::qt::test
{
namespace
{

using namespace oribund;

QAccessibleInterface* interfaceOf(Glob& glob)
{
    return PanelSurface::showing(glob)->accessibles().of(glob);
}

TEST(Accessibility, EveryControlIsWhatItIsAndIsCalledAsItsParameter)
{
    Stage stage;
    const std::vector<std::pair<Glob*, QAccessible::Role>> expected{
        {stage.add<Button>(0, 0), QAccessible::Button},
        {stage.add<Checkbox>(0, 30), QAccessible::CheckBox},
        {stage.add<Slider>(0, 60), QAccessible::Slider},
        {stage.add<TextBox>(0, 90), QAccessible::EditableText},
        {stage.add<DropDownMenuButton>(0, 120), QAccessible::ComboBox},
        {stage.add<ColourSwatch>(0, 150), QAccessible::ColorChooser},
        {stage.add<AngleIndicatorWidget>(0, 180), QAccessible::Dial},
    };
    for (const auto& [glob, role] : expected) {
        glob->setAccessibleName(L"Saturation & more");
        QAccessibleInterface* accessible = interfaceOf(*glob);
        ASSERT_TRUE(accessible);
        EXPECT_EQ(accessible->role(), role);
        EXPECT_EQ(accessible->text(QAccessible::Name), "Saturation & more") << role;
        EXPECT_TRUE(accessible->state().focusable) << role;
        EXPECT_FALSE(accessible->state().disabled) << role;
        glob->setEnabled(false);
        EXPECT_TRUE(accessible->state().disabled) << role;
    }
    Label::InitArgs label;
    label.text = L"Hue";
    EXPECT_EQ(interfaceOf(*stage.add<Label>(label, 200, 0))->text(QAccessible::Name), "Hue");
}

TEST(Accessibility, ValuesAreReadAndSet)
{
    Stage stage;
    Slider::InitArgs args;
    args.min = -10.0;
    args.max = 10.0;
    args.value = 4.0;
    args.step = 0.5;
    Slider* slider = stage.add<Slider>(args, 0, 0);
    QAccessibleValueInterface* value = interfaceOf(*slider)->valueInterface();
    ASSERT_TRUE(value);
    EXPECT_EQ(value->currentValue(), 4.0);
    EXPECT_EQ(value->minimumValue(), -10.0);
    EXPECT_EQ(value->maximumValue(), 10.0);
    EXPECT_EQ(value->minimumStepSize(), 0.5);
    value->setCurrentValue(7.0);
    EXPECT_EQ(slider->getValue(), 7.0);
    value->setCurrentValue(99.0);
    EXPECT_EQ(slider->getValue(), 10.0);

    EXPECT_EQ(interfaceOf(*slider)->text(QAccessible::Value), "10");

    auto* dial = stage.add<AngleIndicatorWidget>(200, 0);
    dial->setAngle(725.5);
    value = interfaceOf(*dial)->valueInterface();
    ASSERT_TRUE(value);
    EXPECT_GE(value->maximumValue().toDouble(), 725.5);
    EXPECT_EQ(interfaceOf(*dial)->text(QAccessible::Value), QString::fromUtf8("725.5\u00b0"));
    value->setCurrentValue(-90.0);
    EXPECT_EQ(dial->getAngle(), -90.0);

    DropDownMenuButton::InitArgs items;
    items.items = {L"Normal", L"Screen"};
    items.selected = 1;
    QAccessibleInterface* menu = interfaceOf(*stage.add<DropDownMenuButton>(items, 0, 50));
    EXPECT_EQ(menu->text(QAccessible::Value), "Screen");
    EXPECT_EQ(menu->valueInterface(), nullptr);
}

TEST(Accessibility, EndsWithTheGlob)
{
    Stage stage;
    Checkbox* box = stage.add<Checkbox>(0, 0);
    QAccessibleInterface* accessible = interfaceOf(*box);
    box->setEnabled(false);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(box->isChecked());
    stage.panel().destroyWidget(*box);
    EXPECT_FALSE(accessible->isValid());
    EXPECT_EQ(accessible->parent(), nullptr);
    EXPECT_TRUE(accessible->text(QAccessible::Name).isEmpty());
    EXPECT_TRUE(accessible->actionInterface()->actionNames().isEmpty());
}

} // namespace
} // namespace oribund::qt::test

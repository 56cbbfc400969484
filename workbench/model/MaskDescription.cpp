#include "workbench/model/MaskDescription.h"

#include "workbench/model/EffectDescription.h"

#include <numbers>
#include <utility>

namespace workbench
{

namespace
{
// The shape is drawn by the filter "alphaspot", whose numbers run from 0 to 1. It takes half of the sizes, and an angle
// over a little more than a full turn.
constexpr double kPercentOfHalf = 200.0;
constexpr double kTurn = 2.0 * 3.15 * 180.0 / std::numbers::pi;

ParamDescription describe(const char* property, const char* name, ParamKind kind)
{
    ParamDescription param;
    param.property = property;
    param.name = name;
    param.kind = kind;
    return param;
}

ParamDescription number(const char* property, const char* name, const char* drawnBy, double scale, double maximum)
{
    ParamDescription param = describe(property, name, ParamKind::Double);
    param.components = {drawnBy};
    param.unit.push_back('%');
    param.scale = scale;
    param.maximum = maximum;
    param.animatable = true;
    return param;
}

EffectDescription describeMask()
{
    EffectDescription effect;
    effect.service = kMaskService;
    effect.title = "Mask";
    effect.category = "Mask";
    effect.help = "The effect is seen inside the shape only.";
    effect.curated = true;
    effect.unmaskableBecause = "It is a mask itself.";

    ParamDescription shape = describe(mask::kShape, "Shape", ParamKind::TextList);
    shape.items = {{"Rectangle", "0"}, {"Ellipse", "0.4"}, {"Triangle", "0.65"}, {"Diamond", "0.9"}};
    shape.defaultItem = 1;

    ParamDescription centre = describe(mask::kCentre, "Centre", ParamKind::Point);
    centre.components = {"1", "2"};
    centre.defaultPoint = {0.5, 0.5};
    centre.minimum = -1.0; // a shape may lie outside the frame, and be animated into it
    centre.maximum = 2.0;
    centre.animatable = true;

    ParamDescription width = number(mask::kWidth, "Width", "3", kPercentOfHalf, 200.0);
    ParamDescription height = number(mask::kHeight, "Height", "4", kPercentOfHalf, 200.0);
    width.defaultValue = height.defaultValue = 50.0;
    width.minimum = height.minimum = 0.1; // of size 0 the filter leaves what it drew before
    width.help = "Percent of the frame's width.";
    height.help = "Percent of the frame's height.";

    ParamDescription angle = describe(mask::kAngle, "Angle", ParamKind::Angle);
    angle.components = {"5"};
    angle.minimum = -180.0;
    angle.maximum = 180.0;
    angle.scale = kTurn;
    angle.offset = -kTurn / 2.0;
    angle.animatable = true;

    ParamDescription softness = number(mask::kSoftness, "Softness", "6", 100.0, 100.0);

    ParamDescription invert = describe(mask::kInvert, "Invert", ParamKind::Bool);
    invert.help = "The effect is seen outside the shape instead.";

    effect.params = {shape, centre, width, height, angle, softness, invert};
    return effect;
}
} // namespace

std::shared_ptr<const EffectDescription> maskDescription()
{
    static const auto description = std::make_shared<const EffectDescription>(describeMask());
    return description;
}

EffectData newMask(ObjectId id)
{
    EffectData data;
    data.id = id;
    data.service = kMaskService;
    return data;
}

bool isMask(const EffectData& data)
{
    return data.service == kMaskService && data.mask.empty();
}

} // namespace workbench

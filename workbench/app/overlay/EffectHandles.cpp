#include "workbench/app/overlay/EffectHandles.h"

#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/services/TextTable.h"
#include "workbench/app/overlay/MaskShape.h"
#include "workbench/model/MaskDescription.h"

#include <algorithm>
#include <string_view>

namespace workbench
{

using oribund::Angle;
using oribund::EffectInstance;
using oribund::EffectValParam;
using oribund::ListParam;
using oribund::PointUnit;
using oribund::String;
using oribund::Vector2d;

namespace
{
using Kind = PictureHandle::Kind;

/** How far the handle for the angle stands above the shape, in pixels of the view. */
constexpr double kAngleReach = 26.0;

/** The parameters by which an effect keeps a shape, by their names. */
struct ShapeParams {
    std::string_view service;
    const char* shape;
    const char* centre;
    const char* width;
    const char* height;
    const char* angle;
    const char* softness;
    double halves; ///< what makes half of the frame of a size of 1
};

constexpr ShapeParams kShapes[] = {
    {kMaskService, mask::kShape, mask::kCentre, mask::kWidth, mask::kHeight, mask::kAngle, mask::kSoftness,
     1.0 / 200.0},
    {"frei0r.alphaspot", "0", "centre", "3", "4", "5", "6", 1.0 / 100.0},
};
constexpr double kPercent = 100.0; // of the softness

/** An effect that keeps a shape, with typed access to its parameters. */
class ShapeEffect
{
public:
    static std::optional<ShapeEffect> of(const EffectInstance& effect)
    {
        const auto found = std::ranges::find(kShapes, effect.tagTypeId().view(), &ShapeParams::service);
        if (found == std::end(kShapes))
            return {};
        ShapeEffect made(*found);
        made.shape = made.find<ListParam<String>>(effect, found->shape);
        made.centre = made.find<Vector2d>(effect, found->centre);
        made.width = made.find<double>(effect, found->width);
        made.height = made.find<double>(effect, found->height);
        made.angle = made.find<Angle>(effect, found->angle);
        made.softness = made.find<double>(effect, found->softness);
        const bool whole = made.shape && made.centre && made.width && made.height && made.angle && made.softness;
        return whole ? std::optional(made) : std::nullopt;
    }

    MaskShape at(double fxTime, const PictureMapping& mapping) const
    {
        MaskShape result;
        result.kind = static_cast<MaskShape::Kind>(std::clamp(shape->getValue(fxTime).selectedIndex(), 0, 3));
        result.centre = mapping.toFrame(centre->getValue(fxTime));
        result.half = {width->getValue(fxTime) * params_.halves * mapping.frameSize.x,
                       height->getValue(fxTime) * params_.halves * mapping.frameSize.y};
        result.degrees = angle->getValue(fxTime).degrees;
        result.softness = std::clamp(softness->getValue(fxTime) / kPercent, 0.0, 1.0);
        return result;
    }

    double sizeOf(double halfPixels, double framePixels) const { return halfPixels / framePixels / params_.halves; }

    const EffectValParam<ListParam<String>>* shape = nullptr;
    const EffectValParam<Vector2d>* centre = nullptr;
    const EffectValParam<double>* width = nullptr;
    const EffectValParam<double>* height = nullptr;
    const EffectValParam<Angle>* angle = nullptr;
    const EffectValParam<double>* softness = nullptr;

private:
    explicit ShapeEffect(const ShapeParams& params)
        : params_(params)
    {
    }

    template <class P>
    static const EffectValParam<P>* find(const EffectInstance& effect, const char* name)
    {
        for (const auto& param : effect.params())
            if (param->name() == String(name))
                return dynamic_cast<const EffectValParam<P>*>(param.get());
        return nullptr;
    }

    const ShapeParams& params_;
};

Vector2d placeOf(const EffectValParam<Vector2d>& param, const Vector2d& value, const PictureMapping& mapping)
{
    const Vector2d centre{0.5, 0.5};
    return pointUnitOf(param) == PointUnit::FramePixels ? centre + mapping.fromFrame({value.x, value.y}) : value;
}

/** The other way round. */
Vector2d pointAt(const EffectValParam<Vector2d>& param, const Vector2d& place, const PictureMapping& mapping)
{
    if (pointUnitOf(param) != PointUnit::FramePixels)
        return place;
    const PictureMapping::Pixels pixels = mapping.toFrame(place - Vector2d{0.5, 0.5});
    return {pixels.x, pixels.y};
}

/** Collects the handles of one effect, and then those of its mask. */
class Collector
{
public:
    Collector(double fxTime, const PictureMapping& mapping)
        : fxTime_(fxTime)
        , mapping_(mapping)
    {
    }

    void add(const EffectInstance& effect, const oribund::WString& prefix)
    {
        effect_ = &effect;
        prefix_ = prefix;
        addPlaces();
        if (const auto shape = ShapeEffect::of(effect))
            addShape(*shape);
    }

    EffectHandles take() { return std::move(result_); }

private:
    void addPlaces()
    {
        std::vector<Vector2d> corners;
        for (const auto& param : effect_->params()) {
            const auto* const point = dynamic_cast<const EffectValParam<Vector2d>*>(param.get());
            if (!point || pointUnitOf(*point) == PointUnit::None)
                continue;
            corners.push_back(placeOf(*point, point->getValue(fxTime_), mapping_));
            addHandle(Kind::Place, *point, corners.back());
        }
        // Four places are the corners of something, in their order.
        if (corners.size() == 4)
            result_.outlines.push_back({corners});
    }

    void addShape(const ShapeEffect& params)
    {
        const MaskShape shape = params.at(fxTime_, mapping_);
        addOutline(shape.edge(), false);
        if (shape.softness > 0.0)
            addOutline(shape.core(), true);
        const auto put = [&](Kind kind, const oribund::EffectValParamBase& param, const MaskShape::Pixels& own) {
            addHandle(kind, param, mapping_.fromFrame(shape.toFrame(own)));
        };
        put(Kind::Left, *params.width, {-shape.half.x, 0.0});
        put(Kind::Right, *params.width, {shape.half.x, 0.0});
        put(Kind::Top, *params.height, {0.0, -shape.half.y});
        put(Kind::Bottom, *params.height, {0.0, shape.half.y});
        put(Kind::Angle, *params.angle, {0.0, -shape.half.y - kAngleReach * mapping_.frameScale()});
        const auto [from, to] = shape.softnessLine();
        put(Kind::Softness, *params.softness, from + (to - from) * shape.softness);
    }

    void addOutline(const std::vector<MaskShape::Pixels>& points, bool faint)
    {
        EffectHandles::Outline outline{{}, faint};
        for (const MaskShape::Pixels& point : points)
            outline.points.push_back(mapping_.fromFrame(point));
        if (!outline.points.empty())
            result_.outlines.push_back(std::move(outline));
    }

    void addHandle(Kind kind, const oribund::EffectValParamBase& param, const Vector2d& at)
    {
        result_.handles.push_back({kind, effect_->id(), param.id(), at, prefix_ + displayText(param.description())});
    }

    const double fxTime_;
    const PictureMapping& mapping_;
    const EffectInstance* effect_ = nullptr;
    oribund::WString prefix_;
    EffectHandles result_;
};

/** The value of a handle of a shape that is at a place. */
oribund::ParamValue shapeValueAt(Kind kind, const ShapeEffect& params, double fxTime, const MaskShape::Pixels& at,
                                 const PictureMapping& mapping)
{
    const MaskShape shape = params.at(fxTime, mapping);
    const MaskShape::Pixels own = shape.toOwn(at);
    switch (kind) {
    case Kind::Left:
    case Kind::Right:
        return params.sizeOf(std::max(0.0, kind == Kind::Left ? -own.x : own.x), mapping.frameSize.x);
    case Kind::Top:
    case Kind::Bottom:
        return params.sizeOf(std::max(0.0, kind == Kind::Top ? -own.y : own.y), mapping.frameSize.y);
    case Kind::Softness:
        return kPercent * shape.softnessAt(own);
    default:
        return Angle{shape.degreesTowards(at)};
    }
}
} // namespace

EffectHandles handlesOf(const EffectInstance& effect, double fxTime, const PictureMapping& mapping)
{
    Collector collector(fxTime, mapping);
    collector.add(effect, {});
    if (const auto& mask = effect.getMask())
        collector.add(*mask, mask->getName() + L": ");
    return collector.take();
}

std::optional<oribund::ParamValue> valueAt(const PictureHandle& handle, const EffectInstance& effect, double fxTime,
                                           const Vector2d& place, const PictureMapping& mapping)
{
    if (handle.kind == Kind::Place) {
        const auto point = effect.findParamAs<EffectValParam<Vector2d>>(handle.param);
        return point ? std::optional<oribund::ParamValue>(pointAt(*point, place, mapping)) : std::nullopt;
    }
    const auto shape = ShapeEffect::of(effect);
    if (!shape || !effect.findParam(handle.param))
        return {};
    return shapeValueAt(handle.kind, *shape, fxTime, mapping.toFrame(place), mapping);
}

Vector2d stepOf(const EffectInstance& effect, const PictureHandle& handle)
{
    if (const auto point = effect.findParamAs<EffectValParam<Vector2d>>(handle.param))
        return {oribund::NumberDisplay::of(*point, 0).step, oribund::NumberDisplay::of(*point, 1).step};
    if (const auto angle = effect.findParamAs<EffectValParam<Angle>>(handle.param))
        return {oribund::NumberDisplay::of(*angle).step, 0.0};
    const auto number = effect.findParamAs<EffectValParam<double>>(handle.param);
    return {number ? oribund::NumberDisplay::of(*number).step : 0.0, 0.0};
}

} // namespace workbench

#include "workbench/app/overlay/PictureHandles.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "workbench/app/overlay/HandleGlob.h"

#include <algorithm>

namespace workbench
{

using namespace oribund;

namespace
{
constexpr Colour kLine{1.0, 1.0, 1.0, 0.9};
constexpr Colour kShadow{0.0, 0.0, 0.0, 0.55};
constexpr double kFaintness = 0.45;

bool areSame(const std::vector<HandleGlob*>& shown, const std::vector<PictureHandle>& wanted)
{
    return std::ranges::equal(
        shown, wanted, [](const HandleGlob* one, const PictureHandle& other) { return one->handle().isSame(other); });
}
} // namespace

PictureHandles::PictureHandles(const InitArgs& args)
    : Glob(args)
    , FXVobClient(FXViewHandle())
{
}

PictureHandles::~PictureHandles() = default;

void PictureHandles::showEffect(const FXViewHandle& effect)
{
    setViewHandle(effect);
    refresh();
}

void PictureHandles::setMapping(const PictureMapping& mapping)
{
    if (mapping == mapping_)
        return;
    mapping_ = mapping;
    refresh();
}

std::vector<HandleGlob*> PictureHandles::handles() const
{
    std::vector<Glob*> children;
    getChildren(children);
    std::vector<HandleGlob*> found;
    for (Glob* const child : children)
        found.push_back(static_cast<HandleGlob*>(child));
    return found;
}

bool PictureHandles::hitTest(const XY<int>& local) const
{
    const auto all = handles();
    return std::ranges::any_of(all, [&](const HandleGlob* one) { return one->box().contains(local); });
}

void PictureHandles::resize(double width, double height)
{
    Glob::resize(width, height);
    refresh();
}

void PictureHandles::handleFXModifications(const ChangeDescription& change)
{
    const bool isAnother = change.effect.valid() && !change.effect.isWildcard() &&
                           (change.flags & ChangeDescription::kToldByParams) != 0 && getEffectPtr() &&
                           !EffectInstance::findWithin(getEffectPtr(), change.effect);
    if (!isAnother && !(change.flags & ChangeDescription::kSelectionOnly))
        refresh();
}

EffectHandles PictureHandles::read() const
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!effect || !effect->isEnabled() || mapping_.isEmpty())
        return {};
    const double time = getNormalisedCurrentTime();
    // The first frame after the effect is at 1.
    if (time < 0.0 || time >= 1.0)
        return {};
    return handlesOf(*effect, clampNormalisedTime(time), mapping_);
}

void PictureHandles::refresh()
{
    const EffectHandles wanted = read();
    if (!areSame(handles(), wanted.handles))
        rebuild(wanted.handles);
    const std::vector<HandleGlob*> shown = handles();
    for (std::size_t i = 0; i < shown.size(); ++i)
        shown[i]->place(wanted.handles[i], mapping_, localBox());
    if (wanted.outlines != outlines_) {
        outlines_ = wanted.outlines;
        redraw();
    }
}

void PictureHandles::rebuild(const std::vector<PictureHandle>& wanted)
{
    const std::optional<PictureHandle> before = focused();
    for (HandleGlob* const handle : handles())
        removeChild(*handle);
    for (const PictureHandle& handle : wanted) {
        auto& made = addChild(
            std::make_unique<HandleGlob>(InitArgs(0, 0, canvas()), FXViewHandle(getFXVob(), handle.effect), handle));
        if (before && before->isSame(handle))
            made.takeFocus();
    }
}

std::optional<PictureHandle> PictureHandles::focused() const
{
    const std::vector<HandleGlob*> all = handles();
    const auto found = std::ranges::find_if(all, [](const HandleGlob* one) { return one->hasFocus(); });
    return found == all.end() ? std::nullopt : std::optional((*found)->handle());
}

void PictureHandles::noteKeyboard()
{
    noted_ = focused();
}

void PictureHandles::takeKeyboardBack()
{
    for (HandleGlob* const handle : handles())
        if (noted_ && noted_->isSame(handle->handle())) {
            handle->takeFocus();
            return;
        }
}

void PictureHandles::draw(CanvasRenderer& renderer)
{
    const ClipGuard clip(renderer, CanvasRenderer::toDouble(localBox()));
    for (const EffectHandles::Outline& outline : outlines_) {
        std::vector<XY<double>> points;
        for (const Vector2d& point : outline.points)
            points.push_back(mapping_.toView(point));
        const double strength = outline.faint ? kFaintness : 1.0;
        renderer.polygon(points, CanvasRenderer::kNone, kShadow.withAlpha(kShadow.a * strength), 3.0);
        renderer.polygon(points, CanvasRenderer::kNone, kLine.withAlpha(kLine.a * strength), 1.25);
    }
}

} // namespace workbench

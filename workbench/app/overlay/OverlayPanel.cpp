#include "workbench/app/overlay/OverlayPanel.h"

#include "workbench/app/overlay/PickArea.h"
#include "workbench/app/overlay/PictureHandles.h"

#include <memory>
#include <utility>

namespace workbench
{

using namespace oribund;

template <class Layer>
Layer& OverlayPanel::add()
{
    auto made = std::make_unique<Layer>(GlobCreationInfo(1, 1, canvas()));
    Layer& layer = *made;
    addChild(std::move(made));
    return layer;
}

OverlayPanel::OverlayPanel(const InitArgs& args)
    : Glob(args)
    , handles_(add<PictureHandles>())
    , pickArea_(add<PickArea>())
{
    pickArea_.setVisible(false);
}

void OverlayPanel::setMapping(const PictureMapping& mapping)
{
    handles_.setMapping(mapping);
    pickArea_.setMapping(mapping);
}

bool OverlayPanel::hitTest(const XY<int>& local) const
{
    return (pickArea_.isVisible() && pickArea_.hitTest(local)) || (handles_.isVisible() && handles_.hitTest(local));
}

void OverlayPanel::resize(double width, double height)
{
    Glob::resize(width, height);
    handles_.resize(getSize());
    pickArea_.resize(getSize());
}

} // namespace workbench

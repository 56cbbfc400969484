#pragma once

#include "oribund/host/toolkit/core/Glob.h"

namespace workbench
{

class PickArea;
class PictureHandles;
struct PictureMapping;

/** All that lies over a viewer's picture: the handles and, while something is picked, the area that takes the pointer.
 */
class OverlayPanel final : public oribund::Glob
{
public:
    explicit OverlayPanel(const InitArgs& args);

    PictureHandles& handles() { return handles_; }

    /** Hidden until something is to be picked. */
    PickArea& pickArea() { return pickArea_; }

    /** Where the frame is seen. */
    void setMapping(const PictureMapping& mapping);

    /** Only where one of them is: the picture stays free for the pointer. */
    bool hitTest(const oribund::XY<int>& local) const override;
    void resize(double width, double height) override;
    using oribund::Glob::resize;

private:
    template <class Layer>
    Layer& add();

    PictureHandles& handles_;
    PickArea& pickArea_;
};

} // namespace workbench

#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

namespace oribund
{

/** A panel that is as high as the widgets in it need, and follows them when they grow, shrink, come or go. */
class ORIBUND_API WidgetGroup : public StandardPanel
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
    };

    explicit WidgetGroup(const InitArgs& args);

    /** Only the width is taken; the height is that of the contents, at least the minimum size's. */
    void resize(double width, double height) override;
    using Glob::resize;

    /** The height with all that is shown now, at the present width. */
    virtual int calcHeight() const;

protected:
    void contentsChanged() override;
};

} // namespace oribund

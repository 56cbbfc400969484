#pragma once

#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/toolkit/core/Glob.h"
#include "workbench/app/overlay/EffectHandles.h"

#include <optional>
#include <vector>

namespace workbench
{

class HandleGlob;

/**
 * Lies over a viewer's picture: the outlines and handles of one effect and its mask at the current time. The picture
 * itself stays free for the pointer. Nothing is shown while the time is outside the effect or the effect is switched
 * off.
 */
class PictureHandles final : public oribund::Glob, private oribund::FXVobClient
{
public:
    explicit PictureHandles(const InitArgs& args);
    ~PictureHandles() override;

    /** A default-constructed one for no effect. */
    void showEffect(const oribund::FXViewHandle& effect);

    /** Where the frame is seen, in coordinates of this; an empty area for nowhere. */
    void setMapping(const PictureMapping& mapping);

    const PictureMapping& mapping() const { return mapping_; }

    /** In the order of the Tab key. */
    std::vector<HandleGlob*> handles() const;

    /** Before it is hidden for a while: which handle has the keyboard. */
    void noteKeyboard();

    /** That one gets the keyboard again, if it is still there. */
    void takeKeyboardBack();

    bool hitTest(const oribund::XY<int>& local) const override;
    void resize(double width, double height) override;
    using oribund::Glob::resize;
    void draw(oribund::CanvasRenderer& renderer) override;

protected:
    void handleFXModifications(const ChangeDescription& change) override;

private:
    EffectHandles read() const;
    void refresh();
    std::optional<PictureHandle> focused() const;
    void rebuild(const std::vector<PictureHandle>& wanted);

    PictureMapping mapping_;
    std::vector<EffectHandles::Outline> outlines_;
    std::optional<PictureHandle> noted_;
};

} // namespace workbench

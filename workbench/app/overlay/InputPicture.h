#pragma once

#include "oribund/host/base/IdStamp.h"
#include "workbench/engine/client/PictureService.h"
#include "workbench/model/host/ModelVob.h"
#include "workbench/model/projection/EffectInput.h"

#include <functional>
#include <optional>

namespace workbench
{

/**
 * The picture that one effect gets, at the viewer's current time: made by a worker of its own, not by the one that
 * shows. Of several questions only the latest is answered. User-interface thread only.
 */
class InputPicture
{
public:
    using Done = std::function<void(const FrameImagePtr&)>;

    /** Both outlive it. `done` is called with each picture, null for none. */
    InputPicture(ModelVob& vob, PictureService& pictures, Done done);

    /** The effect's input now, no larger than that. Nothing happens where that is the same as was asked for last. */
    void ask(const oribund::IdStamp& effect, int maxWidth, int maxHeight);

    /** Whether one is on its way. */
    bool isAsked() const { return ticket_ != nullptr; }

private:
    ModelVob& vob_;
    PictureService& pictures_;
    const Done done_;
    std::optional<EffectInput> input_; ///< that was asked for last
    PictureService::Ticket ticket_;
};

} // namespace workbench

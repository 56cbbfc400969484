#include "workbench/app/overlay/InputPicture.h"

#include "workbench/model/Ids.h"
#include "workbench/model/projection/Projector.h"

#include <utility>

namespace workbench
{

InputPicture::InputPicture(ModelVob& vob, PictureService& pictures, Done done)
    : vob_(vob)
    , pictures_(pictures)
    , done_(std::move(done))
{
}

void InputPicture::ask(const oribund::IdStamp& effect, int maxWidth, int maxHeight)
{
    const EditModelPtr& edit = vob_.editModel();
    std::optional<EffectInput> input;
    if (edit)
        input = inputOf(project(*edit), filterId(objectOf(effect)), vob_.currentFrame());
    if (input == input_)
        return;
    input_ = std::move(input);
    ticket_.reset();
    if (!input_)
        return done_(nullptr);
    ticket_ = pictures_.request(
        request::MakeThumbnail{input_->edit, input_->frame, maxWidth, maxHeight}, PictureService::Priority::Visible,
        [this](const Made& made) {
            const FrameImagePtr picture = made.picture;
            const auto kept = std::exchange(ticket_, nullptr); // until this is over
            done_(picture);
        },
        PictureService::Keeping::None);
}

} // namespace workbench

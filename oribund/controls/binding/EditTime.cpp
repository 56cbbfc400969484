#include "oribund/controls/binding/EditTime.h"

#include "oribund/host/edit/Vob.h"

#include <cmath>

namespace oribund
{

double frameRound(double editTime, const EditPtr& edit)
{
    if (!edit)
        return editTime;
    const double frame = edit->getCelResolution();
    return std::round(editTime / frame) * frame;
}

void beginScrub(Vob* vob, PlayState state)
{
    iScrubControl* const scrub = vob ? vob->getScrubControl() : nullptr;
    if (!scrub)
        return;
    scrub->setPlayState(state);
    const unsigned sound = scrub->scrubsWithSound() ? iScrubControl::kWithSound : 0;
    scrub->setChangeFlags(scrub->getChangeFlags() | iScrubControl::kScrubbing | sound);
}

void endScrub(Vob* vob)
{
    iScrubControl* const scrub = vob ? vob->getScrubControl() : nullptr;
    if (!scrub)
        return;
    scrub->setPlayState(PlayState::Idle);
    scrub->setChangeFlags(scrub->getChangeFlags() & ~(iScrubControl::kScrubbing | iScrubControl::kWithSound));
}

} // namespace oribund

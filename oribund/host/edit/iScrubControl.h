#pragma once

namespace oribund
{

/** How a viewer moves through its edit. The numbers are part of the contract: hosts pass them on. */
enum class PlayState : int {
    Idle = 0,  ///< changes of the time are shown at leisure
    Held = 1,  ///< the time is dragged and every frame passed is shown
    Scrub = 2, ///< the time is dragged and the latest frame counts
};

/** How a viewer is told that the current time is being dragged, so that it can show frames and sound as they pass. */
class iScrubControl
{
public:
    /** Bits of the change flags. */
    static constexpr unsigned kScrubbing = 0x10;
    static constexpr unsigned kWithSound = 0x80;

    virtual void setPlayState(PlayState state) = 0;

    virtual unsigned getChangeFlags() const = 0;
    virtual void setChangeFlags(unsigned flags) = 0;

    /** Whether the user wants to hear the sound while dragging. */
    virtual bool scrubsWithSound() const = 0;

protected:
    ~iScrubControl() = default;
};

} // namespace oribund

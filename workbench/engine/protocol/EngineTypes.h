#pragma once

#include "workbench/engine/protocol/FrameImage.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace workbench
{

/** Something that went wrong while an edit was prepared or rendered. The engine goes on. */
struct EngineProblem {
    enum class Kind {
        MediaMissing,    ///< a clip cannot be opened, or must not be; a dark red picture stands in for it
        EffectSilenced,  ///< an effect's sound is none that can be played; silence stands in for it
        EffectMissing,   ///< an effect, a transition or a setting of one is not there or not allowed; left out
        EffectHung,      ///< an effect did not come back in time; left out from now on
        EffectCrashed,   ///< an effect ended the worker; left out from now on
        MediaHung,       ///< no frame in time, and no effect was at work
        EngineEnded,     ///< the worker ended, and no effect was at work; or there can be none
        SoundUnavailable ///< playing without sound
    };

    Kind kind = Kind::MediaMissing;
    std::string message;              ///< for a person
    std::string subject;              ///< id of the clip or the effect in the projection; empty when there is none
    std::vector<std::string> effects; ///< of what hung or crashed: services of all effects at work on that frame

    bool operator==(const EngineProblem&) const = default;
};

/** An effect that is left out of the picture because it ended a worker or held it up. */
struct LeftOutEffect {
    std::string id; ///< in the projection
    bool hung = false;
    bool staysOff = false; ///< other settings do not bring it back

    bool operator==(const LeftOutEffect&) const = default;
};

struct EngineOptions {
    std::chrono::milliseconds frameTimeout{2000}; ///< after which a frame is taken not to come
    std::chrono::milliseconds loadTimeout{15000}; ///< the same for opening the media of an edit
    bool sound = true;                            ///< false: plays silently, at the right speed

    bool operator==(const EngineOptions&) const = default;
};

/** Called on the engine's thread, one at a time. They hand on and return; they do not call the engine and wait. */
struct EngineCallbacks {
    std::function<void(FrameImagePtr)> frame;
    std::function<void(int frame)> position;   ///< while playing
    std::function<void(bool playing)> playing; ///< playing began or ended, by request or at the end of the edit
    std::function<void(const EngineProblem&)> problem;
};

} // namespace workbench

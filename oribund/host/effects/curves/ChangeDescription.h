#pragma once

#include "oribund/host/notify/ChangeKind.h"

namespace oribund
{

/** Why a graph changes. A batch is opened and closed with one; the numbers that hosts exchange are fixed. */
enum class BatchReason : int {
    None = 0,
    SetValue = 1,
    Move = 2,
    Remove = 3,
    EndAddKeyframe = 4, ///< closes a batch that AddKeyframe opened
    Reshape = 5,        ///< types and tangents
    AddKeyframe = 6,
    Replace = 7, ///< all keyframes at once
    Restore = 8, ///< undo, redo, or a cancelled gesture
};

/** The channels of a graph as bits: bit 0 is the first one. */
inline constexpr unsigned kAllChannels = ~0u;

/** What a graph of type `G` tells its observers: once for each change, or once for a whole batch at its end. */
template <class G>
struct ChangeDescription {
    G* graph = nullptr;
    unsigned channels = 0;                  ///< those that changed
    BatchReason reason = BatchReason::None; ///< of a batch: the reason with which it was closed
    ChangeKind kind = ChangeKind::Single;   ///< of a batch: the kind with which it was opened
};

} // namespace oribund

#pragma once

#include "oribund/host/base/IdStamp.h"

namespace oribund
{

/** What is about to be done to effects, as the host is told before it keeps a backup. */
struct EffectModification {
    /** The numbers are part of the contract: hosts pass them on. */
    enum class Type : int {
        KeyframesMoved = 8,
    };

    Type type = Type::KeyframesMoved;
    int severity = 0;
    IdStamp effect = IdStamp::wildcard(); ///< IdStamp::wildcard() for all
    IdStamp param;                        ///< not valid for all
};

/** What a backup is kept for. */
enum class BackupKind : int {
    Undo = 1,
};

} // namespace oribund

#include "workbench/model/undo/EditChange.h"

namespace workbench
{

using oribund::EditModification;
using Type = oribund::EditModification::Type;

namespace
{
EditModification concerning(Type type, ObjectId object)
{
    EditModification modification;
    modification.type = type;
    modification.object = stampOf(object);
    return modification;
}
} // namespace

EditModification modificationOf(const TrackRecord& record)
{
    return concerning(Type::Tracks, record.data.id);
}

EditModification modificationOf(const SegmentRecord& record)
{
    return concerning(Type::Segments, record.data.id);
}

EditModification modificationOf(const EffectRecord& record)
{
    return concerning(Type::EffectGraph, record.data.id);
}

EditModification modificationOf(const MaskRecord& record)
{
    return concerning(Type::EffectGraph, record.effect);
}

EditModification modificationOf(const TransitionRecord& record)
{
    return concerning(Type::Transitions, record.data.id);
}

EditModification modificationOf(const MediaData& media)
{
    return concerning(Type::Segments, media.id);
}

EditModification modificationOf(const oribund::Cue& cue)
{
    return concerning(Type::Cues, objectOf(cue.id));
}

EditModification modificationOf(const Placement& placement)
{
    return concerning(Type::Segments, placement.segment);
}

EditModification modificationOf(const SegmentLink& link)
{
    return concerning(Type::Segments, link.segment);
}

EditModification modificationOf(const EffectState& state)
{
    return concerning(Type::EffectDetails, state.effect);
}

EditModification modificationOf(const EffectName& name)
{
    return concerning(Type::EffectDetails, name.effect);
}

EditModification modificationOf(const ParamRecord& record)
{
    return concerning(Type::EffectContent, record.effect);
}

EditModification modificationOf(const TrackState& state)
{
    return concerning(Type::Tracks, state.track);
}

} // namespace workbench

#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/LightweightString.h"

#include <cstddef>
#include <vector>

namespace oribund
{

/** A mark that the user has put on an edit's timeline. A plain value; an empty cue has no id. */
struct ORIBUND_API Cue {
    /** Flag: the cue is shown, and takes part in searches for the nearest one. */
    static constexpr unsigned kVisible = 4;

    IdStamp id;
    double time = 0.0; ///< edit time, seconds
    WString name;
    WString description;
    Colour colour;
    unsigned flags = kVisible;

    bool valid() const { return id.valid(); }

    bool operator==(const Cue&) const = default;
};

/** The cues of an edit, in ascending time; cues of equal time stay in the order in which they were added. */
class ORIBUND_API CueList
{
public:
    /** Adds the cue where its time puts it, and returns its index. */
    std::size_t add(const Cue& cue);

    /** Removes the cue of that id; false when there is none. */
    bool remove(const IdStamp& id);

    /** Null when there is none. Valid until the list changes. */
    const Cue* find(const IdStamp& id) const;

    bool empty() const { return cues_.empty(); }

    std::size_t size() const { return cues_.size(); }

    const Cue& operator[](std::size_t index) const { return cues_[index]; }

    auto begin() const { return cues_.begin(); }

    auto end() const { return cues_.end(); }

    bool operator==(const CueList&) const = default;

private:
    std::vector<Cue> cues_;
};

} // namespace oribund

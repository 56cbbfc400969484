#include "oribund/host/edit/Cue.h"

#include <algorithm>

namespace oribund
{

std::size_t CueList::add(const Cue& cue)
{
    const auto after = std::upper_bound(cues_.begin(), cues_.end(), cue.time,
                                        [](double editTime, const Cue& c) { return editTime < c.time; });
    const auto added = cues_.insert(after, cue);
    return static_cast<std::size_t>(added - cues_.begin());
}

bool CueList::remove(const IdStamp& id)
{
    return std::erase_if(cues_, [&id](const Cue& cue) { return cue.id == id; }) > 0;
}

const Cue* CueList::find(const IdStamp& id) const
{
    const auto found = std::find_if(cues_.begin(), cues_.end(), [&id](const Cue& cue) { return cue.id == id; });
    return found == cues_.end() ? nullptr : &*found;
}

} // namespace oribund

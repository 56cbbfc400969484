#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"

#include <vector>

namespace oribund
{

/** What has to be drawn again: a few boxes. A little more may be in them than was added, never less. */
class ORIBUND_API DirtyRegion
{
public:
    /** An empty box adds nothing. */
    void add(const Kt::Box<int>& box);

    void clear() { boxes_.clear(); }

    bool empty() const { return boxes_.empty(); }

    const std::vector<Kt::Box<int>>& boxes() const { return boxes_; }

    /** The box around all. */
    Kt::Box<int> bounds() const;

private:
    std::vector<Kt::Box<int>> boxes_;
};

} // namespace oribund

#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/SharedList.h"

#include <span>
#include <utility>
#include <vector>

namespace oribund
{

/** The value of a parameter that says which of an effect's video inputs is used. Copies share the names. */
class ORIBUND_API VideoInputParam
{
public:
    /** No inputs, none selected. */
    VideoInputParam() = default;

    /** An index outside the names selects none. */
    explicit VideoInputParam(std::vector<WString> names, int selected = 0)
        : names_(std::move(names))
    {
        select(selected);
    }

    /** What a person reads for each input. */
    std::span<const WString> inputNames() const noexcept { return names_.view(); }

    int size() const noexcept { return names_.size(); }

    /** -1 when no input is selected. */
    int selectedIndex() const noexcept { return selected_; }

    /** False, and nothing changed, when there is no such input. */
    bool select(int index) noexcept
    {
        if (!names_.at(index))
            return false;
        selected_ = index;
        return true;
    }

    friend bool operator==(const VideoInputParam& a, const VideoInputParam& b)
    {
        return a.selected_ == b.selected_ && a.names_ == b.names_;
    }

private:
    SharedList<WString> names_;
    int selected_ = -1;
};

} // namespace oribund

#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/entries/ScrubDrag.h"
#include "oribund/host/toolkit/widgets/Label.h"

#include <memory>

namespace oribund
{

class NumericEntry;

/**
 * The name of a number beside its entry, and a larger place to take hold of it: a drag to the side changes the number,
 * a click goes to typing it, a double click resets it. Without an entry, or when that is gone, a plain label.
 */
class ORIBUND_API ScrubLabel : public Label
{
public:
    explicit ScrubLabel(const InitArgs& args);
    ~ScrubLabel() override;

    /** Does not own it; null for none. */
    void setEntry(NumericEntry* entry);

    bool usesKey(const Event& press) const override;
    MouseCursor contextCursor(const XY<int>& local) const override;

protected:
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    GlobRef<NumericEntry> entry_;
    std::unique_ptr<ScrubDrag> drag_; ///< of the last press
};

} // namespace oribund

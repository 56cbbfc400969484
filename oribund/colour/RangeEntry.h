#pragma once

#include "oribund/host/toolkit/entries/NumericEntry.h"

namespace oribund
{

class TolerantRangeEditor;

/**
 * The entry in which the number of one handle is typed, over the strip and only while it has the keyboard. Enter and
 * Escape give the keyboard back to the strip, Tab goes on to the next handle.
 */
class RangeEntry final : public NumericEntry
{
public:
    RangeEntry(const InitArgs& args, TolerantRangeEditor& editor);
    ~RangeEntry() override;

    /** Shows the number of a component and takes the keyboard. */
    void open(std::size_t component);

    bool usesKey(const Event& press) const override;

protected:
    bool handleKeyEvent(const Event& event) override;
    void handleFocusEvent(bool gained) override;

private:
    class ComponentAdaptor;

    bool goesOn(const Event& press) const;

    TolerantRangeEditor& editor_;
    std::size_t component_ = 0;
};

} // namespace oribund

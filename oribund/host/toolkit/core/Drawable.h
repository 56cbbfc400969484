#pragma once

#include "oribund/host/base/Export.h"

#include <cstdint>

namespace oribund
{

/**
 * Something that can be out of date on the screen.
 *
 * Redraws can be held off for the length of an edit, so that its many notifications cause one repaint of each thing
 * they touch. The count is one for the whole process. User-interface thread only.
 */
class ORIBUND_API Drawable
{
public:
    Drawable() = default;
    virtual ~Drawable();

    Drawable(const Drawable&) = delete;
    Drawable& operator=(const Drawable&) = delete;

    /** Holds repaints off until the matching enableRedraws(); calls nest. */
    static void disableRedraws();

    /** The outermost call repaints what asked for it meanwhile, each once. One call too many does nothing. */
    static void enableRedraws();

    static bool redrawsEnabled();

protected:
    /** What has changed, as bits of the deriving class; repaints now, or remembers it while redraws are held off. */
    void requestRedraw(unsigned changes);

    /** Brings the screen up to date. `changes` are all the bits requested since the last time. */
    virtual void performRedraw(unsigned changes) = 0;

private:
    static void flush();

    static constexpr std::uint32_t kNotPending = static_cast<std::uint32_t>(-1);
    unsigned pendingChanges_ = 0;
    std::uint32_t pendingIndex_ = kNotPending;
};

/** Holds redraws off for the length of a scope. */
class RedrawHold
{
public:
    RedrawHold() { Drawable::disableRedraws(); }

    ~RedrawHold() { Drawable::enableRedraws(); }

    RedrawHold(const RedrawHold&) = delete;
    RedrawHold& operator=(const RedrawHold&) = delete;
};

} // namespace oribund

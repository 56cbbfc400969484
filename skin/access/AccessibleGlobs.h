#pragma once

#include "skin/Export.h"

#include <map>
#include <utility>

class QAccessibleInterface;

namespace oribund
{
class Glob;
}

namespace oribund::qt
{

class GlobAccessible;
class PanelSurface;

/**
 * What screen readers know of a surface: each glob of its tree, and each part that a glob tells apart, stands for one
 * child without a widget. Nothing is made before it is asked for. Belongs to the surface.
 */
class ORIBUND_QT_API AccessibleGlobs
{
public:
    explicit AccessibleGlobs(PanelSurface& surface);
    ~AccessibleGlobs();

    AccessibleGlobs(const AccessibleGlobs&) = delete;
    AccessibleGlobs& operator=(const AccessibleGlobs&) = delete;

    PanelSurface& surface() const { return surface_; }

    /** Of the glob or, where that has one of this number, of its part. Owned by Qt. */
    QAccessibleInterface* of(oribund::Glob& glob, int part);
    QAccessibleInterface* of(oribund::Glob& glob);

    /** What has the keyboard; null when nothing has. */
    QAccessibleInterface* focused();

    /** Tells what is another about a glob, as bits of GlobChange. */
    void tellChange(oribund::Glob& glob, unsigned changes);

    /** Tells where the keyboard is. */
    void tellFocus();

private:
    void forgetGone();

    PanelSurface& surface_;
    std::map<std::pair<const oribund::Glob*, int>, GlobAccessible*> known_;
    std::size_t forgetAt_ = 64;
    QAccessibleInterface* toldFocus_ = nullptr; ///< compared only
};

} // namespace oribund::qt

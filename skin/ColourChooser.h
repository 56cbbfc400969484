#pragma once

#include "skin/access/GlobFollower.h"

#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"

#include <QColorDialog>

namespace oribund::qt
{

/**
 * The chooser of a swatch: a window that leaves the rest of the program usable, so that the picture can be watched
 * while colours are tried out. It deletes itself when it is closed, and goes with the swatch, or when the swatch gives
 * the choice up.
 */
class ColourChooser final : public QColorDialog, public GlobFollower
{
public:
    /** `surface` is what shows the swatch. Returns at once. */
    static ColourChooser* open(oribund::ColourSwatch& swatch, QWidget& surface);

    void followGlob() override;

protected:
    void done(int result) override;

private:
    ColourChooser(oribund::ColourSwatch& swatch, QWidget& surface);

    oribund::GlobRef<oribund::ColourSwatch> swatch_;
};

} // namespace oribund::qt

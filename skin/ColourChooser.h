#pragma once

#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"

#include <QColorDialog>

namespace workbench
{

/**
 * The chooser of a swatch: a window that leaves the rest of the program usable, so that the picture can be watched
 * while colours are tried out. It deletes itself when it is closed, and goes with the swatch's widget.
 */
class ColourChooser final : public QColorDialog
{
public:
    /** Brings the swatch's chooser to the front, or makes it; `widget` is what shows the swatch. */
    static ColourChooser* open(oribund::ColourSwatch& swatch, QWidget& widget);

protected:
    void done(int result) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ColourChooser(oribund::ColourSwatch& swatch, QWidget& widget);

    oribund::GlobRef<oribund::ColourSwatch> swatch_;
};

} // namespace workbench

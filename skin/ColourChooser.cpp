#include "skin/ColourChooser.h"

#include "skin/QtConversions.h"

namespace oribund::qt
{

ColourChooser* ColourChooser::open(oribund::ColourSwatch& swatch, QWidget& surface)
{
    auto* chooser = new ColourChooser(swatch, surface);
    chooser->show();
    return chooser;
}

ColourChooser::ColourChooser(oribund::ColourSwatch& swatch, QWidget& surface)
    : QColorDialog(&surface)
    , swatch_(&swatch)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    setOption(DontUseNativeDialog);
    setOption(ShowAlphaChannel, swatch.hasAlpha());
    setWindowTitle(toDisplay(swatch.accessibleName()));
    setCurrentColor(toQt(swatch.getColour()));
    connect(this, &QColorDialog::currentColorChanged, this, [this](const QColor& colour) {
        if (swatch_)
            swatch_->userChoose(fromQt(colour));
    });
}

void ColourChooser::followGlob()
{
    if (isVisible() && !(swatch_ && swatch_->isShown() && swatch_->isChooserOpen()))
        reject();
}

void ColourChooser::done(int result)
{
    const auto swatch = swatch_;
    swatch_.reset(); // closing sends no more colours
    QColorDialog::done(result);
    if (!swatch)
        return;
    if (result == Accepted)
        swatch->userAccept();
    else
        swatch->userCancel();
}

} // namespace oribund::qt

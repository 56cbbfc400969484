#include "skin/ColourChooser.h"

#include "skin/QtConversions.h"

#include <QKeyEvent>

namespace workbench
{

ColourChooser* ColourChooser::open(oribund::ColourSwatch& swatch, QWidget& widget)
{
    for (QObject* child : widget.children()) {
        auto* chooser = dynamic_cast<ColourChooser*>(child);
        if (chooser && chooser->isVisible()) {
            chooser->raise();
            chooser->activateWindow();
            return chooser;
        }
    }
    auto* chooser = new ColourChooser(swatch, widget);
    chooser->show();
    return chooser;
}

ColourChooser::ColourChooser(oribund::ColourSwatch& swatch, QWidget& widget)
    : QColorDialog(&widget)
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
    widget.installEventFilter(this);
}

bool ColourChooser::eventFilter(QObject* watched, QEvent* event)
{
    // Escape gives up the choice from the swatch's window as from this one.
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        reject();
        return true;
    }
    return QColorDialog::eventFilter(watched, event);
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

} // namespace workbench

#pragma once

#include <QObject>
#include <QRect>

class QWidget;

namespace workbench
{

/** Opens colour choosers where they leave the picture free: one chooses a colour by what it does there. */
class DialogPlace final : public QObject
{
public:
    /** `picture` outlives it. Installed on the application. */
    explicit DialogPlace(const QWidget& picture, QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /** Where something of that size hides least of the picture: as near to `around` as it can be on the screen. */
    static QPoint placeFor(const QSize& size, const QRect& around, const QRect& picture, const QRect& screen);

private:
    const QWidget& picture_;
};

} // namespace workbench

#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/Control.h"
#include "oribund/host/toolkit/EditSeries.h"

namespace oribund
{

class ColourSwatch;

/** A colour that the user has picked. */
struct ColourSwatchEvent {
    /** Valid when the call begins. */
    ColourSwatch* swatch = nullptr;
    Colour colour;
    ChangeKind kind = ChangeKind::Single;
};

/**
 * A field of one colour; a click opens the skin's colour chooser. All that is tried out in the chooser is one series of
 * edits, which is given up when the chooser is cancelled. A colour set meanwhile is shown when the chooser is closed.
 */
class ORIBUND_API ColourSwatch : public Control
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        Colour colour;
        /** Whether the opacity is shown and can be chosen; if not it stays as it is. */
        bool hasAlpha = false;
    };

    explicit ColourSwatch(const InitArgs& args);

    void setColour(const Colour& colour, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    const Colour& getColour() const { return colour_; }

    bool hasAlpha() const { return hasAlpha_; }

    bool isChooserOpen() const { return series_.isOpen(); }

    Notifier<ColourSwatchEvent>& edits() { return edits_; }

    /** The user wants to choose a colour. */
    void userClick();
    /** The user tries out a colour in the open chooser. */
    void userChoose(const Colour& choice);
    /** The chooser is closed and its last colour stands. */
    void userAccept();
    /** The chooser is closed and nothing is to have happened. */
    void userCancel();

    void draw(CanvasRenderer& renderer) override;

protected:
    /** Makes an edit; false when it is refused. As it stands it tells edits(). May destroy the swatch. */
    virtual bool handleEdit(const Colour& colour, ChangeKind kind);

    /** The chooser was closed after at least one edit. */
    virtual void handleSeriesEnd();

    /** As handleSeriesEnd(), but cancelled; as it stands it asks for the colour that it began with. */
    virtual void handleSeriesCancel(const Colour& original);

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    void show(const Colour& colour);
    void finish(bool cancelled);

    Colour colour_;
    bool hasAlpha_;
    EditSeries<Colour> series_;
    Notifier<ColourSwatchEvent> edits_;
};

} // namespace oribund

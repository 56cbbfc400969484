#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/widgets/SeriesControl.h"

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
class ORIBUND_API ColourSwatch : public SeriesControl<Colour, ClickControl>
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

    const Colour& getColour() const { return shown(); }

    bool hasAlpha() const { return hasAlpha_; }

    bool isChooserOpen() const { return inSeries(); }

    Notifier<ColourSwatchEvent>& edits() { return edits_; }

    /** The user wants to choose a colour. */
    void userClick() override;
    /** The user tries out a colour in the open chooser. */
    void userChoose(const Colour& choice);
    /** The chooser is closed and its last colour stands. */
    void userAccept();
    /** The chooser is closed and nothing is to have happened. */
    void userCancel();

    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** By default it tells edits(). */
    bool handleEdit(const Colour& colour, ChangeKind kind) override;
    bool handleKeyEvent(const Event& event) override;

private:
    bool hasAlpha_;
    Notifier<ColourSwatchEvent> edits_;
};

} // namespace oribund

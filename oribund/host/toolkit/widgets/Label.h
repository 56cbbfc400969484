#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/toolkit/core/Glob.h"

namespace oribund
{

/** One line of text that says what is beside it. A text too wide for the label ends in an ellipsis. */
class ORIBUND_API Label : public Glob
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        UIString text;
        TextAlign align = TextAlign::Left;
        PaletteRole role = PaletteRole::WindowText;
    };

    /** A width of 0 is that of the text, a height of 0 that of a row. */
    explicit Label(const InitArgs& args);

    void setText(const UIString& text, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    const WString& getText() const { return text_; }

    void setAlignment(TextAlign align);

    TextAlign getAlignment() const { return align_; }

    /** Which colour of the palette the text has. */
    void setTextRole(PaletteRole role);

    Colour getTextColour() const;

    /** The size that shows a text whole. */
    static XY<int> calcSizeFor(const WString& text, const Glib::FontDesc& font);

    /** The whole text when it is cut short, unless another tooltip was set. */
    UIString tooltip() const override;
    UIString accessibleName() const override;
    void describe(AccessibleDescription& description) const override;
    void draw(CanvasRenderer& renderer) override;

private:
    WString text_;
    TextAlign align_;
    PaletteRole role_;
};

} // namespace oribund

#pragma once

#include "skin/QtPeer.h"

namespace oribund
{
class TextBox;
}

namespace workbench
{

/** A text entry as a QLineEdit, which brings caret, selection, clipboard, undo of typing and input methods. */
class TextBoxPeer final : public QtPeer
{
public:
    TextBoxPeer(oribund::TextBox& box, QWidget& parent);
    ~TextBoxPeer() override;

    void refresh(unsigned changes) override;

protected:
    QRect widgetGeometry() const override;

private:
    void refreshState();

    oribund::TextBox& box_;
};

} // namespace workbench

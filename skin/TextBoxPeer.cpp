#include "skin/TextBoxPeer.h"

#include "skin/NumberAccessible.h"
#include "skin/QtConversions.h"
#include "skin/TextEntry.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/TextBox.h"

#include <algorithm>

namespace workbench
{

namespace Change = oribund::PeerChange;

namespace
{

Qt::Alignment alignmentOf(oribund::TextAlign align)
{
    switch (align) {
    case oribund::TextAlign::Centre:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case oribund::TextAlign::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case oribund::TextAlign::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace

TextBoxPeer::TextBoxPeer(oribund::TextBox& box, QWidget& parent)
    : QtPeer(box, new TextEntry(box, parent))
    , box_(box)
{
}

TextBoxPeer::~TextBoxPeer()
{
    if (auto* entry = static_cast<TextEntry*>(widget()))
        entry->detach();
}

QRect TextBoxPeer::widgetGeometry() const
{
    const QRect whole = QtPeer::widgetGeometry();
    const int height = std::min(whole.height(), oribund::UifStd::getControlHeight());
    return {whole.left(), whole.top() + (whole.height() - height) / 2, whole.width(), height};
}

void TextBoxPeer::refresh(unsigned changes)
{
    const QPointer<TextEntry> entry = static_cast<TextEntry*>(widget());
    if (!entry)
        return;
    const bool usable = box_.canInteract();
    if (changes & Change::kPalette)
        entry->setPalette(toQt(box_.getPalette()));
    if (changes & Change::kFont)
        entry->setFont(toQt(box_.font()));
    if (usable && (changes & (Change::kEnabled | Change::kVisible)))
        entry->setEnabled(true);
    if (changes & Change::kState)
        refreshState();
    if (changes & (Change::kEnabled | Change::kVisible | Change::kState | Change::kFocus | Change::kCursor))
        entry->followMouseUse();
    if (changes & Change::kTooltip)
        entry->showProblem();
    QtPeer::refresh(changes);
    // Only now that it has given up the keyboard, which Qt would hand on to the control after it.
    if (entry && !usable)
        entry->setEnabled(false);
}

void TextBoxPeer::refreshState()
{
    auto* entry = static_cast<TextEntry*>(widget());
    entry->setReadOnly(box_.isReadOnly());
    entry->setAlignment(alignmentOf(box_.getAlignment()));
    entry->setPlaceholderText(toQt(box_.getPlaceholder()));
    // The box counts in its own characters; it cuts off what Qt lets through. Setting it moves the caret.
    const int maxLength = static_cast<int>(std::min<std::size_t>(box_.getMaxLength(), 32767));
    if (entry->maxLength() != maxLength)
        entry->setMaxLength(maxLength);
    const QString shown = toQt(box_.getShownText());
    if (entry->text() == shown)
        return;
    const int caret = entry->cursorPosition();
    entry->setText(shown);
    // What is being typed was only cleaned up; a value that comes while the entry has the keyboard is typed over.
    if (box_.isModified())
        entry->setCursorPosition(caret);
    else if (entry->hasFocus())
        entry->selectAll();
    else
        entry->setCursorPosition(0);
    NumberAccessible::tellChange(*entry);
}

} // namespace workbench

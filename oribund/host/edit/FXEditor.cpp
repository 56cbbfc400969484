#include "oribund/host/edit/FXEditor.h"

namespace oribund
{

FXEditor::FXEditor() = default;
FXEditor::~FXEditor() = default;

bool FXEditor::canRename(const EffectInstance&) const
{
    return false;
}

FXEditor::RC FXEditor::rename(const EffectInstance&, const WString&)
{
    return RC::NotOffered;
}

bool FXEditor::isMaskable(const EffectInstance&, UIString& reason) const
{
    reason = UIString();
    return false;
}

FXEditor::RC FXEditor::setMask(const EffectInstance&, bool)
{
    return RC::NotOffered;
}

bool FXEditor::canMove(const EffectInstance&, int) const
{
    return false;
}

FXEditor::RC FXEditor::move(const EffectInstance&, int)
{
    return RC::NotOffered;
}

FXEditor::RC FXEditor::copySettings(const EffectInstance&)
{
    return RC::NotOffered;
}

bool FXEditor::canPasteSettings(const EffectInstance&) const
{
    return false;
}

FXEditor::RC FXEditor::pasteSettings(const EffectInstance&)
{
    return RC::NotOffered;
}

} // namespace oribund

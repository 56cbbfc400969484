#include "oribund/host/edit/FXEditor.h"

namespace oribund
{

FXEditor::FXEditor() = default;
FXEditor::~FXEditor() = default;

FXEditor::Offer FXEditor::offers(Command, const EffectInstance&) const
{
    return Offer::No;
}

FXEditor::RC FXEditor::rename(const EffectInstance&, const WString&)
{
    return RC::NotOffered;
}

FXEditor::RC FXEditor::reset(const EffectInstance&)
{
    return RC::NotOffered;
}

FXEditor::RC FXEditor::keyframeAll(const EffectInstance&, FXTime)
{
    return RC::NotOffered;
}

FXEditor::RC FXEditor::copySettings(const EffectInstance&)
{
    return RC::NotOffered;
}

FXEditor::RC FXEditor::pasteSettings(const EffectInstance&)
{
    return RC::NotOffered;
}

FXEditor::RC FXEditor::move(const EffectInstance&, int)
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

FXEditor::Node FXEditor::findNode(const EffectInstance&) const
{
    return Node::None;
}

FXEditor::RC FXEditor::destroyNode(const EffectInstance&)
{
    return RC::NotOffered;
}

} // namespace oribund

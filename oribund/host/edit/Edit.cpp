#include "oribund/host/edit/Edit.h"

namespace oribund
{

Edit::Edit() = default;
Edit::~Edit() = default;

void Edit::addModification(const EditModification& modification)
{
    modifications_.notify(modification);
}

EditModifier::EditModifier(const EditPtr& edit, const UIString& title)
    : edit_(edit)
{
    if (edit_)
        edit_->startModify(title);
}

EditModifier::~EditModifier()
{
    if (edit_)
        edit_->endModify();
}

} // namespace oribund

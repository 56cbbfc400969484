#include "oribund/host/edit/EditGesture.h"

namespace oribund
{

EditGesture::~EditGesture()
{
    finish();
}

iGestureJournal* EditGesture::journal() const
{
    return edit_ ? edit_->gestureJournal() : nullptr;
}

void EditGesture::begin(const EditPtr& edit, const UIString& text)
{
    finish();
    edit_ = edit;
    iGestureJournal* const kept = journal();
    number_ = kept ? kept->beginGesture(text) : iGestureJournal::kNone;
    begun_ = true;
}

bool EditGesture::isOpen() const
{
    const iGestureJournal* const kept = begun_ ? journal() : nullptr;
    return kept && kept->isGestureOpen(number_);
}

bool EditGesture::isLost() const
{
    return begun_ && number_ != iGestureJournal::kNone && !isOpen();
}

void EditGesture::finish()
{
    const bool recorded = isOpen();
    begun_ = false;
    if (recorded)
        journal()->finishGesture(number_);
}

bool EditGesture::abort()
{
    const bool recorded = isOpen();
    begun_ = false;
    return recorded && journal()->abortGesture(number_);
}

bool EditGesture::takeBack()
{
    iGestureJournal* const kept = begun_ ? nullptr : journal();
    return kept && kept->takeBackGesture(number_);
}

} // namespace oribund

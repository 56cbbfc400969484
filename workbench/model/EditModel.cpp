#include "workbench/model/EditModel.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/services/TextTable.h"
#include "workbench/model/Editor.h"
#include "workbench/model/Ids.h"

#include <algorithm>

namespace workbench
{

EditModel::EditModel(const EditData& data, const EffectCatalogue& catalogue)
    : catalogue_(catalogue)
    , name_(data.name)
    , original_(data.original)
    , format_(data.format)
    , timeline_(catalogue, *this)
    , undo_(timeline_, *this)
{
    timeline_.build(data);
}

EditModel::~EditModel() = default;

EditData EditModel::snapshot() const
{
    EditData data;
    data.name = name_;
    data.original = original_;
    data.format = format_;
    timeline_.snapshot(data);
    return data;
}

void EditModel::setReadOnly(bool readOnly)
{
    if (readOnly_ == readOnly)
        return;
    undo_.endGesture();
    readOnly_ = readOnly;
    addModification({});
}

ObjectId EditModel::newId()
{
    lastId_ = std::max(lastId_, timeline_.highestId()) + 1;
    return lastId_;
}

bool EditModel::hasIds() const
{
    constexpr ObjectId kForOneOperation = 1'000'000;
    return std::max(lastId_, timeline_.highestId()) <= kHighestId - kForOneOperation;
}

oribund::Cookie EditModel::getCookie() const
{
    return oribund::Cookie(oribund::String(name_));
}

double EditModel::getEndTime() const
{
    return timeline_.endFrame() * format_.frameLength();
}

bool EditModel::setCue(const oribund::Cue& cue)
{
    return static_cast<bool>(Editor(*this).changeCue(cue));
}

void EditModel::requestEnabled(ObjectId effect, bool enabled)
{
    Editor(*this).setEffectsEnabled({&effect, 1}, enabled);
}

} // namespace workbench

#include "tests/support/SampleEdit.h"
#include "tests/support/contracts/ViewContract.h"

#include "workbench/model/host/ModelVob.h"

#include <memory>

using namespace sample;

namespace
{

/** The workbench's own viewer, edit and monitor. */
class ModelViewMaker
{
public:
    ModelViewMaker()
    {
        const ObjectId clip = bench_.addPicture(50, 100);
        effect_ = bench_.editor.addEffect(clip, "tint").object;
        vob_->setEdit(bench_.edit);
    }

    oribund::Vob& vob() { return *vob_; }

    oribund::Kt::Ptr<oribund::EffectInstance> effect()
    {
        return vob_->getEffectMonitor()->findEffect(stampOf(effect_));
    }

    oribund::IdStamp track() const { return stampOf(kVideo); }

    void removeEffect() { bench_.editor.removeEffect(effect_); }

    void restoreEffect() { bench_.undo().undo(); }

    oribund::IdStamp addCue(double time) { return stampOf(bench_.editor.addCue({{}, time, {}, {}, {}, 4}).object); }

    void setReadOnly(bool readOnly) { bench_.edit->setReadOnly(readOnly); }

    void destroyVob() { vob_.reset(); }

private:
    Bench bench_;
    std::unique_ptr<ModelVob> vob_ = std::make_unique<ModelVob>();
    ObjectId effect_ = kNoObject;
};

} // namespace

namespace oribund::test
{
INSTANTIATE_TYPED_TEST_SUITE_P(Model, ViewContract, ModelViewMaker);
} // namespace oribund::test

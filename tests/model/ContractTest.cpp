#include "tests/support/SampleEdit.h"
#include "tests/support/TestHost.h"
#include "tests/support/contracts/FXEditorContract.h"
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

/** The workbench's own editor of effects. */
class ModelEditorMaker
{
public:
    ModelEditorMaker()
    {
        const ObjectId clip = bench_.addPicture(50, 100);
        for (ObjectId& effect : effects_)
            effect = bench_.editor.addEffect(clip, "tint").object;
        vob_.setEdit(bench_.edit);
        vob_.setCurrentTime(3.0);
    }

    oribund::Vob& vob() { return vob_; }

    oribund::Kt::Ptr<oribund::EffectInstance> first() { return bench_.timeline().findEffect(effects_[0]); }

    oribund::Kt::Ptr<oribund::EffectInstance> second() { return bench_.timeline().findEffect(effects_[1]); }

    oribund::IdStamp track() const { return stampOf(kVideo); }

    int steps() { return static_cast<int>(bench_.undo().position()); }

private:
    oribund::test::TestHost host_; // hears of refusals
    Bench bench_;
    ModelVob vob_;
    ObjectId effects_[2] = {kNoObject, kNoObject};
};

} // namespace

namespace oribund::test
{
INSTANTIATE_TYPED_TEST_SUITE_P(Model, ViewContract, ModelViewMaker);
INSTANTIATE_TYPED_TEST_SUITE_P(Model, FXEditorContract, ModelEditorMaker);
} // namespace oribund::test

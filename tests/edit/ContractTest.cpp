#include "tests/support/FakeView.h"
#include "tests/support/contracts/ViewContract.h"

#include "oribund/host/effects/params/EffectValParam.h"

#include <memory>
#include <utility>

namespace oribund::test
{
namespace
{

/** The fakes that other tests rely on. */
class FakeViewMaker
{
public:
    FakeViewMaker()
    {
        ParamInfo info;
        info.id = IdStamp(2, 1, 0);
        effect_->addParam(Kt::makePtr<EffectValParam<double>>(info));
        vob_->add(effect_, 2.0, 6.0);
        vob_->monitor->watch();
    }

    Vob& vob() { return *vob_; }

    Kt::Ptr<EffectInstance> effect() const { return effect_; }

    IdStamp track() const { return FakeMonitor::track(); }

    void removeEffect()
    {
        removed_ = std::exchange(vob_->monitor->effects, {});
        vob_->monitor->tell(EffectChangeCode::ParamSetChanged, effect_->id());
    }

    void restoreEffect()
    {
        vob_->monitor->effects = removed_;
        vob_->monitor->tell(EffectChangeCode::ParamSetRestored, effect_->id());
    }

    IdStamp addCue(double time)
    {
        Cue cue;
        cue.id = IdStamp(static_cast<int>(vob_->edit->cues.size()) + 1, 0, 0);
        cue.time = time;
        vob_->edit->cues.add(cue);
        return cue.id;
    }

    void setReadOnly(bool readOnly) { vob_->edit->readOnly = readOnly; }

    void destroyVob() { vob_.reset(); }

private:
    std::unique_ptr<FakeVob> vob_ = std::make_unique<FakeVob>();
    Kt::Ptr<EffectInstance> effect_ = Kt::makePtr<EffectInstance>(IdStamp(1, 2, 3), String("test"), WString(L"Test"));
    decltype(FakeMonitor::effects) removed_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fakes, ViewContract, FakeViewMaker);

} // namespace
} // namespace oribund::test

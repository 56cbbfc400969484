#include "oribund/host/effects/params/EffectValParamBase.h"

#include "oribund/host/effects/curves/BezierCurve.h"
#include "oribund/host/effects/params/iParamJournal.h"

#include <utility>

namespace oribund
{

namespace
{

/** Keeps a shared parameter alive while observers run; one that nobody shares belongs to the caller. */
Kt::Ptr<EffectValParamBase> hold(EffectValParamBase& param) noexcept
{
    return Kt::Ptr<EffectValParamBase>(param.refCount() > 0 ? &param : nullptr);
}

} // namespace

EffectValParamBase::EffectValParamBase(ParamInfo info)
    : info_(std::move(info))
    , fnType_(*this)
{
}

EffectValParamBase::~EffectValParamBase() = default;

void EffectValParamBase::setGraph(Graph1dBase& graph)
{
    graph_ = &graph;
    graph.setJournal(this);
}

void EffectValParamBase::forgetGraph()
{
    if (graph_)
        graph_->setJournal(nullptr);
    graph_ = nullptr;
}

bool EffectValParamBase::FnTypeServer::set(const EffectValParamFnType& type, ChangeKind kind)
{
    return param_.functionType() != type && param_.setFunctionType(type, 0.0, kind);
}

bool EffectValParamBase::setFunctionType(EffectValParamFnType type, double atFxTime, ChangeKind kind)
{
    if (type == functionType())
        return true;
    const bool known = type == EffectValParamFnType::Constant || type == EffectValParamFnType::Keyframed;
    if (!known || !graph_ || !Graph1dBase::usableTime(atFxTime))
        return false;

    const auto self = hold(*this);
    const bool animate = type == EffectValParamFnType::Keyframed;
    const auto reason = animate ? BatchReason::AddKeyframe : BatchReason::Remove;
    const auto endReason = animate ? BatchReason::EndAddKeyframe : BatchReason::Remove;
    // The observers of the graph hear last, those of the constant and the type when the graph is already changed.
    const GraphBatch batch(*graph_, reason, endReason, kind);
    if (!animate)
        freezeConstant(atFxTime, kind);
    else if (graph_->empty())
        addFirstKeyframe(atFxTime, kind);
    if (journal())
        journal()->functionTypeChanged(*this, functionType(), type, kind);
    fnType_.store(type, kind);
    return true;
}

void EffectValParamBase::recordConstant(const ParamValue& before, const ParamValue& after, ChangeKind kind)
{
    if (journal())
        journal()->constantChanged(*this, before, after, kind);
}

bool EffectValParamBase::restoreFunctionType(EffectValParamFnType type, ChangeKind kind)
{
    if (type == EffectValParamFnType::Keyframed && !graph_)
        return false;
    fnType_.store(type, kind);
    return true;
}

bool EffectValParamBase::restoreKeyframeInserted(int channel, const Keyframe& keyframe)
{
    return graph_ && channel >= 0 && channel < graph_->channelCount() &&
           graph_->curve(channel).restoreInserted(keyframe);
}

bool EffectValParamBase::restoreKeyframeErased(int channel, double fxTime)
{
    return graph_ && channel >= 0 && channel < graph_->channelCount() && graph_->curve(channel).restoreErased(fxTime);
}

bool EffectValParamBase::restoreKeyframeChanged(int channel, const Keyframe& keyframe)
{
    return graph_ && channel >= 0 && channel < graph_->channelCount() &&
           graph_->curve(channel).restoreChanged(keyframe);
}

void EffectValParamBase::keyframeInserted(int channel, const Keyframe& keyframe, ChangeKind kind)
{
    if (journal())
        journal()->keyframeInserted(*this, channel, keyframe, kind);
}

void EffectValParamBase::keyframeErased(int channel, const Keyframe& keyframe, ChangeKind kind)
{
    if (journal())
        journal()->keyframeErased(*this, channel, keyframe, kind);
}

void EffectValParamBase::keyframeChanged(int channel, const Keyframe& before, const Keyframe& after, ChangeKind kind)
{
    if (journal())
        journal()->keyframeChanged(*this, channel, before, after, kind);
}

void EffectValParamBase::manyKeyframesChanging(ChangeKind kind)
{
    if (journal())
        journal()->manyKeyframesChanging(*this, kind);
}

void EffectValParamBase::manyKeyframesChanged(ChangeKind kind)
{
    if (journal())
        journal()->manyKeyframesChanged(*this, kind);
}

void EffectValParamBase::batchStarted(BatchReason reason, ChangeKind kind)
{
    if (journal())
        journal()->batchStarted(*this, reason, kind);
}

void EffectValParamBase::batchEnded(BatchReason reason, ChangeKind kind)
{
    if (journal())
        journal()->batchEnded(*this, reason, kind);
}

JournalSuspension::JournalSuspension(EffectValParamBase& param, ChangeKind kind)
    : keepAlive_(hold(param))
    , param_(param)
{
    ++param_.suspensions_;
    if (param_.graph_)
        param_.graph_->startBatch(kAllChannels, BatchReason::Restore, kind);
}

JournalSuspension::~JournalSuspension()
{
    if (param_.graph_)
        param_.graph_->endBatch(kAllChannels, BatchReason::Restore);
    --param_.suspensions_;
}

} // namespace oribund

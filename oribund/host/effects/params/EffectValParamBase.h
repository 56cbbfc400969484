#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/effects/curves/Graph1dBase.h"
#include "oribund/host/effects/curves/iGraphJournal.h"
#include "oribund/host/effects/params/ParamValue.h"
#include "oribund/host/notify/ValServer.h"

namespace oribund
{

class iParamJournal;
class ParamVisitor;

/** Where a parameter gets its value from. */
enum class EffectValParamFnType : int {
    Constant = 0,
    Keyframed = 1, ///< from its graph
};

/** Bits of a parameter's display flags, which say how a panel shows it. */
namespace ParamDisplay
{
inline constexpr unsigned kColourRange = 0x100;
inline constexpr unsigned kColourOffset = 0x200;
inline constexpr unsigned kTonalRanges = 0x400;
inline constexpr unsigned kPercentage = 0x2000;  ///< a value that is not normalised, in percent all the same
inline constexpr unsigned kPlainNumber = 0x4000; ///< a normalised value, but not in percent
} // namespace ParamDisplay

/** What identifies and describes a parameter, whatever its type. */
struct ParamInfo {
    IdStamp id;
    String name;          ///< identifier, the same in every session and language
    UIString description; ///< what a person reads
    unsigned displayFlags = 0;
    WString unitText;        ///< behind the value, such as "px"; may be empty
    WString help;            ///< what it does, in a sentence or two, for tooltips; may be empty
    bool keyframable = true; ///< counts for types that have a graph at all
};

/**
 * One parameter of an effect: a constant, or a keyframe graph over effect time. Every edit is clamped to the
 * parameter's range, compared with what is there, stored, recorded in the journal and only then told to the observers
 * of the constant, the graph or the function type; an edit that changes nothing is told to nobody. Edits return whether
 * the parameter now has what was asked for; false leaves it as it was. User-interface thread.
 */
class ORIBUND_API EffectValParamBase : public iVirtual, public Kt::InternalRefCount, private iGraphJournal
{
public:
    ~EffectValParamBase() override;
    EffectValParamBase(const EffectValParamBase&) = delete;
    EffectValParamBase& operator=(const EffectValParamBase&) = delete;

    const IdStamp& id() const noexcept { return info_.id; }

    const String& name() const noexcept { return info_.name; }

    const UIString& description() const noexcept { return info_.description; }

    unsigned displayFlags() const noexcept { return info_.displayFlags; }

    const WString& unitText() const noexcept { return info_.unitText; }

    const WString& help() const noexcept { return info_.help; }

    EffectValParamFnType functionType() const noexcept { return fnType_.get(); }

    /** Its set() is setFunctionType() at time 0. */
    ValServer<EffectValParamFnType>& fnTypeServer() noexcept { return fnType_; }

    bool isKeyframable() const noexcept { return graph_ != nullptr; }

    /** Null for a parameter that can never be keyframed. A constant parameter does not use what is in it. */
    Graph1dBase* graph() noexcept { return graph_; }

    const Graph1dBase* graph() const noexcept { return graph_; }

    /**
     * To Keyframed: the constant becomes the one keyframe, at that time, unless the graph has some already. To
     * Constant: the value at that time becomes the constant, and the keyframes go. False for Keyframed when there is no
     * graph.
     */
    bool setFunctionType(EffectValParamFnType type, double atFxTime, ChangeKind kind = ChangeKind::Single);

    /** Calls the function of the visitor for this parameter's type. */
    virtual void accept(ParamVisitor& visitor) = 0;

    virtual ParamValue constantValue() const = 0;
    virtual ParamValue defaultValue() const = 0;
    virtual ParamValue valueAt(double fxTime) const = 0;
    /** False when the value is of another type, or cannot be held. */
    virtual bool setConstantValue(const ParamValue& value, ChangeKind kind = ChangeKind::Single) = 0;

    /** Null for none. The journal must outlive the parameter or be taken off again. */
    void setJournal(iParamJournal* journal) noexcept { journal_ = journal; }

    /** Null, too, while a JournalSuspension is in force. */
    iParamJournal* journal() const noexcept { return suspensions_ == 0 ? journal_ : nullptr; }

    /**
     * For undo, under a JournalSuspension: bare elementary changes, the inverse or the repetition of what the journal
     * was told of. Nothing is clamped. False when the parameter is not in the state that the change presumes.
     */
    virtual bool restoreConstant(const ParamValue& value, ChangeKind kind = ChangeKind::Single) = 0;
    bool restoreFunctionType(EffectValParamFnType type, ChangeKind kind = ChangeKind::Single);
    bool restoreKeyframeInserted(int channel, const Keyframe& keyframe);
    bool restoreKeyframeErased(int channel, double fxTime);
    bool restoreKeyframeChanged(int channel, const Keyframe& keyframe);

protected:
    explicit EffectValParamBase(ParamInfo info);

    /** Called once by the constructor of a derived class that owns a graph and may use it. */
    void setGraph(Graph1dBase& graph);
    /** Has to be called while the graph is alive. */
    void forgetGraph();

    const ParamInfo& info() const noexcept { return info_; }

    void recordConstant(const ParamValue& before, const ParamValue& after, ChangeKind kind);

    /** The constant as keyframe values; the graph as constant. */
    virtual void addFirstKeyframe(double fxTime, ChangeKind kind) = 0;
    virtual void freezeConstant(double fxTime, ChangeKind kind) = 0;

private:
    friend class JournalSuspension;

    class FnTypeServer final : public ValServer<EffectValParamFnType>
    {
    public:
        explicit FnTypeServer(EffectValParamBase& param)
            : param_(param)
        {
        }

        bool set(const EffectValParamFnType& type, ChangeKind kind = ChangeKind::Single) override;

        bool store(EffectValParamFnType type, ChangeKind kind) { return ValServer::set(type, kind); }

    private:
        EffectValParamBase& param_;
    };

    void keyframeInserted(int channel, const Keyframe& keyframe, ChangeKind kind) override;
    void keyframeErased(int channel, const Keyframe& keyframe, ChangeKind kind) override;
    void keyframeChanged(int channel, const Keyframe& before, const Keyframe& after, ChangeKind kind) override;
    void manyKeyframesChanging(ChangeKind kind) override;
    void manyKeyframesChanged(ChangeKind kind) override;
    void batchStarted(BatchReason reason, ChangeKind kind) override;
    void batchEnded(BatchReason reason, ChangeKind kind) override;

    ParamInfo info_;
    FnTypeServer fnType_;
    Graph1dBase* graph_ = nullptr;
    iParamJournal* journal_ = nullptr;
    int suspensions_ = 0;
};

/**
 * While it lives, nothing that happens to the parameter is recorded, and all changes of its graph are one batch: what
 * undo and redo work under.
 */
class ORIBUND_API JournalSuspension
{
public:
    explicit JournalSuspension(EffectValParamBase& param, ChangeKind kind = ChangeKind::Single);
    ~JournalSuspension();

    JournalSuspension(const JournalSuspension&) = delete;
    JournalSuspension& operator=(const JournalSuspension&) = delete;

private:
    Kt::Ptr<EffectValParamBase> keepAlive_; // of a shared parameter, until its observers have been told
    EffectValParamBase& param_;
};

} // namespace oribund

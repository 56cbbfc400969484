#pragma once

#include "tests/support/FakeView.h"

#include "oribund/host/edit/FXEditor.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace oribund::test
{

/** Does for the effects of a FakeVob what panels show at once, and tells of it as a host does. */
class FakeFXEditor : public FXEditor
{
public:
    explicit FakeFXEditor(FakeVob& vob)
        : vob_(vob)
    {
    }

    Offer offers(Command command, const EffectInstance& effect) const override
    {
        const int at = indexOf(effect);
        if (at < 0 || lacks == command)
            return Offer::No;
        const int last = static_cast<int>(vob_.monitor->effects.size()) - 1;
        const bool never = (command == Command::MoveUp && at == 0) || (command == Command::MoveDown && at == last) ||
                           (command == Command::PasteSettings && !copied_);
        return never ? Offer::NotNow : Offer::Yes;
    }

    RC rename(const EffectInstance& effect, const WString& name) override
    {
        if (refusesNames)
            return RC::Refused;
        const EditModifier modifier(vob_.edit, L"Rename");
        find(effect)->setName(name.empty() ? WString(L"Blur") : name);
        return tell(EffectChangeCode::PresentationChanged, effect.id());
    }

    RC copySettings(const EffectInstance&) override
    {
        copied_ = true;
        return RC::Done;
    }

    bool isMaskable(const EffectInstance& effect, UIString& reason) const override
    {
        reason = effect.tagTypeId() == "keyer" ? UIString(L"A keyer makes a mask itself.") : UIString();
        return indexOf(effect) >= 0 && reason.empty();
    }

    RC setMask(const EffectInstance& effect, bool present) override
    {
        const EditModifier modifier(vob_.edit, L"Mask");
        const IdStamp id(0, 0, effect.id().third() + 100);
        find(effect)->setMask(present ? Kt::makePtr<EffectInstance>(id, String("mask"), WString(L"Ellipse"))
                                      : Kt::Ptr<EffectInstance>());
        return tell(EffectChangeCode::ParamSetRestored, effect.id());
    }

    Node findNode(const EffectInstance& effect) const override { return indexOf(effect) < 0 ? Node::None : node; }

    RC destroyNode(const EffectInstance& effect) override
    {
        const int at = indexOf(effect);
        if (at < 0)
            return RC::Refused;
        const EditModifier modifier(vob_.edit, L"Remove");
        wasPlaying = vob_.playing;
        vob_.monitor->effects.erase(vob_.monitor->effects.begin() + at);
        return tell(EffectChangeCode::ParamSetRestored, IdStamp::wildcard());
    }

    std::optional<Command> lacks; ///< what it does not offer
    Node node = Node::Effect;     ///< what every effect is
    bool refusesNames = false;
    bool wasPlaying = false; ///< when an effect was removed

private:
    Kt::Ptr<EffectInstance> find(const EffectInstance& effect) const { return vob_.monitor->findEffect(effect.id()); }

    int indexOf(const EffectInstance& effect) const
    {
        const auto& effects = vob_.monitor->effects;
        const auto found = std::find_if(effects.begin(), effects.end(),
                                        [&](const auto& entry) { return entry.first->id() == effect.id(); });
        return found == effects.end() ? -1 : static_cast<int>(found - effects.begin());
    }

    RC tell(EffectChangeCode code, const IdStamp& effect)
    {
        const unsigned flags = effect.isWildcard() ? EffectChangeDescription::kWholesaleRefresh : 0;
        vob_.monitor->tell(code, effect, flags);
        return RC::Done;
    }

    FakeVob& vob_;
    bool copied_ = false;
};

/** A viewer whose effects can be edited, and whose track has a name. */
struct EditableVob : FakeVob {
    struct NamedMonitor : FakeMonitor {
        using FakeMonitor::FakeMonitor;

        WString getTrackName(const IdStamp& id) const override { return id == track() ? L"V1" : L""; }
    };

    EditableVob() { monitor = std::make_unique<NamedMonitor>(*this); }

    FXEditor* fxEditor() override { return &editor; }

    FakeFXEditor editor{*this};
};

} // namespace oribund::test

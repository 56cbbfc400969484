#pragma once

#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/FXEditor.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/effects/EffectInstance.h"

#include <gtest/gtest.h>

#include <variant>
#include <vector>

namespace oribund::test
{

/**
 * What every FXEditor keeps to.
 *
 * `Maker` makes a viewer with an editor, and two effects of one kind on `track()`: it gives `vob()`, the effects by
 * `first()` and `second()`, each with a number as its first parameter, and the count of undo steps by `steps()`.
 */
template <class Maker>
class FXEditorContract : public testing::Test
{
protected:
    using RC = FXEditor::RC;

    FXEditor& editor() { return *maker.vob().fxEditor(); }

    CompoundEffectMonitor& monitor() { return *maker.vob().getEffectMonitor(); }

    /** The ids of the effects of the track, in order. */
    std::vector<IdStamp> order()
    {
        std::vector<IdStamp> ids;
        for (const auto& effect : monitor().getEffects(maker.track()))
            ids.push_back(effect->id());
        return ids;
    }

    static double valueOf(const EffectInstance& effect) { return std::get<double>(effect.paramAt(0)->constantValue()); }

    void expectOneStep(RC result)
    {
        EXPECT_EQ(result, RC::Done);
        EXPECT_EQ(maker.steps(), ++steps_);
    }

    Maker maker;

private:
    int steps_ = maker.steps();
};

TYPED_TEST_SUITE_P(FXEditorContract);

TYPED_TEST_P(FXEditorContract, RenamesAndGivesTheFirstNameBack)
{
    const auto effect = this->maker.first();
    const WString name = effect->getName();
    EXPECT_EQ(this->editor().offers(FXEditor::Command::Rename, *effect), FXEditor::Offer::Yes);
    this->expectOneStep(this->editor().rename(*effect, L"Haze"));
    EXPECT_EQ(effect->getName(), WString(L"Haze"));
    this->expectOneStep(this->editor().rename(*effect, {}));
    EXPECT_EQ(effect->getName(), name);
}

TYPED_TEST_P(FXEditorContract, MovesWithinItsSegmentAndNoFarther)
{
    using Command = FXEditor::Command;
    using Offer = FXEditor::Offer;
    const auto effect = this->maker.first();
    EXPECT_EQ(this->editor().offers(Command::MoveUp, *effect), Offer::NotNow);
    EXPECT_EQ(this->editor().offers(Command::MoveDown, *effect), Offer::Yes);
    const auto before = this->order();
    this->expectOneStep(this->editor().move(*effect, 1));
    EXPECT_EQ(this->order(), (std::vector<IdStamp>{before[1], before[0]}));
    EXPECT_EQ(this->editor().offers(Command::MoveDown, *this->maker.first()), Offer::NotNow);
}

TYPED_TEST_P(FXEditorContract, CarriesSettingsOverAndResetsThem)
{
    using Command = FXEditor::Command;
    using Offer = FXEditor::Offer;
    const auto from = this->maker.first();
    const auto to = this->maker.second();
    EXPECT_EQ(this->editor().offers(Command::PasteSettings, *to), Offer::NotNow);
    const double standard = this->valueOf(*to);
    const double other = standard / 2 + 1;
    {
        const EditModifier modifier(this->maker.vob().getEdit(), UIString(L"Set"));
        ASSERT_TRUE(from->paramAt(0)->setConstantValue(other));
    }
    const int steps = this->maker.steps();
    EXPECT_EQ(this->editor().copySettings(*from), FXEditor::RC::Done);
    EXPECT_EQ(this->maker.steps(), steps) << "nothing was changed";
    EXPECT_EQ(this->editor().offers(Command::PasteSettings, *to), Offer::Yes);
    EXPECT_EQ(this->editor().pasteSettings(*to), FXEditor::RC::Done);
    EXPECT_EQ(this->valueOf(*to), other);
    EXPECT_EQ(this->editor().keyframeAll(*to, FXTime{0.5}), FXEditor::RC::Done);
    EXPECT_EQ(to->paramAt(0)->functionType(), EffectValParamFnType::Keyframed);
    EXPECT_EQ(this->editor().reset(*to), FXEditor::RC::Done);
    EXPECT_EQ(to->paramAt(0)->functionType(), EffectValParamFnType::Constant);
    EXPECT_EQ(this->valueOf(*to), standard);
    EXPECT_EQ(this->maker.steps(), steps + 3);
}

TYPED_TEST_P(FXEditorContract, MasksAnEffect)
{
    const auto effect = this->maker.first();
    UIString reason;
    ASSERT_TRUE(this->editor().isMaskable(*effect, reason));
    this->expectOneStep(this->editor().setMask(*effect, true));
    const auto mask = this->maker.first()->getMask();
    ASSERT_TRUE(mask);
    EXPECT_EQ(this->monitor().findEffect(mask->id()), mask);
    EXPECT_EQ(this->monitor().getEditRegion(mask->id()), this->monitor().getEditRegion(effect->id()));
    EXPECT_FALSE(this->editor().isMaskable(*mask, reason));
    this->expectOneStep(this->editor().setMask(*effect, false));
    EXPECT_FALSE(this->maker.first()->getMask());
}

TYPED_TEST_P(FXEditorContract, RemovesAnEffectThatIsThereAndOffersNothingForOthers)
{
    const auto effect = this->maker.first();
    EXPECT_EQ(this->editor().findNode(*effect), FXEditor::Node::Effect);
    this->expectOneStep(this->editor().destroyNode(*effect));
    EXPECT_EQ(this->order(), std::vector<IdStamp>{this->maker.second()->id()});
    EXPECT_EQ(this->editor().findNode(*effect), FXEditor::Node::None);
    EXPECT_NE(this->editor().destroyNode(*effect), FXEditor::RC::Done);
    EXPECT_EQ(this->editor().offers(FXEditor::Command::Rename, *effect), FXEditor::Offer::No);
}

REGISTER_TYPED_TEST_SUITE_P(FXEditorContract, RenamesAndGivesTheFirstNameBack, MovesWithinItsSegmentAndNoFarther,
                            CarriesSettingsOverAndResetsThem, MasksAnEffect,
                            RemovesAnEffectThatIsThereAndOffersNothingForOthers);

} // namespace oribund::test

#include "tests/support/SampleEdit.h"

#include "oribund/host/notify/MethodCallback.h"

#include <gtest/gtest.h>

using namespace sample;
using oribund::EffectValParamFnType;

namespace
{
EffectData everythingSet()
{
    EffectData data;
    data.id = 40;
    data.service = "tint";
    data.enabled = false;
    const oribund::Keyframe smooth{0.5, 70.0, oribund::KeyframeType::Smooth, {-0.1, 3.0, false}, {0.2, -4.0, false}};
    const ChannelData channel{key(-0.25, 10.0), smooth, key(1.5, 20.0)};
    const ChannelData part{key(0.1, 0.2), key(0.9, 0.7)};
    data.params = {
        {"Level", 12.0, true, {channel}},
        {"Grey", std::array<double, 4>{0.1, 0.2, 0.3, 0.4}, false, {}},
        {"Colour", std::array<double, 4>{0.5, 0.6, 0.7, 0.8}, true, {part, part, part, part}},
        {"Centre", std::array<double, 2>{3.0, 4.0}, true, {part, part}},
        {"Turn", 725.0, false, {}},
        {"On", true, false, {}},
        {"Mode", std::string("20"), false, {}},
        {"Whole", 7.0, false, {}},
    };
    return data;
}
} // namespace

TEST(ModelEffect, GivesBackEverySettingExactlyAndPresentsGroupsAsDescribed)
{
    using Kind = oribund::ParamPresentationDetails::Kind;
    const ModelEffect effect(everythingSet(), catalogue().find("tint"));
    EXPECT_EQ(effect.data(), everythingSet());
    std::string order;
    for (const auto& entry : effect.presentation())
        order += "(p)"[entry.kind == Kind::GroupStart ? 0 : entry.kind == Kind::Parameter ? 1 : 2];
    EXPECT_EQ(order, "ppppp(pp)p");
}

namespace
{
/** Groups as brackets, a folded one as "<", parameters by the first letter of their names. */
std::string shownOf(const ModelEffect& effect)
{
    using Details = oribund::ParamPresentationDetails;
    std::string shown;
    for (const Details& entry : effect.presentation()) {
        if (entry.kind == Details::Kind::Parameter)
            shown += effect.findParam(entry.id)->name().c_str()[0];
        else if (entry.kind == Details::Kind::GroupStart)
            shown += entry.isCollapsed() ? '<' : '(';
        else
            shown += ')';
    }
    return shown;
}

struct PresentationListener {
    int heard = 0;

    int hear(const ParamEdited& change)
    {
        heard += change.code == oribund::EffectChangeCode::PresentationChanged ? 1 : 0;
        return 0;
    }
};
} // namespace

TEST(ModelEffect, WhatIsShownFollowsListsAndSwitchesAndTheGroupsKeepTheirIds)
{
    EffectDescription description;
    description.service = "mixed";
    description.params = {other("Mode", ParamKind::TextList), other("Switch", ParamKind::Bool), number("A", 0, 1, 0),
                          number("B", 0, 1, 0), number("C", 0, 1, 0)};
    description.params[2].groups = {"One"};
    description.params[2].shownWith = "Mode";
    description.params[2].shownWithValues = {"10"};
    description.params[3].groups = {"Two", "Inner"};
    description.params[3].collapsed = true;
    description.params[4].groups = {"Two"};
    description.params[4].shownWith = "Switch";
    description.params[4].shownWithValues = {"1"};
    EffectCatalogue with;
    with.add(description);
    const auto edit = oribund::Kt::makePtr<EditModel>(emptyEdit("test", {}), with);
    Editor editor(*edit);
    const ObjectId clip = editor.addClip({media(), 0, 100, kVideo, kNoObject}, 0).object;
    const auto effect = edit->timeline().findEffect(editor.addEffect(clip, "mixed").object);
    EXPECT_EQ(shownOf(*effect), "MS(A)(<B))");
    const oribund::IdStamp group = effect->presentation().at(5).id;

    PresentationListener listener;
    oribund::MethodCallback<PresentationListener, ParamEdited> heard(&listener, &PresentationListener::hear);
    heard.attach(edit->paramEdits());
    oribund::ParamValue hard = effect->paramAt(0)->constantValue();
    std::get<oribund::ListParam<oribund::String>>(hard).select(1);
    effect->paramAt(0)->setConstantValue(hard);
    EXPECT_EQ(shownOf(*effect), "MS(<B))");
    EXPECT_EQ(effect->presentation().at(2).id, group);
    effect->paramAt(1)->setConstantValue(oribund::ParamValue(true));
    EXPECT_EQ(shownOf(*effect), "MS(<B)C)");
    effect->paramAt(3)->setConstantValue(oribund::ParamValue(0.5));
    EXPECT_EQ(listener.heard, 2) << "only what changes it is told";
    edit->undoStack().endGesture();
    while (edit->undoStack().position() > 2) // the clip and the effect stay
        edit->undoStack().undo();
    EXPECT_EQ(shownOf(*effect), "MS(A)(<B))");
}

TEST(ModelEffect, UnknownEffectsAndParametersAreKeptAsTheyWere)
{
    EffectData gone = everythingSet();
    gone.service = "frei0r.gone";
    gone.rest = {{"0", "0.5"}, {"speed", "0=1;10=2"}};
    EffectData newer = everythingSet();
    newer.id = 41;
    newer.params.push_back({"Added later", 3.0, true, {ChannelData{key(0.5, 1.0)}}});

    Bench b;
    const ObjectId clip = b.addPicture(0, 100);
    const ObjectId first = b.editor.addEffect(clip, gone).object;
    const ObjectId second = b.editor.addEffect(clip, newer).object;
    EXPECT_TRUE(b.timeline().findEffect(first)->getName() == L"frei0r.gone (not installed)");
    EXPECT_EQ(b.timeline().findEffect(first)->paramCount(), 0);
    b.editor.removeEffect(first);
    b.undo().undo();
    gone.id = first;
    newer.id = second;
    EXPECT_EQ(b.timeline().findEffect(first)->data(), gone);
    EXPECT_EQ(b.timeline().findEffect(second)->data(), newer);

    // Their keyframes stay at their frames too, for the day on which the effect is known.
    b.editor.trimEnd(clip, 50);
    EXPECT_EQ(b.timeline().findEffect(second)->data().params.back().channels[0][0].time, 1.0);
}

TEST(ModelEffect, SwitchingItFromAPanelIsAnUndoableStepOfTheEdit)
{
    Bench b;
    const auto effect = b.timeline().findEffect(b.editor.addEffect(b.addPicture(0, 100), "tint").object);
    effect->setEnabled(false);
    EXPECT_EQ(b.undoTitle(), "Switch off Tint");
    EXPECT_FALSE(effect->isEnabled());
    b.undo().undo();
    EXPECT_TRUE(effect->isEnabled());

    EXPECT_TRUE(effect->canEditParam(*effect->paramAt(0)));
    b.edit->setReadOnly(true);
    EXPECT_FALSE(effect->canEditParam(*effect->paramAt(0)));
    effect->setEnabled(false);
    EXPECT_TRUE(effect->isEnabled());

    // A panel may hold an effect longer than the edit does.
    b.edit->setReadOnly(false);
    const std::size_t steps = b.undo().position();
    b.editor.removeEffect(objectOf(effect->id()));
    effect->setEnabled(false);
    effect->paramAt(0)->setConstantValue(oribund::ParamValue(1.0));
    EXPECT_EQ(b.undo().size(), steps + 1);
}

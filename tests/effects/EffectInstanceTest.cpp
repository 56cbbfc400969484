#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/EffectValParam.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace oribund;

namespace
{

using Kind = ParamPresentationDetails::Kind;
using testing::ElementsAre;

constexpr IdStamp stamp(int number)
{
    return {7, 7, number};
}

Kt::Ptr<EffectInstance> makeEffect(int number)
{
    return Kt::makePtr<EffectInstance>(stamp(number), String("tests/effect"), WString(L"Effect"));
}

Kt::Ptr<EffectValParamBase> makeParam(int number)
{
    ParamInfo info;
    info.id = stamp(number);
    return Kt::makePtr<EffectValParam<double>>(info, 0.5);
}

std::vector<Kind> kinds(const EffectInstance& effect)
{
    std::vector<Kind> all;
    for (const auto& entry : effect.presentation())
        all.push_back(entry.kind);
    return all;
}

} // namespace

TEST(EffectInstance, KeepsParametersAndTheirPresentationTogether)
{
    const auto effect = makeEffect(1);
    EXPECT_TRUE(effect->addParam(makeParam(10)));
    effect->startGroup(stamp(90), L"Outer", true);
    effect->startGroup(stamp(91), L"Inner");
    EXPECT_TRUE(effect->addParam(makeParam(11)));
    effect->endGroup();
    EXPECT_TRUE(effect->addParam(makeParam(12)));
    effect->endGroup();
    effect->endGroup();
    EXPECT_FALSE(effect->addParam(makeParam(11))) << "an id is there once";
    EXPECT_FALSE(effect->addParam({}));
    EXPECT_FALSE(effect->insertParam(4, makeParam(13)));
    EXPECT_THAT(kinds(*effect), ElementsAre(Kind::Parameter, Kind::GroupStart, Kind::GroupStart, Kind::Parameter,
                                            Kind::GroupEnd, Kind::Parameter, Kind::GroupEnd));
    EXPECT_TRUE(effect->presentation()[6].isHidden()) << "an end is hidden like its start";
    EXPECT_FALSE(effect->presentation()[4].isHidden());

    EXPECT_TRUE(effect->insertParam(0, makeParam(9)));
    EXPECT_EQ(effect->indexOfParam(stamp(12)), 3);
    EXPECT_TRUE(effect->removeParam(stamp(11)));
    EXPECT_FALSE(effect->removeParam(stamp(11)));
    EXPECT_EQ(effect->paramCount(), 3);
    EXPECT_EQ(effect->presentation().size(), 6u);
    EXPECT_FALSE(effect->findParam(stamp(11)));
    EXPECT_FALSE(effect->paramAt(3));
    EXPECT_FALSE(effect->paramAt(-1));
    EXPECT_TRUE(effect->findParamAs<EffectValParam<double>>(stamp(12)));
    EXPECT_FALSE(effect->findParamAs<EffectValParam<bool>>(stamp(12)));
    EXPECT_TRUE(effect->canEditParam(*effect->paramAt(0)));
    EXPECT_FALSE(effect->canEditParam(*makeParam(9))) << "another parameter of the same id";
}

TEST(EffectInstance, FindsWhatIsEmbeddedAtAnyDepth)
{
    const auto root = makeEffect(1);
    const auto first = makeEffect(2);
    const auto second = makeEffect(3);
    const auto deep = makeEffect(4);
    const auto mask = makeEffect(5);
    EXPECT_TRUE(root->addEmbeddedChild(first));
    EXPECT_TRUE(root->addEmbeddedChild(second));
    EXPECT_TRUE(second->addEmbeddedChild(deep));
    EXPECT_TRUE(root->setMask(mask));
    EXPECT_THAT(root->findEmbeddedChild(stamp(4)), ElementsAre(1, 0));
    EXPECT_EQ(root->getEmbeddedChild({1, 0}), deep);
    EXPECT_EQ(root->getEmbeddedChild(root->findEmbeddedChild(stamp(2))), first);
    EXPECT_TRUE(root->findEmbeddedChild(stamp(5)).empty()) << "the mask is no child";
    for (const EffectInstance::ChildPath& path : {EffectInstance::ChildPath{}, {2}, {-1}, {1, 1}, {1, 0, 0}})
        EXPECT_FALSE(root->getEmbeddedChild(path));

    const auto maskOfDeep = makeEffect(6);
    EXPECT_TRUE(deep->setMask(maskOfDeep));
    for (const auto& part : {root, first, deep, mask, maskOfDeep})
        EXPECT_EQ(EffectInstance::findWithin(root, part->id()), part);
    EXPECT_FALSE(EffectInstance::findWithin(second, first->id()));
    EXPECT_FALSE(EffectInstance::findWithin({}, first->id()));

    EXPECT_FALSE(root->addEmbeddedChild({}));
    EXPECT_FALSE(root->addEmbeddedChild(root));
    EXPECT_FALSE(deep->addEmbeddedChild(root)) << "nothing embeds what it is embedded in";
    EXPECT_FALSE(deep->setMask(root));
    EXPECT_FALSE(mask->setMask(root));
}

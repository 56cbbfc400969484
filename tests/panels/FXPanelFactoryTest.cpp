#include "tests/support/FakeView.h"
#include "tests/support/TestHost.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/panels/EffectComponentPanel.h"
#include "oribund/panels/FXPanelCreationOptions.h"
#include "oribund/panels/FXPanelFactory.h"
#include "oribund/panels/iCompoundEffectViewBuilder.h"
#include "oribund/panels/iEffectPanelBuilder.h"
#include "oribund/panels/iVideoAnalysisViewBuilder.h"
#include "oribund/panels/iVideoOverlayRenderer.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace oribund
{
namespace
{

/** Claims one tag and counts what it is asked. */
class PanelBuilder : public iEffectPanelBuilder
{
public:
    explicit PanelBuilder(const String& tag, bool overlays = false)
        : tag_(tag)
        , overlays_(overlays)
    {
    }

    ~PanelBuilder() override
    {
        if (whenGone)
            whenGone();
    }

    bool canBuild(int kind, const String& tag) override
    {
        ++asked;
        if (const auto act = std::exchange(whenAsked, {}))
            act();
        return tag == tag_ && (kind == kComponentPanel || overlays_);
    }

    EffectComponentPanel* buildComponentPanel(const FXPanelCreationOptions& options) override
    {
        ++built;
        return new EffectComponentPanel(options);
    }

    Kt::Ptr<iVideoOverlayRenderer> buildOverlayRenderer(Vob*, const Kt::Ptr<EffectInstance>&) override
    {
        return Kt::makePtr<iVideoOverlayRenderer>();
    }

    int asked = 0;
    int built = 0;
    std::function<void()> whenAsked; ///< the first time
    std::function<void()> whenGone;

private:
    String tag_;
    bool overlays_;
};

class ViewBuilder : public iCompoundEffectViewBuilder
{
public:
    ViewBuilder(const String& type, unsigned caps)
        : type_(type)
        , caps_(caps)
    {
    }

    Glob* buildView(Glob* parent, Vob*, unsigned, const IdStamp&, const XY<int>&, const WidgetPosition&,
                    const WidgetSurround&) override
    {
        return &parent->addChild(std::make_unique<Glob>(GlobCreationInfo(40, 30)));
    }

    String viewType() override { return type_; }

    TabLabel tabLabel() override { return {}; }

    UIString tabTooltip() override { return {}; }

    unsigned caps() override { return caps_; }

private:
    String type_;
    unsigned caps_;
};

class AnalysisBuilder : public iVideoAnalysisViewBuilder
{
public:
    StandardPanel* buildView(Glob*, const XY<int>&, const WidgetPosition&) override { return nullptr; }

    String viewType() override { return {}; }
};

/** The factory is one for the process: it is emptied when a test's host ends. */
class Factory : public testing::Test
{
protected:
    std::unique_ptr<EffectComponentPanel> makePanel()
    {
        const FXPanelCreationOptions options(view, 300, nullptr, FXPanelCreationOptions::kTitleBar);
        return std::unique_ptr<EffectComponentPanel>(factory.makeComponentPanel(options));
    }

    bool canMake() { return factory.canMakeComponentPanel(effect); }

    test::TestHost host;
    test::FakeVob vob;
    Kt::Ptr<EffectInstance> effect = Kt::makePtr<EffectInstance>(IdStamp(0, 0, 7), String("blur"), WString(L"Blur"));
    FXViewHandle view = vob.add(effect);
    FXPanelFactory& factory = FXPanelFactory::instance();
};

TEST_F(Factory, AsksTheBuildersInOrderOfRegistration)
{
    const auto other = Kt::makePtr<PanelBuilder>("sharpen");
    const auto first = Kt::makePtr<PanelBuilder>("blur");
    const auto second = Kt::makePtr<PanelBuilder>("blur", true);
    factory.add(other);
    EXPECT_FALSE(canMake());
    EXPECT_EQ(makePanel(), nullptr);
    factory.add(first);
    factory.add(first);
    EXPECT_FALSE(factory.createOverlayRenderer(&vob, effect));
    factory.add(second);
    factory.add(Kt::Ptr<iEffectPanelBuilder>());
    EXPECT_TRUE(makePanel());
    EXPECT_EQ(first->built, 1);
    EXPECT_EQ(second->built, 0);
    EXPECT_TRUE(factory.createOverlayRenderer(&vob, effect)) << "by those who claim overlays";
    for (int i = 0; i < 2; ++i)
        factory.removePanelBuilder("blur");
    EXPECT_EQ(first->refCount(), 1) << "it was in the list twice";
    EXPECT_TRUE(makePanel());
    EXPECT_EQ(second->built, 1);
    factory.removePanelBuilder("blur");
    factory.removePanelBuilder("blur");
    EXPECT_FALSE(canMake());
}

TEST_F(Factory, BuildersMayAddAndRemoveBuildersWheneverTheyAreAtWork)
{
    const auto second = Kt::makePtr<PanelBuilder>("blur");
    const auto added = Kt::makePtr<PanelBuilder>("blur");
    auto first = Kt::makePtr<PanelBuilder>("other");
    first->whenAsked = [&] {
        for (int i = 0; i < 50; ++i)
            factory.add(added);
        factory.removePanelBuilder("blur");
    };
    factory.add(first);
    factory.add(second);
    EXPECT_FALSE(canMake()) << "the second has been removed, what was added comes later";
    EXPECT_EQ(second->refCount(), 1);
    EXPECT_TRUE(canMake());
    first->whenGone = [&] {
        factory.removePanelBuilder("blur");
        factory.add(Kt::makePtr<PanelBuilder>("late"));
    };
    first.reset();
    factory.removePanelBuilder("other");
    EXPECT_EQ(added->refCount(), 50) << "49 times in the list";
}

TEST_F(Factory, AsksNobodyWithoutAnEffect)
{
    const auto builder = Kt::makePtr<PanelBuilder>("blur", true);
    factory.add(builder);
    EXPECT_FALSE(factory.createOverlayRenderer(nullptr, effect));
    EXPECT_FALSE(factory.createOverlayRenderer(&vob, {}));
    EXPECT_FALSE(factory.canMakeComponentPanel({}));
    vob.monitor->effects.clear();
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, effect->id());
    EXPECT_EQ(makePanel(), nullptr);
    EXPECT_EQ(builder->asked, 0);
}

TEST_F(Factory, FindsCompoundViewsByTheirExactType)
{
    static ViewBuilder params("params", 1);
    static ViewBuilder later("params", 8);
    static ViewBuilder nameless("", 2);
    factory.add(static_cast<iCompoundEffectViewBuilder*>(nullptr));
    factory.add(&params);
    factory.add(&later);
    EXPECT_TRUE(factory.isRegistered("params"));
    EXPECT_FALSE(factory.isRegistered("Params"));
    EXPECT_EQ(factory.getCompoundViewCaps("params"), 1u) << "the first registered";
    EXPECT_EQ(factory.getCompoundViewCaps("keyframes"), 0u);
    EXPECT_EQ(factory.getCompoundViewBuilders(), (std::vector<iCompoundEffectViewBuilder*>{&params, &later}));

    Glob parent(GlobCreationInfo(100, 100));
    const auto make = [&](const String& type) {
        return factory.makeCompoundEffectView(type, &parent, &vob, 1, IdStamp(), {40, 30}, Glob::UserTopLeft(0, 0), {});
    };
    ASSERT_TRUE(make("params"));
    EXPECT_EQ(make("params")->parent(), &parent);
    EXPECT_EQ(make("keyframes"), nullptr);
    EXPECT_FALSE(factory.isRegistered({}));
    factory.add(&nameless);
    EXPECT_TRUE(factory.isRegistered({})) << "an absent type is an empty one";
}

TEST_F(Factory, RemovesOneAnalysisBuilderAtATime)
{
    AnalysisBuilder a;
    AnalysisBuilder b;
    for (iVideoAnalysisViewBuilder* builder : {&a, &b, &a, static_cast<AnalysisBuilder*>(nullptr)})
        factory.add(builder);
    factory.remove(&a);
    EXPECT_EQ(factory.getVideoAnalysisViewBuilders(), (std::vector<iVideoAnalysisViewBuilder*>{&b, &a}));
    EXPECT_EQ(factory.makeVideoAnalysisView("waveform", nullptr, {}, Glob::UserTopLeft(0, 0)), nullptr);
}

TEST_F(Factory, OptionsCarryTheEffectItsNameAndTheStandardBorder)
{
    const FXPanelCreationOptions byEffect(&vob, effect, 320, nullptr);
    EXPECT_EQ(byEffect.viewHandle.getEffectPtr(), effect);
    EXPECT_TRUE(byEffect.minimisable);
    EXPECT_EQ(byEffect.title, UIString(L"Blur"));
    const FXPanelCreationOptions byHandle(view, 320, nullptr, 0x13A);
    EXPECT_FALSE(byHandle.minimisable);
    EXPECT_EQ(byHandle.title, UIString(L"Blur"));
    EXPECT_EQ(byHandle.GlobCreationInfo::border.bottom, UifStd::getWidgetGap());
    EXPECT_FALSE(byHandle.GlobCreationInfo::border.isVisible());
    const FXPanelCreationOptions noView(nullptr, effect, 320, nullptr);
    EXPECT_FALSE(noView.viewHandle.getEffectPtr());
    EXPECT_EQ(noView.title, UIString(L"Blur")) << "named after the effect given all the same";
}

TEST_F(Factory, OptionsPointAtAnotherEffectOfTheSameView)
{
    effect->setMask(Kt::makePtr<EffectInstance>(IdStamp(0, 0, 8), String("mask"), WString(L"Mask of Blur")));
    for (FXPanelCreationOptions options : {FXPanelCreationOptions(view, 320, nullptr, 0x13A),
                                           FXPanelCreationOptions(&vob, effect->getMask(), 320, nullptr)}) {
        options.setViewEffectID(IdStamp(0, 0, 8));
        EXPECT_EQ(options.title, UIString(L"Mask of Blur"));
        EXPECT_EQ(options.viewHandle.getEffectPtr(), effect->getMask());
        options.setViewEffectID(IdStamp(0, 0, 99));
        EXPECT_FALSE(options.viewHandle.getEffectPtr());
        EXPECT_EQ(options.title, UIString(L"Mask of Blur")) << "the title stays where no effect gives another";
    }
}

TEST_F(Factory, TheHostsShutdownEmptiesItAtPriority100)
{
    const auto builder = Kt::makePtr<PanelBuilder>("blur");
    factory.add(builder);
    AnalysisBuilder analysis;
    factory.add(&analysis);
    std::string order;
    const auto note = [&](Shutdown::eExitType) { order += canMake() ? "full " : "empty "; };
    Shutdown::addCallback(note, 99);
    Shutdown::addCallback(note, 101);
    host.shutdownSequence.run(Shutdown::eExitType::Normal);
    EXPECT_EQ(order, "full empty ");
    EXPECT_EQ(builder->refCount(), 1);
    EXPECT_TRUE(factory.getCompoundViewBuilders().empty());
    EXPECT_TRUE(factory.getVideoAnalysisViewBuilders().empty());
}

} // namespace
} // namespace oribund

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
    explicit PanelBuilder(const String& tag)
        : tag_(tag)
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
        return tag == tag_ && (kind == kComponentPanel || overlays);
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

    bool overlays = false;
    int asked = 0;
    int built = 0;
    std::function<void()> whenAsked; ///< the first time
    std::function<void()> whenGone;

private:
    String tag_;
};

class ViewBuilder : public iCompoundEffectViewBuilder
{
public:
    ViewBuilder(const String& type, unsigned caps)
        : type_(type)
        , caps_(caps)
    {
    }

    Glob* buildView(Glob* parent, Vob*, unsigned, const IdStamp&, const XY<int>& size, const WidgetPosition&,
                    const WidgetSurround&) override
    {
        auto view = std::make_unique<Glob>(
            GlobCreationInfo(static_cast<unsigned short>(size.x), static_cast<unsigned short>(size.y)));
        return &parent->addChild(std::move(view));
    }

    String viewType() override { return type_; }

    TabLabel tabLabel() override { return {UIString(toWide(type_)), {}}; }

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

/**
 * The factory is one for the process and ends with its host: all tests share one host, and each takes back the panel
 * builders that it adds. Compound view builders cannot be removed, so each test names types of its own.
 */
class Factory : public testing::Test
{
protected:
    static void SetUpTestSuite() { host = std::make_unique<test::TestHost>(); }

    static void TearDownTestSuite() { host.reset(); }

    ~Factory() override
    {
        while (factory.canMakeComponentPanel(effect))
            factory.removePanelBuilder(effect->tagTypeId());
    }

    FXPanelCreationOptions optionsFor(const FXViewHandle& handle)
    {
        return FXPanelCreationOptions(handle, 300, nullptr, FXPanelCreationOptions::kTitleBar);
    }

    static inline std::unique_ptr<test::TestHost> host;
    test::FakeVob vob;
    Kt::Ptr<EffectInstance> effect = Kt::makePtr<EffectInstance>(IdStamp(0, 0, 7), String("blur"), WString(L"Blur"));
    FXViewHandle view = vob.add(effect);
    FXPanelFactory& factory = FXPanelFactory::instance();
};

TEST_F(Factory, AsksTheBuildersInOrderOfRegistration)
{
    const auto other = Kt::makePtr<PanelBuilder>("sharpen");
    const auto first = Kt::makePtr<PanelBuilder>("blur");
    const auto second = Kt::makePtr<PanelBuilder>("blur");
    factory.add(other);
    EXPECT_FALSE(factory.canMakeComponentPanel(effect));
    EXPECT_EQ(factory.makeComponentPanel(optionsFor(view)), nullptr);
    factory.add(first);
    factory.add(second);

    std::unique_ptr<EffectComponentPanel> panel(factory.makeComponentPanel(optionsFor(view)));
    ASSERT_TRUE(panel);
    EXPECT_EQ(first->built, 1);
    EXPECT_EQ(second->asked, 0);

    factory.removePanelBuilder("blur");
    panel.reset(factory.makeComponentPanel(optionsFor(view)));
    EXPECT_TRUE(panel);
    EXPECT_EQ(second->built, 1);
    factory.removePanelBuilder("blur");
    factory.removePanelBuilder("blur");
    EXPECT_FALSE(factory.canMakeComponentPanel(effect));
    factory.removePanelBuilder("sharpen");
}

TEST_F(Factory, ABuilderIsInTheListAsOftenAsItIsRegisteredAndReleasedInTheEnd)
{
    const auto builder = Kt::makePtr<PanelBuilder>("blur");
    factory.add(builder);
    factory.add(builder);
    factory.add(Kt::Ptr<iEffectPanelBuilder>());
    factory.add(static_cast<iCompoundEffectViewBuilder*>(nullptr));
    factory.add(static_cast<iVideoAnalysisViewBuilder*>(nullptr));
    factory.removePanelBuilder("blur");
    EXPECT_TRUE(factory.canMakeComponentPanel(effect));
    factory.removePanelBuilder("blur");
    EXPECT_FALSE(factory.canMakeComponentPanel(effect));
    EXPECT_EQ(builder->refCount(), 1);
    EXPECT_FALSE(factory.isRegistered("anything"));
    EXPECT_EQ(factory.makeVideoAnalysisView("waveform", nullptr, {}, Glob::UserTopLeft(0, 0)), nullptr);
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
    EXPECT_FALSE(factory.canMakeComponentPanel(effect)) << "the second has been removed, what was added comes later";
    EXPECT_EQ(second->refCount(), 1);
    EXPECT_TRUE(factory.canMakeComponentPanel(effect));

    int ended = 0;
    const auto meddle = [&] {
        ++ended;
        factory.removePanelBuilder("blur");
        factory.add(Kt::makePtr<PanelBuilder>("late"));
    };
    first->whenAsked = {};
    first->whenGone = meddle;
    first.reset();
    factory.removePanelBuilder("other");
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(added->refCount(), 50) << "49 times in the list";
    factory.removePanelBuilder("late");
}

TEST_F(Factory, AsksNobodyWithoutAnEffect)
{
    const auto builder = Kt::makePtr<PanelBuilder>("blur");
    builder->overlays = true;
    factory.add(builder);
    vob.monitor->effects.clear();
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, effect->id());
    EXPECT_EQ(factory.makeComponentPanel(optionsFor(view)), nullptr);
    EXPECT_FALSE(factory.createOverlayRenderer(nullptr, effect));
    EXPECT_FALSE(factory.createOverlayRenderer(&vob, {}));
    EXPECT_EQ(builder->asked, 0);
}

TEST_F(Factory, MakesOverlaysByThoseWhoClaimOverlays)
{
    const auto panelsOnly = Kt::makePtr<PanelBuilder>("blur");
    const auto both = Kt::makePtr<PanelBuilder>("blur");
    both->overlays = true;
    factory.add(panelsOnly);
    EXPECT_FALSE(factory.createOverlayRenderer(&vob, effect));
    factory.add(both);
    EXPECT_TRUE(factory.createOverlayRenderer(&vob, effect));
}

TEST_F(Factory, FindsCompoundViewsByTheirExactType)
{
    static ViewBuilder params("params", 1);
    static ViewBuilder later("params", 8);
    factory.add(&params);
    factory.add(&later);
    EXPECT_TRUE(factory.isRegistered("params"));
    EXPECT_FALSE(factory.isRegistered("Params"));
    EXPECT_EQ(factory.getCompoundViewCaps("params"), 1u) << "the first registered";
    EXPECT_EQ(factory.getCompoundViewCaps("keyframes"), 0u);
    EXPECT_EQ(factory.getCompoundViewBuilders(), (std::vector<iCompoundEffectViewBuilder*>{&params, &later}));

    Glob parent(GlobCreationInfo(100, 100));
    Glob* const made =
        factory.makeCompoundEffectView("params", &parent, &vob, 1, IdStamp(), {40, 30}, Glob::UserTopLeft(0, 0), {});
    ASSERT_TRUE(made);
    EXPECT_EQ(made->parent(), &parent);
    EXPECT_EQ(
        factory.makeCompoundEffectView("keyframes", &parent, &vob, 1, IdStamp(), {40, 30}, Glob::UserTopLeft(0, 0), {}),
        nullptr);

    EXPECT_FALSE(factory.isRegistered({}));
    static ViewBuilder nameless("", 2);
    factory.add(&nameless);
    EXPECT_TRUE(factory.isRegistered({})) << "an absent type is an empty one";
}

TEST_F(Factory, RemovesOneAnalysisBuilderAtATime)
{
    AnalysisBuilder a;
    AnalysisBuilder b;
    for (iVideoAnalysisViewBuilder* builder : {&a, &b, &a})
        factory.add(builder);
    factory.remove(&a);
    EXPECT_EQ(factory.getVideoAnalysisViewBuilders(), (std::vector<iVideoAnalysisViewBuilder*>{&b, &a}));
    EXPECT_EQ(factory.makeVideoAnalysisView("waveform", nullptr, {}, Glob::UserTopLeft(0, 0)), nullptr);
    factory.remove(&a);
    factory.remove(&b);
}

TEST_F(Factory, OptionsCarryTheEffectItsNameAndTheStandardBorder)
{
    const FXPanelCreationOptions byEffect(&vob, effect, 320, nullptr);
    EXPECT_EQ(byEffect.flags, 0x1F7u);
    EXPECT_EQ(byEffect.viewHandle.getEffectPtr(), effect);
    EXPECT_TRUE(byEffect.minimisable);
    EXPECT_EQ(byEffect.title, UIString(L"Blur"));
    EXPECT_EQ(byEffect.width, 320);

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
    FXPanelCreationOptions options(view, 320, nullptr, 0x13A);
    options.setViewEffectID(IdStamp(0, 0, 8));
    EXPECT_EQ(options.title, UIString(L"Mask of Blur"));
    EXPECT_EQ(options.viewHandle.getEffectPtr(), effect->getMask());

    FXPanelCreationOptions ofMask(&vob, effect->getMask(), 320, nullptr);
    ofMask.setViewEffectID(IdStamp(0, 0, 8));
    EXPECT_EQ(ofMask.viewHandle.getEffectPtr(), effect->getMask()) << "made from the mask itself";

    options.setViewEffectID(IdStamp(0, 0, 99));
    EXPECT_FALSE(options.viewHandle.getEffectPtr());
    EXPECT_EQ(options.title, UIString(L"Mask of Blur")) << "the title stays where no effect gives another";
}

TEST_F(Factory, ZZ_TheHostsShutdownEmptiesItAtPriority100)
{
    const auto builder = Kt::makePtr<PanelBuilder>("blur");
    factory.add(builder);
    AnalysisBuilder analysis;
    factory.add(&analysis);
    bool stillFull = false;
    bool alreadyEmpty = false;
    Shutdown::addCallback([&](Shutdown::eExitType) { stillFull = factory.canMakeComponentPanel(effect); }, 101);
    Shutdown::addCallback([&](Shutdown::eExitType) { alreadyEmpty = !factory.canMakeComponentPanel(effect); }, 99);
    host->shutdownSequence.run(Shutdown::eExitType::Normal);
    EXPECT_TRUE(stillFull);
    EXPECT_TRUE(alreadyEmpty);
    EXPECT_EQ(builder->refCount(), 1);
    EXPECT_TRUE(factory.getCompoundViewBuilders().empty());
    EXPECT_TRUE(factory.getVideoAnalysisViewBuilders().empty());
}

} // namespace
} // namespace oribund

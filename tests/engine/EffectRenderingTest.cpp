#include "tests/engine/DemoValue.h"
#include "tests/engine/SampleMedia.h"
#include "tests/store/CommandLinePlayer.h"
#include "tests/support/SampleEdit.h"

#include "oribund/host/effects/params/EffectValParamBase.h"
#include "workbench/engine/worker/catalogue/CatalogueReader.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/ParamConversion.h"
#include "workbench/model/projection/AllowList.h"
#include "workbench/model/projection/ParamBaker.h"
#include "workbench/model/projection/Projector.h"
#include "workbench/model/projection/ServiceText.h"
#include "workbench/store/ProjectFile.h"

#include <gtest/gtest.h>
#include <mlt++/Mlt.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>

namespace workbench
{
namespace
{

constexpr int kLastFrame = 30;
const std::set<int> kPictures = {6, 18, 30};

/** What is seen and heard of an edit from its start. */
struct Rendering {
    std::vector<std::uint8_t> pictures;
    std::vector<float> sound;
};

Rendering render(MltGraph& graph)
{
    Rendering result;
    graph.producer().set_speed(0.0);
    for (int position = 0; position <= kLastFrame; ++position) {
        graph.producer().seek(position);
        const std::unique_ptr<Mlt::Frame> frame(graph.producer().get_frame());
        if (kPictures.contains(position))
            if (const auto image = copyImage(*frame, 320, 180))
                result.pictures.insert(result.pictures.end(), image->rgba.begin(), image->rgba.end());
        mlt_audio_format format = mlt_audio_f32le;
        int frequency = 48000;
        int channels = 2;
        int samples = 1920;
        const auto* data = static_cast<const float*>(frame->get_audio(format, frequency, channels, samples));
        if (data)
            result.sound.insert(result.sound.end(), data, data + samples * channels);
    }
    return result;
}

/** Mean difference, in steps of 8-bit values for pictures and of 1/256 of full scale for sound. */
double difference(const Rendering& a, const Rendering& b)
{
    if (a.pictures.size() != b.pictures.size() || a.sound.size() != b.sound.size())
        return 255.0;
    double pictures = 0.0;
    for (std::size_t i = 0; i < a.pictures.size(); ++i)
        pictures += std::abs(int{a.pictures[i]} - int{b.pictures[i]});
    double sound = 0.0;
    for (std::size_t i = 0; i < a.sound.size(); ++i)
        sound += std::abs(a.sound[i] - b.sound[i]) * 256.0;
    return pictures / static_cast<double>(a.pictures.size()) + sound / static_cast<double>(a.sound.size());
}

constexpr double kVisible = 1e-3;

/** One parameter as the model writes it, set to a value. */
ProjectedProperties written(const ParamDescription& param, const std::optional<DemoValue>& value)
{
    ProjectedProperties properties;
    const auto model = makeParam(param, {});
    if (!model) {
        ADD_FAILURE() << param.property << " cannot be made into a parameter";
        return properties;
    }
    if (value)
        restoreParam(*model, {param.property, plainValue(param, *value), false, {}});
    bakeParam(param, *model, {kSampleFrames, 0, kSampleFrames - 1}, properties);
    return properties;
}

/** All of an effect's parameters at their demo values, but one at its default. */
ProjectedProperties demoSetting(const EffectDescription& effect, const ParamDescription* atDefault = nullptr)
{
    ProjectedProperties properties;
    for (const auto& [name, value] : effect.fixedProperties)
        properties.push_back({name, value});
    for (const ParamDescription& param : effect.params)
        for (ProjectedProperty& property : written(param, &param == atDefault ? std::nullopt : param.demo))
            properties.push_back(std::move(property));
    return properties;
}

class EffectRenderingTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        session = MltSession::open();
        catalogue = std::make_unique<EffectCatalogue>(readCatalogue(*session).catalogue);
    }

    static void TearDownTestSuite()
    {
        catalogue.reset();
        session.reset();
    }

    static Rendering renderEdit(const Projection& edit)
    {
        const auto graph = MltGraph::build(session, edit, {});
        EXPECT_TRUE(graph->takeProblems().empty());
        return render(*graph);
    }

    static Rendering renderEffect(const EffectDescription& effect, const ProjectedProperties& properties)
    {
        return renderEdit(sampleEdit(effect.service, properties));
    }

    template <class Check>
    static void forEachCurated(Check&& check)
    {
        int count = 0;
        for (const auto& effect : catalogue->all())
            if (effect->curated && effect->blockedBecause.empty()) {
                SCOPED_TRACE(effect->service);
                check(*effect);
                ++count;
            }
        EXPECT_GE(count, 65);
    }

    static std::shared_ptr<MltSession> session;
    static std::unique_ptr<EffectCatalogue> catalogue;
};

std::shared_ptr<MltSession> EffectRenderingTest::session;
std::unique_ptr<EffectCatalogue> EffectRenderingTest::catalogue;

// Differ from one rendering to the next, even with the same setting: the first three by themselves, the others when
// another thread draws from the random numbers of the process that they restart at each frame.
const std::set<std::string> kRandom = {
    "frei0r.rgbnoise", "frei0r.glitch0r", "frei0r.distort0r", "dust", "grain", "lines"};

TEST_F(EffectRenderingTest, everyCuratedEffectAndEachOfItsDemoValuesShows)
{
    const Rendering plain = renderEdit(sampleEdit());
    forEachCurated([&](const EffectDescription& effect) {
        const Rendering demo = renderEffect(effect, demoSetting(effect));
        EXPECT_GT(difference(plain, demo), kVisible);
        if (kRandom.contains(effect.service))
            return;
        EXPECT_LT(difference(demo, renderEffect(effect, demoSetting(effect))), kVisible) << "not reproducible";
        for (const ParamDescription& param : effect.params) {
            if (!param.demo)
                continue;
            EXPECT_GT(difference(demo, renderEffect(effect, demoSetting(effect, &param))), kVisible) << param.name;
        }
    });
}

/** Effects whose defaults are described as "no change" change nothing; that checks scales and offsets. */
TEST_F(EffectRenderingTest, neutralDefaultsLeaveThePictureAlone)
{
    const Rendering plain = renderEdit(sampleEdit());
    for (const char* service : {"frei0r.brightness",
                                "frei0r.contrast0r",
                                "brightness",
                                "frei0r.levels",
                                "frei0r.gamma",
                                "avfilter.exposure",
                                "frei0r.saturat0r",
                                "avfilter.vibrance",
                                "frei0r.hueshift0r",
                                "frei0r.colgate",
                                "lift_gamma_gain",
                                "frei0r.three_point_balance",
                                "avfilter.colorbalance",
                                "frei0r.sopsat",
                                "frei0r.sharpness",
                                "frei0r.scale0tilt",
                                "affine",
                                "frei0r.c0rners",
                                "frei0r.flippo",
                                "frei0r.lenscorrection",
                                "volume",
                                "avfilter.stereotools",
                                "avfilter.equalizer",
                                "avfilter.bass",
                                "avfilter.treble"}) {
        const auto effect = catalogue->find(service);
        ASSERT_TRUE(effect) << service;
        EffectDescription atDefaults = *effect;
        for (ParamDescription& param : atDefaults.params)
            param.demo.reset();
        EXPECT_LT(difference(plain, renderEffect(atDefaults, demoSetting(atDefaults))), 1.2) << service;
    }
}

/** Whether an animation has no one right frame: what it looks like is chance, or depends on the frames before it. */
bool isUnpredictable(const std::string& service)
{
    return kRandom.contains(service) || service == "frei0r.hqdn3d";
}

/** A setting with one property at another value. */
ProjectedProperties withProperty(ProjectedProperties setting, const std::string& name, const std::string& value)
{
    for (ProjectedProperty& property : setting)
        if (property.name == name)
            property.value = value;
    return setting;
}

double difference(const FrameImagePtr& a, const FrameImagePtr& b)
{
    if (!a || !b || a->rgba.size() != b->rgba.size())
        return 255.0;
    double sum = 0.0;
    for (std::size_t i = 0; i < a->rgba.size(); ++i)
        sum += std::abs(int{a->rgba[i]} - int{b->rgba[i]});
    return sum / static_cast<double>(a->rgba.size());
}

/** For each numeric parameter that can be animated: its property, and the raw values of default and demo. */
template <class Check>
void forEachAnimatable(const EffectDescription& effect, Check&& check)
{
    for (const ParamDescription& param : effect.params) {
        if (!param.animatable || param.kind != ParamKind::Double || param.integer || !param.demo)
            continue;
        const ProjectedProperty low = written(param, std::nullopt).front();
        const ProjectedProperty high = written(param, param.demo).front();
        SCOPED_TRACE(param.name);
        check(low.name, std::strtod(low.value.c_str(), nullptr), std::strtod(high.value.c_str(), nullptr));
    }
}

TEST_F(EffectRenderingTest, animatedFramesEqualThoseOfTheSameConstant)
{
    forEachCurated([&](const EffectDescription& effect) {
        if (effect.medium == EffectDescription::Medium::Audio || isUnpredictable(effect.service))
            return;
        const ProjectedProperties setting = demoSetting(effect);
        forEachAnimatable(effect, [&](const std::string& property, double from, double to) {
            const auto build = [&](const std::string& value) {
                return MltGraph::build(session, sampleEdit(effect.service, withProperty(setting, property, value)), {});
            };
            const auto animated = build("0=" + serviceNumber(from) + ";30=" + serviceNumber(to));
            for (const int frame : {3, 15, 24}) {
                const auto constant = build(serviceNumber(from + (to - from) * frame / 30.0));
                EXPECT_LT(difference(renderFrame(animated->producer(), frame, {320, 180}),
                                     renderFrame(constant->producer(), frame, {320, 180})),
                          0.02)
                    << "frame " << frame;
            }
        });
    });
}

/** A drag writes into the running graph; opening the project afterwards must show the same picture. */
TEST_F(EffectRenderingTest, aValueWrittenWhileRunningShowsLikeOneThatWasThereFromTheStart)
{
    forEachCurated([&](const EffectDescription& effect) {
        if (effect.medium == EffectDescription::Medium::Audio || isUnpredictable(effect.service))
            return;
        const ProjectedProperties setting = demoSetting(effect);
        forEachAnimatable(effect, [&](const std::string& property, double from, double to) {
            const auto running = MltGraph::build(
                session, sampleEdit(effect.service, withProperty(setting, property, serviceNumber(from))), {});
            renderFrame(running->producer(), 12, {320, 180});
            ASSERT_TRUE(running->apply({kSampleEffect, property, serviceNumber(to)}));
            const auto fresh = MltGraph::build(session, sampleEdit(effect.service, setting), {});
            // Not quite equal: the decoder keeps the last picture in the format in which it was wanted then.
            EXPECT_LT(difference(renderFrame(running->producer(), 12, {320, 180}),
                                 renderFrame(fresh->producer(), 12, {320, 180})),
                      1.0);
        });
    });
}

/** The mean difference of a picture from one without alpha. */
double differenceFromRGB(const FrameImagePtr& a, const char* rgb)
{
    double sum = 0.0;
    const std::size_t pixels = a->rgba.size() / 4;
    for (std::size_t i = 0; i < pixels; ++i)
        for (std::size_t c = 0; c < 3; ++c)
            sum += std::abs(int{a->rgba[i * 4 + c]} - int{static_cast<std::uint8_t>(rgb[i * 3 + c])});
    return sum / static_cast<double>(pixels * 3);
}

TEST_F(EffectRenderingTest, aSavedProjectWithEffectsOfOurOwnPlaysElsewhereAsItIsShown)
{
    if (!test::hasPlayer())
        GTEST_SKIP() << "no melt";
    constexpr std::size_t kPictureBytes = std::size_t{320} * 180 * 3;
    constexpr int kShown = 12;
    for (const char* const service : {"frei0r.oribund_selective_colour", "frei0r.oribund_tonal_zones"}) {
        SCOPED_TRACE(service);
        const auto edit = oribund::Kt::makePtr<EditModel>(emptyEdit("own", {320, 180, 25, 1, 1, 1, 709}), *catalogue);
        Editor editor(*edit);
        MediaInfo info = sample::media(SampleMedia::clip(), kSampleFrames);
        info.width = 320;
        info.height = 180;
        const ObjectId clip = editor.addClip({info, 0, 25, sample::kVideo, kNoObject}, 0).object;
        const auto shown = [&] {
            return renderFrame(MltGraph::build(session, project(*edit), {})->producer(), kShown, {320, 180});
        };
        const FrameImagePtr plain = shown();
        const auto effect = edit->timeline().findEffect(editor.addEffect(clip, service).object);
        ASSERT_TRUE(effect);
        for (const auto& param : effect->params())
            if (const ParamDescription& about = *effect->description()->find(param->name().view()); about.demo)
                restoreParam(*param, {about.property, plainValue(about, *about.demo), false, {}});
        const FrameImagePtr changed = shown();
        EXPECT_GT(difference(plain, changed), 3.0);

        const std::filesystem::path folder = SampleMedia::folder();
        ASSERT_EQ(saveProject(folder / "own.mlt", *edit, {}), "");
        ASSERT_TRUE(test::play(folder / "own.mlt", folder / "own.rgb",
                               "f=rawvideo vcodec=rawvideo pix_fmt=rgb24 mlt_image_format=rgb"));
        std::ifstream file(folder / "own.rgb", std::ios::binary);
        const std::vector<char> played{std::istreambuf_iterator<char>(file), {}};
        ASSERT_GE(played.size(), (kShown + 1) * kPictureBytes);
        EXPECT_LT(differenceFromRGB(changed, &played[kShown * kPictureBytes]), 1.0);
    }
}

/** Services disagree about where the alpha of a colour stands. */
TEST_F(EffectRenderingTest, coloursReachEachServiceInItsOwnOrder)
{
    for (const auto& [service, property] :
         {std::pair("avfilter.colorkey", "av.color"), std::pair("frei0r.bluescreen0r", "0")}) {
        const auto effect = catalogue->find(service);
        ASSERT_TRUE(effect) << service;
        ParamDescription colour = *effect->find(property);
        Projection edit = sampleEdit(service, written(colour, DemoValue(std::array<double, 4>{0.0, 0.0, 1.0, 1.0})));
        edit.clips[1].resource = "color:#ff0000fe";
        const auto graph = MltGraph::build(session, edit, {});
        const FrameImagePtr image = renderFrame(graph->producer(), 3, {320, 180});
        ASSERT_TRUE(image);
        EXPECT_LT(image->pixel(160, 90)[2], 120) << service << ": the blue was not made transparent";
    }
}

TEST_F(EffectRenderingTest, updatesReachTheRunningGraph)
{
    const auto graph = MltGraph::build(session, sampleEdit("frei0r.brightness", {{"0", "0.5"}}), {});
    const auto plain = MltGraph::build(session, sampleEdit(), {});
    const auto shown = [](MltGraph& of) { return renderFrame(of.producer(), 12, {320, 180}); };
    const FrameImagePtr before = shown(*graph);
    EXPECT_TRUE(graph->apply({kSampleEffect, "0", "0.8"}));
    EXPECT_GT(difference(before, shown(*graph)), 10.0);
    EXPECT_TRUE(graph->apply({kSampleEffect, "disable", "1"}));
    EXPECT_LT(difference(shown(*plain), shown(*graph)), 0.02);
    EXPECT_FALSE(graph->apply({"nobody", "0", "1"}));
}

/** A setting that the effect's library refuses makes it break down inside; the next one mends it. */
TEST_F(EffectRenderingTest, aRefusedSettingIsForgottenAtTheNextOne)
{
    EffectCatalogue effects;
    EffectDescription sharp;
    sharp.service = "avfilter.unsharp";
    for (const char* property : {"av.luma_msize_x", "av.luma_amount"}) {
        ParamDescription param;
        param.property = property;
        sharp.params.push_back(param);
    }
    effects.add(sharp);
    session->setAllowList(std::make_shared<const AllowList>(std::move(effects)));
    const auto with = [&](const char* size, const char* amount) {
        return MltGraph::build(session,
                               sampleEdit(sharp.service, {{"av.luma_msize_x", size}, {"av.luma_amount", amount}}), {});
    };
    const auto shown = [](MltGraph& of) { return renderFrame(of.producer(), 12, {320, 180}); };
    const auto graph = with("5", "1");
    for (const char* size : {"5", "6", "8", "7"}) {
        shown(*graph);
        EXPECT_TRUE(graph->apply({kSampleEffect, "av.luma_msize_x", size}));
    }
    EXPECT_TRUE(graph->apply({kSampleEffect, "av.luma_amount", "5"}));
    const FrameImagePtr mended = shown(*graph);
    EXPECT_LT(difference(mended, shown(*with("7", "5"))), 0.02);
    EXPECT_GT(difference(mended, shown(*with("7", "0"))), 0.5);
    session->setAllowList({});
}

TEST_F(EffectRenderingTest, soundThatIsNoNumberIsSilencedAndItsEffectNamed)
{
    const auto graph = MltGraph::build(session, sampleEdit("dynamic_loudness", {}), {});
    const Rendering heard = render(*graph);
    EXPECT_TRUE(std::all_of(heard.sound.begin(), heard.sound.end(), [](float value) { return std::isfinite(value); }));
    const std::vector<EngineProblem> told = graph->takeProblems();
    ASSERT_EQ(told.size(), 1U) << "the effect works in this version: take another one";
    EXPECT_EQ(told[0].subject, kSampleEffect);
    EXPECT_NE(told[0].message.find("Even Loudness"), std::string::npos) << told[0].message;
    render(*graph);
    EXPECT_TRUE(graph->takeProblems().empty()) << "it is told once";
}

} // namespace
} // namespace workbench

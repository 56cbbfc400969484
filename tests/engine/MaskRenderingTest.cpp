// What masked effects look like: outside the shape the source, inside it what the effect makes, to the last bit.
#include "tests/engine/DemoValue.h"
#include "tests/engine/SampleMedia.h"
#include "tests/store/CommandLinePlayer.h"
#include "workbench/engine/worker/catalogue/CatalogueReader.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/EditModel.h"
#include "workbench/model/Editor.h"
#include "workbench/model/Ids.h"
#include "workbench/model/MaskDescription.h"
#include "workbench/model/ParamConversion.h"
#include "workbench/model/projection/Projector.h"
#include "workbench/store/ProjectFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>

namespace workbench
{
namespace
{
constexpr int kWide = 320;
constexpr int kHigh = 180;

using Pixels = std::vector<std::uint8_t>; // r, g, b, a
/** How far a pixel is from an ellipse's centre: below 1 inside it. */
using Distance = std::function<double(int x, int y)>;

Distance ellipse(double centreX, double centreY, double width, double height)
{
    return [=](int x, int y) {
        return std::hypot((x - centreX * kWide) / (width * kWide / 2.0),
                          (y - centreY * kHigh) / (height * kHigh / 2.0));
    };
}

class MaskRendering : public testing::Test
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

    MaskRendering()
    {
        MediaInfo info;
        info.path = SampleMedia::clip();
        info.frames = kSampleFrames;
        info.width = kWide;
        info.height = kHigh;
        info.hasVideo = true;
        clip = editor.addClip({info, 0, 0, 1, kNoObject}, 0).object;
    }

    static Pixels render(const EditModel& edit, int frame)
    {
        const auto graph = MltGraph::build(session, project(edit), {});
        const auto image = renderFrame(graph->producer(), frame, {kWide, kHigh});
        for (const EngineProblem& problem : graph->takeProblems())
            ADD_FAILURE() << problem.message;
        return image ? Pixels(image->rgba.begin(), image->rgba.end()) : Pixels();
    }

    Pixels picture(int frame = 18) const { return render(*edit, frame); }

    /** An effect that does something that can be seen. */
    ObjectId addEffect(const std::string& service)
    {
        const ObjectId id = editor.addEffect(clip, service).object;
        for (const ParamDescription& param : catalogue->find(service)->params)
            if (param.demo)
                set(id, param.property, plainValue(param, *param.demo));
        return id;
    }

    void set(ObjectId effect, std::string_view property, const PlainValue& value)
    {
        for (const auto& param : edit->timeline().findEffect(effect)->params()) {
            if (param->name() != property)
                continue;
            oribund::ParamValue model = param->constantValue();
            EXPECT_TRUE(assignPlain(model, value)) << property;
            param->setConstantValue(model);
        }
    }

    ObjectId addMask(ObjectId effect, double centreX, double centreY, double width, double height)
    {
        const ObjectId id = editor.setMask(effect, true).object;
        set(id, mask::kCentre, std::array<double, 2>{centreX, centreY});
        set(id, mask::kWidth, width * 100.0);
        set(id, mask::kHeight, height * 100.0);
        return id;
    }

    /** How many pixels are not those of `inside` within the shape and of `outside` beyond it. Its very edge may be
        either. */
    static int wrong(const Pixels& shown, const Pixels& inside, const Pixels& outside, const Distance& distance)
    {
        if (shown.size() != kWide * kHigh * 4 || inside.size() != shown.size() || outside.size() != shown.size())
            return -1;
        int count = 0;
        for (int y = 0; y < kHigh; ++y)
            for (int x = 0; x < kWide; ++x) {
                const double d = distance(x, y);
                const auto at = static_cast<std::ptrdiff_t>(4 * (y * kWide + x));
                const auto same = [&](const Pixels& other) {
                    return std::equal(shown.begin() + at, shown.begin() + at + 4, other.begin() + at);
                };
                count += (d < 0.97 && !same(inside)) || (d > 1.03 && !same(outside)) ? 1 : 0;
            }
        return count;
    }

    inline static std::shared_ptr<MltSession> session;
    inline static std::unique_ptr<EffectCatalogue> catalogue;

    EditModelPtr edit =
        oribund::Kt::makePtr<EditModel>(emptyEdit("masks", {kWide, kHigh, 25, 1, 1, 1, 709}), *catalogue);
    Editor editor{*edit};
    ObjectId clip = kNoObject;
};
} // namespace

TEST_F(MaskRendering, EveryCuratedEffectThatCanBeMaskedIsExactInsideAndOutside)
{
    // An effect before it that changes nothing: all others get the picture in full colour resolution then.
    editor.addEffect(clip, "frei0r.brightness");
    const Pixels source = picture();
    int masked = 0;
    for (const auto& effect : catalogue->all()) {
        if (!effect->curated || !effect->blockedBecause.empty() || !effect->maskable())
            continue;
        SCOPED_TRACE(effect->service);
        const ObjectId id = addEffect(effect->service);
        const Pixels whole = picture();
        const bool drawsByLot = effect->service == "frei0r.glitch0r" || whole != picture();
        if (!drawsByLot) {
            addMask(id, 0.5, 0.5, 0.5, 0.5);
            EXPECT_EQ(wrong(picture(), whole, source, ellipse(0.5, 0.5, 0.5, 0.5)), 0);
            ++masked;
        }
        editor.removeEffect(id);
    }
    EXPECT_GE(masked, 40);
}

TEST_F(MaskRendering, MasksOfAMoveABlurAndAColourInARowKeepToTheirShapes)
{
    const Pixels source = picture();
    const std::pair<const char*, double> places[] = {{"affine", 0.5}, {"box_blur", 0.15}, {"frei0r.hueshift0r", 0.8}};
    std::vector<ObjectId> effects;
    std::vector<Pixels> alone;
    std::vector<Distance> shapes;
    for (const auto& [service, centre] : places) {
        editor.setEffectsEnabled(effects, false);
        effects.push_back(addEffect(service));
        alone.push_back(picture());
        EXPECT_NE(alone.back(), source);
        addMask(effects.back(), centre, 0.5, 0.25, 0.6);
        shapes.push_back(ellipse(centre, 0.5, 0.25, 0.6));
        EXPECT_EQ(wrong(picture(), alone.back(), source, shapes.back()), 0) << service;
    }
    editor.setEffectsEnabled(effects, true);
    const Pixels together = picture();
    const Distance anyShape = [&](int x, int y) {
        return std::min({shapes[0](x, y), shapes[1](x, y), shapes[2](x, y)});
    };
    EXPECT_EQ(wrong(together, together, source, anyShape), 0);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(wrong(together, alone[i], together, shapes[i]), 0) << places[i].first;

    // The effects off: the source. The mask off: all of the effect.
    editor.setEffectsEnabled(effects, false);
    EXPECT_EQ(picture(), source);
    const ObjectId mask = objectOf(edit->timeline().findEffect(effects[0])->mask()->id());
    editor.setEffectsEnabled({effects.data(), 1}, true);
    editor.setEffectsEnabled({&mask, 1}, false);
    EXPECT_EQ(picture(), alone[0]);
}

TEST_F(MaskRendering, AKeyedShapeIsTheSameWhenMovedSplitSavedReopenedAndPlayedByMelt)
{
    const Pixels source[] = {picture(10), picture(40)};
    const ObjectId hue = addEffect("frei0r.hueshift0r");
    const Pixels whole[] = {picture(10), picture(40)};
    const ObjectId mask = addMask(hue, 0.4, 0.5, 0.2, 0.5);
    for (const auto& param : edit->timeline().findEffect(mask)->params())
        if (param->name() == mask::kWidth)
            restoreParam(*param, {mask::kWidth,
                                  20.0,
                                  true,
                                  {{{10.0 / kSampleFrames, 20.0, oribund::KeyframeType::Linear, {}, {}},
                                    {40.0 / kSampleFrames, 80.0, oribund::KeyframeType::Linear, {}, {}}}}});
    EXPECT_EQ(wrong(picture(10), whole[0], source[0], ellipse(0.4, 0.5, 0.2, 0.5)), 0);
    EXPECT_EQ(wrong(picture(40), whole[1], source[1], ellipse(0.4, 0.5, 0.8, 0.5)), 0);

    const std::vector<Pixels> before{picture(10), picture(25), picture(40)};
    editor.splitSegment(clip, 25);
    editor.trimStart(clip, 5);
    EXPECT_EQ((std::vector<Pixels>{picture(10), picture(25), picture(40)}), before);
    editor.moveSegment(clip, 1, 0);
    EXPECT_EQ(picture(5), before[0]);
    editor.moveSegment(clip, 1, 5);

    const std::filesystem::path project = SampleMedia::folder() / "masked.mlt";
    ASSERT_EQ(saveProject(project, *edit, {}), "");
    const ProjectReading reading = readProject(project, *catalogue);
    ASSERT_EQ(reading.error, "");
    EXPECT_TRUE(reading.warnings.empty());
    EXPECT_EQ(*reading.edit, edit->snapshot());
    EXPECT_EQ(workbench::project(EditModel(*reading.edit, *catalogue)), workbench::project(*edit));

    if (!test::hasPlayer())
        GTEST_SKIP() << "no melt or ffmpeg";
    const std::filesystem::path played = SampleMedia::folder() / "masked.raw";
    ASSERT_TRUE(test::play(project, played, "f=rawvideo vcodec=rawvideo pix_fmt=rgba mlt_image_format=rgba"));
    std::ifstream file(played, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t start = (i == 0 ? 10U : i == 1 ? 25U : 40U) * before[i].size();
        ASSERT_LE(start + before[i].size(), bytes.size());
        EXPECT_EQ(std::memcmp(bytes.data() + start, before[i].data(), before[i].size()), 0) << i;
    }
}

TEST_F(MaskRendering, IsLeftOutWholeWithItsEffect)
{
    const Pixels source = picture();
    addMask(addEffect("frei0r.hueshift0r"), 0.5, 0.5, 0.5, 0.5);
    const Projection whole = project(*edit);
    MltGraph::Options options;
    options.bypassed = {whole.clips.back().filters[1].id};
    const auto graph = MltGraph::build(session, whole, std::move(options));
    const auto image = renderFrame(graph->producer(), 18, {kWide, kHigh});
    ASSERT_TRUE(image);
    EXPECT_EQ(Pixels(image->rgba.begin(), image->rgba.end()), source);
    EXPECT_TRUE(graph->takeProblems().empty());
}

} // namespace workbench

#include "workbench/engine/protocol/MessageCodec.h"
#include "workbench/engine/worker/catalogue/CatalogueReader.h"
#include "workbench/engine/worker/catalogue/EffectMapping.h"
#include "workbench/engine/worker/catalogue/RawMetadata.h"
#include "workbench/engine/worker/graph/EffectFolders.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/ParamConversion.h"

#include "oribund/host/effects/params/EffectValParam.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <set>

namespace workbench
{
namespace
{

using testing::IsEmpty;

class CatalogueTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        addEffectFolder(ORIBUND_OWN_EFFECTS);
        session = MltSession::open();
        result = new CatalogueResult(readCatalogue(*session));
    }

    static void TearDownTestSuite()
    {
        delete result;
        session.reset();
    }

    static std::shared_ptr<MltSession> session;
    static CatalogueResult* result;
};

std::shared_ptr<MltSession> CatalogueTest::session;
CatalogueResult* CatalogueTest::result = nullptr;

TEST_F(CatalogueTest, offersWhatIsInstalled)
{
    const auto& all = result->catalogue.all();
    const auto usable =
        std::count_if(all.begin(), all.end(), [](const auto& entry) { return entry->blockedBecause.empty(); });
    const auto curated = std::count_if(all.begin(), all.end(), [](const auto& entry) { return entry->curated; });
    EXPECT_GE(all.size(), 450U);
    EXPECT_GE(usable, 330);
    EXPECT_GE(curated, 65);
    EXPECT_EQ(result->catalogue.find("no such effect"), nullptr);
}

TEST_F(CatalogueTest, reachesTheProgramAsItIs)
{
    event::CatalogueRead sent;
    for (const auto& effect : result->catalogue.all())
        sent.effects.push_back(*effect);
    const std::vector<std::uint8_t> bytes = encode(Event(sent));
    EXPECT_LT(bytes.size(), 4'000'000U);
    EXPECT_EQ(decodeEvent(bytes), Event(sent));
}

TEST_F(CatalogueTest, everyEntryIsSound)
{
    EXPECT_THAT(result->problems, IsEmpty());
    for (const auto& effect : result->catalogue.all())
        EXPECT_THAT(checkEffect(*effect), IsEmpty());
    // Colours of this kind of service have no opacity that could be chosen.
    const auto tint = result->catalogue.find("frei0r.tint0r");
    ASSERT_TRUE(tint);
    for (const ParamDescription& param : tint->params)
        if (const auto made = param.kind == ParamKind::Colour ? makeParam(param, {}) : nullptr) {
            const auto colour = oribund::Kt::dynamicCast<oribund::EffectValParam<oribund::ColourData>>(made);
            EXPECT_EQ(colour->getMin().values[3], colour->getMax().values[3]) << param.name;
        }
}

bool holdsInnerName(const std::string& text)
{
    for (const char* const trace : {"_", "av.", "DEPRECATED", "deprecated", "0r", "(*", "  "})
        if (text.find(trace) != std::string::npos)
            return true;
    for (std::size_t i = 2; i < text.size(); ++i) // "blockSize", "brightn3ss", but not "dB"
        if (std::islower(static_cast<unsigned char>(text[i - 1])) &&
            std::islower(static_cast<unsigned char>(text[i - 2])) &&
            (std::isupper(static_cast<unsigned char>(text[i])) ||
             (std::isdigit(static_cast<unsigned char>(text[i])) && i + 1 < text.size() &&
              std::islower(static_cast<unsigned char>(text[i + 1])))))
            return true;
    return text.empty();
}

TEST_F(CatalogueTest, titlesAndLabelsAreWordsAndTellThingsApart)
{
    std::set<std::string> titles;
    for (const auto& effect : result->catalogue.all()) {
        if (!effect->blockedBecause.empty())
            continue;
        EXPECT_FALSE(holdsInnerName(effect->title)) << effect->service << ": " << effect->title;
        EXPECT_TRUE(titles.insert(effect->title).second) << effect->service << ": " << effect->title;
        std::set<std::vector<std::string>> labels;
        for (const ParamDescription& param : effect->params) {
            std::vector<std::string> label = param.groups;
            label.push_back(param.name);
            EXPECT_FALSE(holdsInnerName(param.name)) << effect->service << ": " << param.name;
            EXPECT_TRUE(labels.insert(label).second) << effect->service << ": " << param.name;
            EXPECT_LT(std::max(std::abs(param.minimum), std::abs(param.maximum)), 1e8) << param.name;
        }
    }
}

TEST_F(CatalogueTest, placesAreOnePoint)
{
    const auto probe = result->catalogue.find("frei0r.pr0be");
    ASSERT_TRUE(probe);
    const auto place = std::find_if(probe->params.begin(), probe->params.end(),
                                    [](const auto& param) { return param.kind == ParamKind::Point; });
    ASSERT_NE(place, probe->params.end());
    EXPECT_EQ(place->components, (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(place->name, "Position");
    EXPECT_EQ(std::count_if(probe->params.begin(), probe->params.end(),
                            [](const auto& param) { return param.kind == ParamKind::Point; }),
              1)
        << "a size is no place";
}

TEST_F(CatalogueTest, whatCannotWorkIsBlockedWithAReason)
{
    for (const char* service :
         {"frei0r.curves", "frei0r.3dflippo", "avfilter.gblur_vulkan", "sox.echo", "movit.blur"}) {
        const auto effect = result->catalogue.find(service);
        ASSERT_TRUE(effect) << service;
        EXPECT_FALSE(effect->blockedBecause.empty()) << service;
    }
}

TEST_F(CatalogueTest, curatedEffectsShowUnitsThatPeopleKnow)
{
    const auto saturation = result->catalogue.find("frei0r.saturat0r");
    ASSERT_TRUE(saturation);
    const ParamDescription& amount = saturation->params.at(0);
    EXPECT_EQ(saturation->title, "Saturation");
    EXPECT_EQ(amount.unit, "%");
    EXPECT_DOUBLE_EQ(amount.defaultValue, 100.0);
    EXPECT_NEAR((amount.defaultValue - amount.offset) / amount.scale, 0.125, 1e-12); // raw "unchanged"
    EXPECT_TRUE(amount.animatable);
    EXPECT_EQ(result->catalogue.find("frei0r.hueshift0r")->params.at(0).kind, ParamKind::Angle);
    EXPECT_EQ(result->catalogue.find("lift_gamma_gain")->params.at(1).components.size(), 3U);
    EXPECT_EQ(result->catalogue.find("volume")->medium, EffectDescription::Medium::Audio);
}

TEST(EffectMapping, makesSenseOfUnevenMetadata)
{
    RawEffect raw{"x", "", "Blurs the picture", {"Video"}, {}};
    raw.params = {
        {"end (*DEPRECATED*)", "End", "float", "", "", "", "0", "1", "1", {}, false, true},
        {"swapped", "Swapped", "float", "", "dB", "", "0", "-30", "-15", {}, false, false},
        {"huge", "Huge", "integer", "", "", "", "-2147483648", "2147483647", "3", {}, false, false},
        {"outside", "Outside", "float", "", "", "", "0", "1", "4", {}, false, false},
        {"quoted", "", "string", "", "", "", "", "", "'1.5'", {}, false, false},
        {"look", "", "string", "One of: heat, sepia, xray", "", "", "", "", "sepia", {}, false, false},
        {"unknown", "", "string", "", "", "", "", "", "", {"a", "b"}, false, false},
        {"switch", "", "integer", "", "", "checkbox", "0", "1", "1", {}, false, false},
        {"tint", "", "color", "", "", "", "", "", "0xff000080", {}, false, true},
        {"free", "", "string", "any text", "", "", "", "", "hello", {}, false, false},
        {"level", "", "float", "", "", "", "", "", "", {}, true, false},
        {"swapped", "Again", "float", "", "", "", "0", "1", "0", {}, false, false},
    };
    const auto effect = mapEffect(raw);
    ASSERT_TRUE(effect);
    EXPECT_EQ(effect->category, "Blur and sharpen");
    EXPECT_THAT(checkEffect(*effect), IsEmpty());
    ASSERT_EQ(effect->params.size(), 8U);
    EXPECT_DOUBLE_EQ(effect->find("swapped")->minimum, -30.0);
    EXPECT_LE(effect->find("huge")->maximum, 1000.0);
    EXPECT_GE(effect->find("outside")->maximum, 4.0);
    EXPECT_DOUBLE_EQ(effect->find("quoted")->defaultValue, 1.5);
    EXPECT_EQ(effect->find("look")->items.at(1).raw, "sepia");
    EXPECT_EQ(effect->find("look")->defaultItem, 1);
    EXPECT_EQ(effect->find("unknown")->items.front().raw, ""); // the service's own choice
    EXPECT_TRUE(effect->find("switch")->defaultBool);
    EXPECT_NEAR(effect->find("tint")->defaultColour[3], 0.5, 0.01);
    EXPECT_TRUE(effect->find("tint")->animatable);
}

TEST(EffectMapping, aliasesAreShownOnce)
{
    RawEffect raw{"avfilter.x", "x", "", {"Audio"}, {}};
    raw.params = {
        {"av.frequency", "", "float", "set central frequency", "", "", "0", "999999", "100", {}, false, false},
        {"av.f", "", "float", "set central frequency", "", "", "0", "999999", "100", {}, false, false},
        {"av.fade", "", "float", "set fade", "", "", "0", "1", "0", {}, false, false}};
    const auto effect = mapEffect(raw);
    ASSERT_TRUE(effect);
    ASSERT_EQ(effect->params.size(), 2U);
    EXPECT_EQ(effect->params[0].property, "av.frequency");
    EXPECT_EQ(effect->params[1].property, "av.fade");
}

TEST(EffectMapping, leavesOutWhatIsNoEffect)
{
    EXPECT_FALSE(mapEffect({"resize", "Pad", "", {"Video", "Hidden"}, {}}));
    EXPECT_FALSE(mapEffect({"deinterlace", "", "", {}, {}}));
    EXPECT_TRUE(mapEffect({"invert", "Invert", "", {"Video"}, {}}));
}

} // namespace
} // namespace workbench

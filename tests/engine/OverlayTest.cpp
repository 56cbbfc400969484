#include "workbench/engine/worker/catalogue/Overlay.h"
#include "workbench/engine/worker/catalogue/EffectMapping.h"

#include <gmock/gmock.h>

namespace workbench
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

EffectDescription plainEffect()
{
    EffectDescription effect;
    effect.service = "f";
    effect.title = "F";
    effect.category = "Other";
    ParamDescription param;
    param.property = "0";
    param.name = "Zero";
    param.defaultValue = 0.25;
    param.animatable = true;
    effect.params = {param};
    param.property = "1";
    effect.params.push_back(param);
    return effect;
}

struct Applied {
    EffectDescription effect = plainEffect();
    std::vector<std::string> problems;
};

Applied apply(const std::string& json)
{
    Applied result;
    const Overlay overlay(json, result.problems);
    overlay.apply(result.effect, result.problems);
    return result;
}

TEST(Overlay, convertsTheMetadataIntoShownUnits)
{
    const Applied result = apply(R"({ "effects": [ { "service": "f", "title": "Good", "fixed": { "9": "1" },
        "params": [ { "property": "0", "name": "Amount", "unit": "%", "scale": 200, "offset": -100, "demo": 40 } ] } ] })");
    EXPECT_THAT(result.problems, IsEmpty());
    EXPECT_EQ(result.effect.title, "Good");
    EXPECT_TRUE(result.effect.curated);
    EXPECT_THAT(result.effect.fixedProperties, ElementsAre(std::pair<std::string, std::string>("9", "1")));
    ASSERT_THAT(result.effect.params, SizeIs(1)); // what it does not list is not shown
    const ParamDescription& param = result.effect.params[0];
    EXPECT_DOUBLE_EQ(param.minimum, -100.0);
    EXPECT_DOUBLE_EQ(param.maximum, 100.0);
    EXPECT_DOUBLE_EQ(param.defaultValue, -50.0);
    EXPECT_TRUE(param.animatable);
    EXPECT_EQ(std::get<double>(*param.demo), 40.0);
}

TEST(Overlay, aNegativeScaleTurnsTheRangeRound)
{
    const Applied result =
        apply(R"({ "effects": [ { "service": "f", "params": [ { "property": "0", "scale": -100 } ] } ] })");
    EXPECT_THAT(result.problems, IsEmpty());
    EXPECT_DOUBLE_EQ(result.effect.params.at(0).minimum, -100.0);
    EXPECT_DOUBLE_EQ(result.effect.params.at(0).maximum, 0.0);
}

TEST(Overlay, everyKindOfValueIsRead)
{
    const Applied result = apply(R"({ "effects": [ { "service": "f", "params": [
        { "property": "a", "name": "A", "kind": "colour", "default": "#102030", "demo": "#80ff0000" },
        { "property": "b", "name": "B", "kind": "point", "default": [ 0.5, 1 ], "demo": [ 1, 2 ], "components": [ "x", "y" ] },
        { "property": "c", "name": "C", "kind": "textlist", "items": [ [ "One", "1" ], [ "Two", "2" ] ], "default": "2" },
        { "property": "d", "name": "D", "kind": "bool", "default": true } ] } ] })");
    EXPECT_THAT(result.problems, IsEmpty());
    ASSERT_THAT(result.effect.params, SizeIs(4));
    EXPECT_NEAR(result.effect.params[0].defaultColour[2], 48.0 / 255.0, 1e-12);
    EXPECT_NEAR((std::get<std::array<double, 4>>(*result.effect.params[0].demo))[3], 128.0 / 255.0, 1e-12);
    EXPECT_EQ(result.effect.params[1].defaultPoint[1], 1.0);
    EXPECT_THAT(result.effect.params[1].components, ElementsAre("x", "y"));
    EXPECT_EQ(result.effect.params[2].defaultItem, 1);
    EXPECT_TRUE(result.effect.params[3].defaultBool);
}

TEST(Overlay, groupsConditionsFlagsAndRangesAreRead)
{
    const Applied result = apply(R"({ "effects": [ { "service": "f", "params": [
        { "property": "m", "name": "Mode", "kind": "textlist", "items": [ [ "One", "1" ], [ "Two", "2" ] ] },
        { "property": "h", "name": "Hue", "kind": "range", "flags": "colourRange", "components": [ "0", "1", "2", "3" ],
          "scale": 360, "min": -3600, "max": 3600, "default": [ -30, -10, 10, 30 ], "group": [ "Pick", "Soft" ],
          "collapsed": true, "shown": { "with": "m", "is": [ "2" ] } },
        { "property": "o", "name": "O", "kind": "colour", "flags": [ "colourOffset", "plain" ], "min": -1, "group": "Pick" }
        ] } ] })");
    EXPECT_THAT(result.problems, IsEmpty());
    EXPECT_THAT(checkEffect(result.effect), IsEmpty());
    const ParamDescription& hue = result.effect.params.at(1);
    EXPECT_THAT(hue.defaultColour, ElementsAre(-30, -10, 10, 30));
    EXPECT_THAT(hue.groups, ElementsAre("Pick", "Soft"));
    EXPECT_EQ(hue.displayFlags, 0x100U);
    EXPECT_EQ(result.effect.params.at(2).displayFlags, 0x4200U);

    const auto mistakes = [](const std::string& rest) {
        Applied wrong = apply(R"({ "effects": [ { "service": "f", "params": [ { "property": "0" },
            { "property": "h", "name": "H", )" +
                              rest + " } ] } ] }");
        const auto more = checkEffect(wrong.effect);
        return wrong.problems.size() + more.size();
    };
    EXPECT_EQ(mistakes(R"("kind": "range", "components": [ "0", "1", "2" ])"), 1U);
    EXPECT_EQ(mistakes(R"("kind": "range", "components": [ "0", "1", "2", "3" ], "default": [ 0, 0.5, 0.4, 1 ])"), 1U);
    EXPECT_EQ(mistakes(R"("kind": "range", "components": [ "0", "1", "2", "3" ], "default": [ 0, 0.5, 0.6, 2 ])"), 1U);
    EXPECT_EQ(mistakes(R"("flags": "shiny")"), 1U);
    EXPECT_EQ(mistakes(R"("shown": { "with": "0", "is": [ "1" ] })"), 1U) << "a number decides nothing";
    EXPECT_EQ(mistakes(R"("shown": { "with": "gone", "is": [ "1" ] })"), 1U);
}

TEST(Overlay, aMistakeCostsOnlyItsOwnEntry)
{
    const Applied result = apply(R"({ "effects": [ 7, { "title": "no service" }, { "service": "f", "params": [
        { "property": "0", "min": 5, "max": 1 },
        { "property": "1", "default": "text" },
        { "property": "2", "kind": "nonsense" },
        { "name": "no property" },
        { "property": "3", "name": "Three", "kind": "textlist", "items": [ [ "One", "1" ] ], "default": "2" },
        { "property": "1", "name": "Good", "max": 2 } ] } ] })");
    EXPECT_THAT(result.problems, SizeIs(7));
    ASSERT_THAT(result.effect.params, SizeIs(1));
    EXPECT_EQ(result.effect.params[0].name, "Good");
}

TEST(Overlay, brokenTextLeavesTheEffectsAsTheyAre)
{
    for (const char* text : {"", "{", "[]", "nonsense", "\xff\xfe"}) {
        const Applied result = apply(text);
        EXPECT_THAT(result.problems, SizeIs(1)) << text;
        EXPECT_EQ(result.effect, plainEffect());
    }
}

TEST(Overlay, blocksByNameAndByPattern)
{
    for (const char* pattern : {"f", "*", "*f", "f*", "*f*"})
        EXPECT_EQ(apply(R"({ "blocked": [ { "service": ")" + std::string(pattern) + R"(", "reason": "because" } ] })")
                      .effect.blockedBecause,
                  "because")
            << pattern;
    for (const char* pattern : {"g", "f.*", "*g*", "ff"})
        EXPECT_EQ(apply(R"({ "blocked": [ { "service": ")" + std::string(pattern) + R"(" } ] })").effect.blockedBecause,
                  "")
            << pattern;
}

TEST(Overlay, anEffectOfItsOwnIsListedWithItsParametersWhereItsPlugInIsMissing)
{
    std::vector<std::string> problems;
    const Overlay overlay(R"({ "effects": [ { "service": "f", "title": "Ours", "category": "Colour", "own": true,
        "params": [ { "property": "0", "name": "Zero", "scale": 100, "default": 50 } ] },
        { "service": "g", "title": "Theirs", "params": [] } ] })",
                          problems);
    EffectCatalogue catalogue;
    const auto missing = overlay.missing(catalogue, problems);
    ASSERT_THAT(missing, SizeIs(1));
    EXPECT_THAT(checkEffect(missing[0]), IsEmpty());
    EXPECT_EQ(missing[0].params.at(0).maximum, 100.0);
    EXPECT_THAT(missing[0].blockedBecause, HasSubstr("missing"));
    catalogue.add(plainEffect());
    EXPECT_THAT(overlay.missing(catalogue, problems), IsEmpty());
    EXPECT_THAT(problems, IsEmpty());
}

TEST(Overlay, saysWhatCannotBeMasked)
{
    EffectDescription keyer = plainEffect();
    keyer.category = "Keying";
    EffectDescription sound = plainEffect();
    sound.medium = EffectDescription::Medium::Audio;
    std::vector<std::string> problems;
    const Overlay silent("{}", problems);
    EXPECT_EQ(silent.whyNoMask(plainEffect()), "");
    EXPECT_THAT(silent.whyNoMask(keyer), HasSubstr("transparent"));
    EXPECT_THAT(silent.whyNoMask(sound), HasSubstr("sound"));
    const Overlay allowing(R"({ "effects": [ { "service": "f", "maskable": true } ] })", problems);
    EXPECT_EQ(allowing.whyNoMask(keyer), "");
    const Overlay refusing(R"({ "limits": [ { "service": "f", "maskable": "It leaves holes." } ] })", problems);
    EXPECT_EQ(refusing.whyNoMask(plainEffect()), "It leaves holes.");
}

TEST(Overlay, limitsChangeWhatTheyNameAndKeepTheRest)
{
    const Applied result = apply(R"({ "limits": [ { "service": "f", "help": "Slow.", "omit": [ "1" ],
        "params": [ { "property": "0", "max": 0.5 }, { "property": "gone", "max": 1 } ] } ] })");
    EXPECT_THAT(result.problems, IsEmpty());
    EXPECT_FALSE(result.effect.curated);
    EXPECT_EQ(result.effect.help, "Slow.");
    ASSERT_THAT(result.effect.params, SizeIs(1));
    EXPECT_EQ(result.effect.params[0].maximum, 0.5);
    EXPECT_EQ(result.effect.params[0].defaultValue, 0.25);

    const Applied wrong =
        apply(R"({ "limits": [ { "service": "f", "params": [ { "property": "0", "max": 0.1 } ] } ] })");
    EXPECT_THAT(wrong.problems, ElementsAre(HasSubstr("default is out of range")));
    EXPECT_EQ(wrong.effect.params.at(0).maximum, 1.0);
}

} // namespace
} // namespace workbench

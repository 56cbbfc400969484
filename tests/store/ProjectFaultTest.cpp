#include "tests/store/AnyEdit.h"
#include "tests/store/TemporaryFolder.h"
#include "workbench/store/ProjectFile.h"
#include "workbench/store/json/EditJson.h"

#include <gmock/gmock.h>

using namespace sample;
using test::slurp;
using test::spill;
using test::TemporaryFolder;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{
/** A project with two segments, a transition between them, an animated effect, an unknown effect and a cue. */
EditData sampleData()
{
    Bench bench;
    const ObjectId left = bench.addPicture(0, 100);
    bench.addPicture(100, 100, 300);
    bench.editor.addTransition(left, {0, 0, 0, 20, "", false, 0.0});
    const ObjectId effect = bench.editor.addEffect(left, "tint").object;
    bench.param<double>(effect, kLevel)->setFunctionType(oribund::EffectValParamFnType::Keyframed, 0.25);
    bench.param<double>(effect, kLevel)->addKeyframeAt(0.75, 80.0);
    bench.editor.addEffect(left, EffectData{0, "vanished", true, {}, {{"amount", "0=1;50=2"}, {"mode", " x "}}});
    bench.editor.addCue({{}, 1.5, L"here", {}, {}, 4});
    return bench.edit->snapshot();
}

std::string sampleXml()
{
    return projectXml(EditModel(sampleData(), catalogue()), {}, {});
}

/** Replaces the first place where `from` stands, which must be there. */
std::string edited(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

ProjectReading parse(const std::string& xml)
{
    ProjectReading reading = parseProject(xml, "/folder", catalogue());
    EXPECT_EQ(reading.error.empty(), reading.edit.has_value());
    if (reading.edit) {
        EXPECT_EQ(findFault(*reading.edit), "");
    }
    return reading;
}
} // namespace

TEST(ProjectFaults, ACutOffFileIsRefusedWhereverItEnds)
{
    const std::string whole = sampleXml();
    ASSERT_TRUE(parse(whole));
    const std::size_t end = whole.rfind('>') + 1;
    for (std::size_t size = 0; size < end; size += size < 300 || size + 300 > end ? 1 : 97) {
        const ProjectReading reading = parse(whole.substr(0, size));
        ASSERT_FALSE(reading) << size;
        ASSERT_NE(reading.error, "");
    }
    EXPECT_THAT(parse(whole.substr(0, end / 2)).error, HasSubstr("cut off or damaged, at line"));
}

TEST(ProjectFaults, WhatIsNoProjectIsRefusedWithAReason)
{
    const TemporaryFolder folder;
    const std::pair<std::string, std::string> files[] = {
        {"", "empty"},
        {" \n", "empty"},
        {"hello", "no project"},
        {std::string("\0\1\2\3<mlt", 8), "no project"},
        {"<html/>", "no project"},
        {"<mlt/>", "nothing in it"},
        {"<mlt></mlt><mlt>", "cut off or damaged"},
    };
    for (const auto& [text, reason] : files) {
        SCOPED_TRACE(text);
        spill(folder / "p.mlt", text);
        const ProjectReading reading = readProject(folder / "p.mlt", catalogue());
        EXPECT_FALSE(reading);
        EXPECT_THAT(reading.error, HasSubstr(reason));
        EXPECT_THAT(reading.error, HasSubstr("p.mlt"));
        EXPECT_EQ(slurp(folder / "p.mlt"), text) << "the file is as it was";
    }
    EXPECT_THAT(readProject(folder / "none.mlt", catalogue()).error, HasSubstr("no such file"));
    EXPECT_THAT(readProject(folder.path(), catalogue()).error, HasSubstr("a folder"));
    EXPECT_THAT(parse(edited(sampleXml(), ":version\">2<", ":version\">3<")).error, HasSubstr("newer version"));
    EXPECT_EQ(parse(edited(sampleXml(), ":version\">2<", ":version\">1<")).error, "") << "what came before is read";
    EXPECT_THAT(parse(edited(sampleXml(), "\"oribund:edit\">{", "\"oribund:edit\">")).error, HasSubstr("damaged"));
}

TEST(ProjectFaults, SingleValuesAreMendedWithAWarning)
{
    const EditData data = sampleData();
    const auto mended = [&](const std::string& from, const std::string& to, const std::string& about) {
        SCOPED_TRACE(from + " -> " + to);
        ProjectReading reading = parse(edited(sampleXml(), from, to));
        EXPECT_EQ(reading.error, "");
        EXPECT_THAT(reading.warnings, Contains(HasSubstr(about)));
        return reading.edit.value_or(EditData());
    };

    EXPECT_EQ(mended("\"width\":1920", "\"width\":-5", "\"width\"").format.width, 1);
    EXPECT_EQ(mended("\"width\":1920", "\"width\":\"wide\"", "\"width\"").format.width, 1920);
    EXPECT_EQ(mended("\"fpsNumerator\":25", "\"fpsNumerator\":1e300", "\"fpsNumerator\"").format.fpsNumerator,
              1'000'000);
    EXPECT_EQ(mended("\"length\":100", "\"length\":99999999999", "\"length\"").tracks[0].segments[0].length,
              kMostFrames);
    EXPECT_EQ(mended("\"time\":1.5", "\"time\":-3", "\"time\"").cues[0].time, 0.0);
    EXPECT_EQ(mended("\"softness\":0.0", "\"softness\":7", "\"softness\"").tracks[0].transitions[0].softness, 1.0);

    // What cannot stay goes, and only that.
    EditData expected = data;
    const SegmentData first = expected.tracks[0].segments[0];
    expected.tracks[0].segments.pop_back();
    expected.tracks[0].transitions.clear();
    EXPECT_EQ(mended("\"start\":100", "\"start\":50", "overlap"), expected);
    EXPECT_EQ(mended("\"right\":", "\"right\":9", "transitions").tracks[0].transitions.size(), 0u);
    for (const auto& [from, to] : {std::pair("\"length\":20,", "\"length\":250,"), std::pair("\"in\":300", "\"in\":9")})
        EXPECT_EQ(mended(from, to, "transitions").tracks[0].segments.size(), 2u) << "no media before it, or too long";
    const EditData orphan = mended("\"oribund:segment\">{", "\"oribund:segment\">{{", "damaged");
    EXPECT_EQ(orphan.tracks[0].segments.size(), 1u);

    const EditData played = mended("\"oribund:effect\">{", "\"oribund:effect\">{{", "from what is played");
    ASSERT_EQ(played.tracks[0].segments[0].effects.size(), 2u);
    const EffectData& tint = played.tracks[0].segments[0].effects[0];
    EXPECT_EQ(tint.service, "tint");
    ASSERT_EQ(tint.params.at(0).channels.size(), 1u);
    EXPECT_EQ(tint.params[0].channels[0].back().value, 80.0);

    // What an older version with wider ranges has saved is told, with what becomes of it.
    const std::string constant = edited(sampleXml(), "\"keyframed\":true", "\"keyframed\":false");
    EXPECT_THAT(parse(edited(constant, "\"constant\":", "\"constant\":9999")).warnings, Contains(HasSubstr("is 100")));

    // A keyframe that is out of order, or none, is left out; the curve goes on.
    const ParamData& level = first.effects[0].params[0];
    ASSERT_EQ(level.channels[0].size(), 2u);
    for (const char* times : {"\"times\":[0.75,0.75]", "\"times\":[null,0.75]", "\"times\":[\"0.25\",0.75]"}) {
        const EditData read = mended("\"times\":[0.25,0.75]", times, "\"Level\": some keyframes");
        EXPECT_EQ(read.tracks[0].segments[0].effects[0].params[0].channels[0].size(), 1u);
    }
}

TEST(ProjectFaults, IdsThatAreTakenAreGivenAnew)
{
    const EditData data = sampleData();
    const SegmentData& second = data.tracks[0].segments[1];
    const std::string own = "{\"id\":" + std::to_string(second.id) + ",";
    const std::string taken = "{\"id\":" + std::to_string(data.tracks[0].segments[0].id) + ",";
    for (const std::string& id : {taken, std::string("{\"id\":0,"), std::string("{")}) {
        const ProjectReading reading = parse(edited(sampleXml(), own, id));
        ASSERT_TRUE(reading) << reading.error;
        ASSERT_EQ(reading.edit->tracks[0].segments.size(), 2u);
        EXPECT_GT(reading.edit->tracks[0].segments[1].id, second.id);
        EXPECT_EQ(reading.edit->tracks[0].segments[0], data.tracks[0].segments[0]);
    }
}

TEST(ProjectFaults, UnknownEffectsAreKeptAsTheyWereAndPlayedByNobody)
{
    const std::string xml = sampleXml();
    EXPECT_THAT(xml, Not(HasSubstr("<property name=\"mlt_service\">vanished</property>")));
    const EffectCatalogue nothing;
    const ProjectReading reading = parseProject(xml, {}, nothing);
    ASSERT_TRUE(reading);
    const EditModel stranger(*reading.edit, nothing);
    const ProjectReading again = parseProject(projectXml(stranger, {}, {}), {}, catalogue());
    ASSERT_TRUE(again);
    EXPECT_EQ(*again.edit, sampleData()) << "even after a program that knows none of the effects has saved it";
}

TEST(ProjectFaults, HostileDocumentsDoNoHarm)
{
    const std::string inside = "\"name\":\"test\"";
    EXPECT_FALSE(parse(edited(sampleXml(), inside, "\"name\":" + std::string(500'000, '['))));
    std::string nested = "<mlt>";
    for (int i = 0; i < 200'000; ++i)
        nested += "<tractor>";
    EXPECT_FALSE(parse(nested));

    // Entities are not expanded, so ten of ten of ten stay one.
    std::string bomb = "<!DOCTYPE mlt [<!ENTITY a \"aaaaaaaaaa\">";
    for (char c = 'b'; c <= 'z'; ++c) {
        bomb += std::string("<!ENTITY ") + c + " \"";
        for (int i = 0; i < 10; ++i)
            bomb += std::string("&") + static_cast<char>(c - 1) + ';';
        bomb += "\">";
    }
    const std::string whole = sampleXml();
    const std::string body = whole.substr(whole.find("<mlt"));
    const ProjectReading reading = parse(bomb + "]>" + edited(body, "\"name\":\"test\"", "\"name\":\"&z;\""));
    ASSERT_TRUE(reading) << reading.error;
    EXPECT_EQ(reading.edit->name, "&z;");

    // Tracks that show themselves, in turn.
    const ProjectReading loop = parse(R"(<mlt><tractor id="a"><track producer="b"/><track producer="b"/></tractor>
        <tractor id="b"><track producer="a"/><track producer="a"/><track producer="p"/></tractor>
        <playlist id="p"><entry producer="p"/><entry producer="a"/></playlist></mlt>)");
    EXPECT_TRUE(loop || !loop.error.empty());

    // Forty tracks, each of which has forty, and so on: more than anybody can look at, however few are seen.
    std::string many = "<mlt>";
    for (int level = 0; level < 8; ++level) {
        many += "<tractor id=\"" + std::to_string(level) + "\">";
        for (int i = 0; i < 40; ++i)
            many += "<track hide=\"both\" producer=\"" + std::to_string(level + 1) + "\"/>";
        many += "</tractor>";
    }
    many += "<playlist id=\"8\"><entry producer=\"none\"/></playlist>";
    EXPECT_FALSE(parse(many + "<tractor><track producer=\"0\"/></tractor></mlt>"));

    const ProjectReading huge = parse("<mlt><profile width=\"32768\" height=\"32768\"/><producer/></mlt>");
    EXPECT_THAT(huge.error, HasSubstr("32768 x 32768"));
}

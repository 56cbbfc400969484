#include "tests/support/SampleEdit.h"
#include "workbench/model/EditModel.h"
#include "workbench/model/projection/Projector.h"
#include "workbench/store/ProjectFile.h"

#include <gmock/gmock.h>

using namespace sample;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace
{
ProjectReading import(const std::string& body)
{
    ProjectReading reading = parseProject("<?xml version=\"1.0\"?>\n<mlt>" + body + "</mlt>", "/media", catalogue());
    EXPECT_EQ(reading.error, "");
    EXPECT_TRUE(reading.imported);
    return reading;
}

const char* const kProfile = R"(<profile width="720" height="576" frame_rate_num="50" frame_rate_den="1"
    sample_aspect_num="16" sample_aspect_den="15" colorspace="601"/>)";
} // namespace

TEST(ProjectImport, TakesTracksClipsAndTimes)
{
    const ProjectReading reading = import(std::string(kProfile) + R"(
      <producer id="black"><property name="mlt_service">color</property><property name="resource">black</property></producer>
      <producer id="p0" out="199"><property name="resource">sub/film.mov</property></producer>
      <chain id="p1"><property name="length">00:00:10.000</property><property name="resource">/else/song.wav</property></chain>
      <producer id="p2"><property name="mlt_service">qimage</property><property name="resource">still.png</property></producer>
      <producer id="p3"><property name="mlt_service">colour</property><property name="resource">red</property></producer>
      <playlist id="bg"><entry producer="black" in="0" out="999"/></playlist>
      <playlist id="t0"><blank length="00:00:01.000"/><entry producer="p0" in="20" out="00:00:01.980"/>
        <entry producer="p2" in="0" out="24"/></playlist>
      <playlist id="t1"><entry producer="p1" in="0" out="49"/></playlist>
      <playlist id="t2"><blank length="5"/><entry producer="p3" in="0" out="9"/></playlist>
      <tractor id="main"><track producer="bg"/><track producer="t0"/><track producer="t1" hide="video"/>
        <track producer="t2"/></tractor>)");
    const EditData& edit = *reading.edit;
    EXPECT_EQ(edit.format, (FormatData{720, 576, 50, 1, 16, 15, 601}));

    // Top first: the colour, the film and the still, then the film's sound, the song.
    ASSERT_EQ(edit.tracks.size(), 4u);
    const auto mediaOf = [&edit](const SegmentData& segment) {
        for (const MediaData& media : edit.media)
            if (media.id == segment.media)
                return media.info;
        return MediaInfo();
    };
    const SegmentData& red = edit.tracks[0].segments.at(0);
    EXPECT_EQ(mediaOf(red).path, "colour:red");
    EXPECT_TRUE(mediaOf(red).isStill());
    EXPECT_EQ(red.start, 5);

    ASSERT_EQ(edit.tracks[1].segments.size(), 2u);
    const SegmentData& film = edit.tracks[1].segments[0];
    EXPECT_EQ(mediaOf(film).path, "/media/sub/film.mov");
    EXPECT_EQ(mediaOf(film).frames, 200);
    EXPECT_EQ(film.start, 50);
    EXPECT_EQ(film.in, 20);
    EXPECT_EQ(film.length, 80);
    EXPECT_EQ(edit.tracks[1].segments[1].start, 130);
    EXPECT_TRUE(mediaOf(edit.tracks[1].segments[1]).isStill());

    EXPECT_EQ(edit.tracks[2].kind, TrackKind::Audio);
    ASSERT_EQ(edit.tracks[2].segments.size(), 1u) << "a still has no sound";
    EXPECT_EQ(edit.tracks[2].segments[0].link, film.link);
    EXPECT_NE(film.link, kNoObject);
    EXPECT_EQ(mediaOf(edit.tracks[3].segments.at(0)).frames, 500);
    EXPECT_FALSE(mediaOf(edit.tracks[3].segments[0]).hasVideo);
    EXPECT_EQ(reading.missingMedia.size(), 3u) << "a colour is no file";
}

TEST(ProjectImport, TakesEffectsAsParametersWhereItKnowsThemAndAsTheyAreElsewhere)
{
    const ProjectReading reading = import(R"(
      <producer id="p"><property name="resource">a.mp4</property><property name="length">100</property>
        <filter><property name="mlt_service">tint</property><property name="Level">0=0.1;25~=0.2;50=0.4</property>
          <property name="r">0.25</property><property name="g">0.5</property><property name="b">1</property>
          <property name="Colour">#80ff0000</property><property name="Centre">10 20 0 0 1</property>
          <property name="On">1</property><property name="Mode">20</property><property name="Turn">0|=1;00:00:00.200=2</property>
          <property name="Whole">0=odd</property>
          <property name="extra">kept</property></filter>
        <filter><property name="mlt_service">echo</property><property name="Delay">1.5</property></filter>
        <filter><property name="mlt_service">unheard</property><property name="disable">1</property>
          <property name="odd"> 1 &lt; 2 </property></filter></producer>
      <playlist id="t"><entry producer="p" in="0" out="99"/></playlist>)");
    ASSERT_EQ(reading.edit->tracks.size(), 2u);
    const auto& effects = reading.edit->tracks[0].segments.at(0).effects;
    ASSERT_EQ(effects.size(), 2u);
    const auto param = [&effects](const std::string& property) {
        for (const ParamData& candidate : effects[0].params)
            if (candidate.property == property)
                return candidate;
        return ParamData();
    };
    const ParamData level = param("Level");
    ASSERT_EQ(level.channels.size(), 1u);
    ASSERT_EQ(level.channels[0].size(), 3u);
    EXPECT_EQ(level.channels[0][1].time, 0.25);
    EXPECT_EQ(level.channels[0][1].value, 20.0) << "in shown units";
    EXPECT_EQ(level.channels[0][1].type, oribund::KeyframeType::Smooth);
    EXPECT_EQ(param("Grey").constant, PlainValue(std::array<double, 4>{0.5, 1.0, 2.0, 1.0}));
    EXPECT_EQ(param("Colour").constant, PlainValue(std::array<double, 4>{1.0, 0.0, 0.0, 128 / 255.0}));
    EXPECT_EQ(param("Centre").constant, PlainValue(std::array<double, 2>{10.0, 20.0}));
    EXPECT_EQ(param("On").constant, PlainValue(true));
    EXPECT_EQ(param("Mode").constant, PlainValue(std::string("20")));
    const ChannelData turn = param("Turn").channels.at(0);
    ASSERT_EQ(turn.size(), 3u) << "what is held is straight up to the last frame";
    EXPECT_EQ(turn[1].time, 0.04);
    EXPECT_EQ(turn[1].value, 1.0);
    EXPECT_EQ(turn[2].time, 0.05);
    EXPECT_THAT(effects[0].rest, ElementsAre(Pair("Whole", "0=odd"), Pair("extra", "kept")));
    EXPECT_THAT(reading.warnings, Contains(HasSubstr("\"Whole\"")));

    EXPECT_EQ(effects[1].service, "unheard");
    EXPECT_FALSE(effects[1].enabled);
    EXPECT_THAT(effects[1].rest, ElementsAre(Pair("odd", " 1 < 2 ")));
    ASSERT_EQ(reading.edit->tracks[1].segments.at(0).effects.size(), 1u) << "the sound's effect goes to the sound";
    EXPECT_EQ(reading.edit->tracks[1].segments[0].effects[0].service, "echo");
}

TEST(ProjectImport, TakesTheTimelineRatherThanTheListOfMediaBesideIt)
{
    const std::string bin = R"(<producer id="p"><property name="resource">a.mp4</property></producer>
      <playlist id="bin"><property name="xml_retain">1</property><entry producer="p" in="0" out="9"/></playlist>)";
    const std::string timeline = R"(<playlist id="t"><blank length="5"/><entry producer="p" in="0" out="4"/></playlist>
      <tractor id="main"><track producer="t"/></tractor>)";
    const auto startOf = [](const std::string& body) {
        const ProjectReading reading = parseProject("<mlt producer=\"bin\">" + body + "</mlt>", "/media", catalogue());
        return reading ? reading.edit->tracks.at(0).segments.at(0).start : -1;
    };
    EXPECT_EQ(startOf(bin + timeline), 5);
    EXPECT_EQ(startOf(timeline + bin), 5);
    EXPECT_EQ(startOf(bin), 0) << "where there is nothing else, it is what there is";
}

TEST(ProjectImport, CountsKeyframesFromWhereTheFilterBeginsAndReadsCommas)
{
    const auto reading = import(R"(
      <producer id="p" in="0" out="199"><property name="resource">a.mp4</property>
        <filter in="10" out="199"><property name="mlt_service">tint</property>
          <property name="Level">10=0,1;60=0,35</property></filter></producer>
      <playlist id="t"><entry producer="p" in="20" out="00:00:04,760"/></playlist>)");
    const SegmentData& segment = reading.edit->tracks.at(0).segments.at(0);
    EXPECT_EQ(segment.length, 100);
    ASSERT_EQ(segment.effects.at(0).params.size(), 1u);
    const ChannelData& keys = segment.effects[0].params[0].channels.at(0);
    EXPECT_EQ(keys.at(0).time, 0.0);
    EXPECT_EQ(keys.at(1).time, 0.5);
    EXPECT_EQ(keys.at(1).value, 35.0);
    EXPECT_EQ(segment.effects[0].first, 0) << "on all that is shown";
}

/** What uses a clip counts from the clip's first frame, and so do the filters on either. */
TEST(ProjectImport, CountsFromTheFirstFrameOfAClip)
{
    const auto reading = import(R"(
      <producer id="p" in="25" out="124"><property name="resource">a.mp4</property>
        <filter in="30" out="40"><property name="mlt_service">tint</property></filter></producer>
      <playlist id="t"><entry producer="p" in="10" out="59"/><entry producer="p"/></playlist>)");
    const auto& segments = reading.edit->tracks.at(0).segments;
    ASSERT_EQ(segments.size(), 2u);
    EXPECT_EQ(std::pair(segments[0].in, segments[0].length), std::pair(35, 50));
    EXPECT_EQ(std::pair(segments[1].in, segments[1].length), std::pair(25, 100));
    EXPECT_EQ(std::pair(segments[0].effects.at(0).first, segments[0].effects[0].last), std::pair(55, 65));
}

/** A filter on a part of its clip is at work there still, also once the clip was cut shorter. */
TEST(ProjectImport, KeepsWhereAFilterBeginsAndEnds)
{
    const auto reading = import(R"(<producer id="p" out="199"><property name="resource">a.mp4</property>
        <filter in="50" out="60"><property name="mlt_service">tint</property><property name="Level">0=0;10=1</property>
        </filter></producer>)");
    EditData edit = *reading.edit;
    const auto played = [&edit] { return project(EditModel(edit, catalogue())).clips.back().filters.at(0); };
    EXPECT_EQ(std::pair(played().in, played().out), std::pair(50, 60));
    EXPECT_THAT(played().properties, Contains(ProjectedProperty{"Level", "0=0;10=1"}));
    SegmentData& segment = edit.tracks.at(0).segments.at(0);
    segment.in = 55;
    segment.length = 20;
    EXPECT_EQ(std::pair(played().in, played().out), std::pair(55, 60));
    segment.in = 100;
    EXPECT_GT(played().in, 119) << "not at work, and not lost";
}

/** What `melt -mix` and editors write: cuts that lie over each other stand between what is left of the clips. */
TEST(ProjectImport, TakesOverlappingCutsAsTransitions)
{
    const auto cut = [](const char* tag, const char* clip, int in, int out) {
        return std::string("<") + tag + " producer=\"" + clip + "\" in=\"" + std::to_string(in) + "\" out=\"" +
               std::to_string(out) + "\"/>";
    };
    const auto mix = [&cut](const char* id, const std::string& first, const std::string& second, const char* mixer) {
        return std::string("<tractor id=\"") + id + "\" in=\"0\" out=\"9\">" + first + second + "<transition>" + mixer +
               "</transition></tractor>";
    };
    const ProjectReading reading = import(
        R"(<chain id="a" out="99"><property name="resource">a.mp4</property></chain>
           <chain id="b" out="99"><property name="resource">b.mp4</property>
             <link><property name="mlt_service">timeremap</property></link></chain>)" +
        mix("m1", cut("track", "a", 40, 49), cut("track", "b", 10, 19),
            R"(<property name="mlt_service">luma</property><property name="resource">/maps/wipe.pgm</property>
               <property name="softness">0,25</property><property name="invert">1</property>)") +
        mix("m2", cut("track", "b", 30, 39), cut("track", "a", 0, 9),
            R"(<property name="mlt_service">affine</property>)") +
        "<playlist id=\"t\">" + cut("entry", "a", 0, 39) + cut("entry", "m1", 0, 9) + cut("entry", "b", 20, 29) +
        cut("entry", "m2", 0, 9) + cut("entry", "a", 10, 19) + cut("entry", "a", 20, 29) + "</playlist>");
    const TrackData& track = reading.edit->tracks.at(0);
    const auto place = [&track](std::size_t i) {
        const SegmentData& segment = track.segments.at(i);
        return std::array{segment.start, segment.in, segment.length};
    };
    ASSERT_EQ(track.segments.size(), 4U);
    EXPECT_EQ(place(0), (std::array{0, 0, 45}));
    EXPECT_EQ(place(1), (std::array{45, 15, 20}));
    EXPECT_EQ(place(2), (std::array{65, 5, 15}));
    EXPECT_EQ(place(3), (std::array{80, 20, 10})) << "a cut without a mix is one";
    ASSERT_EQ(track.transitions.size(), 2U);
    const TransitionData& wipe = track.transitions[0];
    EXPECT_EQ(wipe,
              (TransitionData{wipe.id, track.segments[0].id, track.segments[1].id, 10, "/maps/wipe.pgm", true, 0.25}));
    EXPECT_EQ(track.transitions[1].left, track.segments[1].id);
    EXPECT_EQ(track.transitions[1].wipe, "");
    EXPECT_EQ(reading.edit->tracks.at(1).transitions.size(), 2U) << "the sound is mixed there, too";
    EXPECT_THAT(reading.warnings, Contains(HasSubstr("1 change of speed.")));
    EXPECT_THAT(reading.warnings, Contains(HasSubstr("1 transition of a kind of its own")));
}

/** What an editor writes around its timeline: marks, the list of its media, a black track, what lays tracks together.
 */
TEST(ProjectImport, LosesNothingOfAnEditorsProject)
{
    const std::string file = R"(<mlt LC_NUMERIC="C" producer="main_bin">
      <profile width="1280" height="720" frame_rate_num="25" frame_rate_den="1"/>
      <chain id="c0" out="00:00:03.960"><property name="resource">a.mp4</property></chain>
      <chain id="c1" out="99"><property name="resource">unused.mp4</property></chain>
      <playlist id="main_bin"><property name="xml_retain">1</property><entry producer="c0"/><entry producer="c1"/></playlist>
      <producer id="black"><property name="resource">0</property><property name="mlt_service">color</property></producer>
      <playlist id="background"><entry producer="black" in="0" out="99"/></playlist>
      <playlist id="p0"><entry producer="c0" in="00:00:00.000" out="00:00:03.960"/>
        <filter><property name="mlt_service">unheard</property></filter></playlist>
      <tractor id="t0"><property name="shotcut">1</property>
        <properties name="shotcut:markers"><properties name="0"><property name="text">Here</property>
          <property name="start">00:00:02.000</property><property name="color">#ff0000</property></properties></properties>
        <track producer="background"/><track producer="p0"/>
        <transition><property name="mlt_service">mix</property><property name="always_active">1</property></transition>
        <transition><property name="mlt_service">frei0r.cairoblend</property><property name="disable">1</property>
        </transition></tractor></mlt>)";
    const ProjectReading reading = parseProject(file, "/media", catalogue());
    ASSERT_TRUE(reading) << reading.error;
    EXPECT_EQ(reading.edit->tracks.at(0).segments.at(0).length, 100);
    EXPECT_EQ(reading.edit->media.size(), 2U);
    ASSERT_EQ(reading.edit->cues.size(), 1U);
    EXPECT_EQ(reading.edit->cues[0].time, 2.0);
    EXPECT_EQ(reading.edit->cues[0].name, oribund::WString(L"Here"));
    EXPECT_EQ(reading.edit->cues[0].colour.r, 1.0);
    ASSERT_EQ(reading.warnings.size(), 1U);
    EXPECT_THAT(reading.warnings[0], HasSubstr(": 1 effect on a whole track. The"));

    const std::string saved = projectXml(EditModel(*reading.edit, catalogue()), {}, "/media");
    EXPECT_EQ(parseProject(saved, "/media", catalogue()).edit->original, file) << "what was left out is not lost";
}

TEST(ProjectImport, ReadsColoursHoweverTheyAreWritten)
{
    using Colour = std::array<double, 4>;
    const std::pair<const char*, Colour> colours[] = {{"#ff8000", {1.0, 128 / 255.0, 0.0, 1.0}},
                                                      {"#33ff8000", {1.0, 128 / 255.0, 0.0, 0.2}},
                                                      {"0xff800033", {1.0, 128 / 255.0, 0.0, 0.2}}};
    const auto effectOf = [](const std::string& text) {
        return import(
                   "<producer><property name=\"resource\">a.mp4</property><filter><property name=\"mlt_service\">tint"
                   "</property><property name=\"Colour\">" +
                   text + "</property></filter></producer>")
            .edit->tracks.at(0)
            .segments.at(0)
            .effects.at(0);
    };
    for (const auto& [text, colour] : colours) {
        ASSERT_EQ(effectOf(text).params.size(), 1u) << text;
        EXPECT_EQ(effectOf(text).params[0].constant, PlainValue(colour)) << text;
    }
    for (const char* text : {"red", "ff8000", "#ff80", "0xff8000", "#ff80zz", "", "#123456789"})
        EXPECT_TRUE(effectOf(text).params.empty()) << text;
}

TEST(ProjectImport, SpreadsTracksWithinTracksAndSaysWhatItLeavesOut)
{
    const ProjectReading reading = import(R"(
      <producer id="p"><property name="resource">a.mp4</property><property name="audio_index">-1</property></producer>
      <playlist id="t0"><entry producer="p" in="0" out="9"/></playlist>
      <playlist id="t1"><entry producer="p" in="5" out="9"/><entry producer="inner" in="0" out="4"/>
        <entry producer="p" in="0" out="1"/></playlist>
      <tractor id="inner"><track producer="t0"/><track producer="t1" hide="both"/></tractor>
      <tractor id="main"><multitrack><track producer="inner"/></multitrack>
        <transition><property name="mlt_service">luma</property></transition>
        <transition><property name="mlt_service">mix</property><property name="always_active">1</property></transition>
        <filter><property name="mlt_service">tint</property></filter></tractor>)");
    ASSERT_EQ(reading.edit->tracks.size(), 1u) << "what is neither seen nor heard is not taken";
    EXPECT_EQ(reading.edit->tracks[0].segments.size(), 1u);
    ASSERT_EQ(reading.warnings.size(), 1u);
    EXPECT_THAT(reading.warnings[0],
                HasSubstr("1 effect on a whole track, 1 transition between tracks, 1 edit within"));
}

// Projects that somebody wrote to do harm: they are opened, shown and saved like any other, and nothing of it is made.
#include "tests/engine/SampleMedia.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/EditModel.h"
#include "workbench/model/projection/AllowList.h"
#include "workbench/model/projection/Projector.h"
#include "workbench/store/ProjectFile.h"

#include <gmock/gmock.h>
#include <mlt++/Mlt.h>
#include <sys/stat.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>

namespace workbench
{
namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsSubsetOf;
using Names = std::set<std::string>;
using Settings = std::vector<std::pair<std::string, std::string>>;

std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text)
        result += c == '<' ? "&lt;" : c == '&' ? "&amp;" : std::string(1, c);
    return result;
}

std::string property(const std::string& name, const std::string& value)
{
    return "<property name=\"" + name + "\">" + escaped(value) + "</property>";
}

std::string showing(const std::string& service, const std::string& resource, const std::string& filters = {})
{
    return "<producer id=\"p\" out=\"4\">" + (service.empty() ? "" : property("mlt_service", service)) +
           property("resource", resource) + filters +
           "</producer><playlist id=\"t\"><entry producer=\"p\" in=\"0\" out=\"4\"/></playlist>";
}

std::string withEffect(const std::string& service, const Settings& settings = {})
{
    std::string filter = "<filter>" + property("mlt_service", service);
    for (const auto& [name, value] : settings)
        filter += property(name, value);
    return showing("color", "red", filter + "</filter>");
}

/** A folder with files that a hostile project would like to read, run or replace. */
class HostileProject : public testing::Test
{
protected:
    void SetUp() override
    {
        session = MltSession::open();
        session->setAllowList({});
        catalogue = session->allowList()->effects();
        folder = SampleMedia::folder() / "hostile";
        fs::create_directories(folder);
        for (const char* name : {"x.so", "x.txt", "x.trf", "x.png", "x.melt", "x.html"})
            std::ofstream(folder / name) << "untouched";
        std::ofstream(folder / "x.mlt") << "<mlt>" << showing("melt", "noise:") << "</mlt>";
        std::ofstream(folder / "x.m3u8") << "#EXTM3U\n#EXTINF:1,\nhttp://127.0.0.1:9/a.ts\n";
        std::ofstream(folder / "x.sdp") << "v=0\nc=IN IP4 127.0.0.1\nm=video 9 RTP/AVP 96\na=rtpmap:96 H264/90000\n";
        mkfifo((folder / "pipe.mp4").c_str(), 0600);
        before = contents();
    }

    void TearDown() override { EXPECT_EQ(contents(), before) << "a file was made, changed or removed"; }

    std::map<std::string, std::uintmax_t> contents() const
    {
        std::map<std::string, std::uintmax_t> result;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
            result[entry.path().filename().string()] = entry.is_regular_file() ? entry.file_size() : 0;
        return result;
    }

    std::string file(const std::string& name) const { return (folder / name).string(); }

    /** The services that are made of a projection, which is rendered as well. */
    Names made(const Projection& projection, std::vector<EngineProblem>& problems)
    {
        const auto graph = MltGraph::build(session, projection, {});
        problems = graph->takeProblems();
        renderFrame(graph->producer(), 0, {64, 36});
        Names names;
        for (Mlt::Service* const service : graph->services())
            if (const char* name = service->get("mlt_service"))
                names.insert(name);
        return names;
    }

    /** Opens, shows and saves a project of that body; `harmful` is named in what the user is told. */
    void expectHarmless(const std::string& body, const std::string& harmful)
    {
        SCOPED_TRACE(body);
        const ProjectReading reading =
            parseProject("<mlt><profile width=\"64\" height=\"36\"/>" + body + "</mlt>", folder, catalogue);
        ASSERT_TRUE(reading) << reading.error;
        const EditModel edit(*reading.edit, catalogue);
        std::vector<EngineProblem> problems;
        EXPECT_THAT(made(project(edit), problems),
                    IsSubsetOf({"color", "mix", "frei0r.cairoblend", "multitrack", "tractor"}));
        ASSERT_FALSE(problems.empty());
        EXPECT_THAT(problems[0].message, HasSubstr(harmful));

        const std::string saved = projectXml(edit, {}, folder);
        static const std::regex service("name=\"mlt_service\">([^<]*)<");
        for (std::sregex_iterator at(saved.begin(), saved.end(), service), end; at != end; ++at)
            EXPECT_THAT((*at)[1].str(),
                        testing::AnyOf("color", "brightness", "mix", "frei0r.cairoblend", "avformat", "pixbuf"));
        const ProjectReading again = parseProject(saved, folder, catalogue);
        ASSERT_TRUE(again) << again.error;
        EXPECT_EQ(EditModel(*again.edit, catalogue).snapshot(), edit.snapshot()) << "what is not made is lost";
    }

    std::shared_ptr<MltSession> session;
    EffectCatalogue catalogue;
    fs::path folder;
    std::map<std::string, std::uintmax_t> before;
};

TEST_F(HostileProject, NoEffectRunsWritesOrConnects)
{
    const std::string so = file("x.so");
    const std::string out = file("x.txt");
    const std::pair<std::string, Settings> effects[] = {
        {"sox:ladspa " + so + " x", {}},
        {"sox", {{"effect", "ladspa " + so + " x"}}},
        {"sox.ladspa", {{"0", so}}},
        {"ladspa:" + so, {}},
        {"ladspa.1048674:" + so, {}},
        {"jackrack:" + file("x.html"), {{"src", file("x.html")}}},
        {"jack", {}},
        {"vidstab:" + out, {{"filename", out}}},
        {"vidstab", {{"filename", out}, {"results", out}}},
        {"avfilter.metadata:" + out, {}},
        {"avfilter.metadata", {{"av.mode", "print"}, {"av.file", out}}},
        {"avfilter.ametadata", {{"av.mode", "print"}, {"av.file", out}}},
        {"avfilter.zmq", {{"av.bind_address", "tcp://*:5555"}}},
        {"avfilter.azmq:tcp://*:5556", {}},
        {"avfilter.movie", {{"av.filename", "http://127.0.0.1:9/"}}},
        {"avfilter.frei0r", {{"av.filter_name", so}}},
        {"avfilter.ladspa", {{"av.file", so}}},
        {"opencv.tracker", {{"results", out}}},
        {"watermark", {{"resource", "http://127.0.0.1:9/x.png"}}},
        {"watermark:xml:" + file("x.mlt"), {}},
        {"mask_start", {{"filter", "sox:ladspa " + so}}},
        {"mask_apply", {{"transition", "composite:" + out}}},
        {"transition:" + so, {}},
        {"../../" + so, {}},
        {"frei0r.../../" + so, {}},
        {"brightness:" + out, {}},
        {" brightness", {}},
        {"", {{"properties", out}}},
    };
    for (const auto& [service, settings] : effects)
        expectHarmless(withEffect(service, settings), service);
}

TEST_F(HostileProject, NoClipIsAnythingButAFileOrAColour)
{
    const std::pair<std::string, std::string> clips[] = {
        {"loader", "http://127.0.0.1:9/x.mp4"},
        {"timewarp", "2:http://127.0.0.1:9/x.mp4"},
        {"timewarp", "2:" + file("x.mlt")},
        {"watermark", "http://127.0.0.1:9/x.png"},
        {"xml", file("x.mlt")},
        {"xml-string", "<mlt><producer/></mlt>"},
        {"xml-nogl", "http://127.0.0.1:9/x.mlt"},
        {"consumer", file("x.mlt")},
        {"melt", "noise: -consumer avformat:" + file("x.txt")},
        {"melt_file", file("x.melt")},
        {"framebuffer", file("x.mlt") + "?2"},
        {"webvfx", "plain:" + file("x.html")},
        {"kdenlivetitle", file("x.mlt")},
        {"pango", "+hello"},
        {"decklink", "0"},
        {"color:xml", file("x.mlt")},
        {"", "/dev/zero"},
        {"", "/proc/self/mem"},
        {"", "../../../../../../../../dev/zero"},
        {"", "pipe.mp4"},
        {"", "http://127.0.0.1:9/x.mp4"},
        {"", "file:///etc/passwd"},
        {"", "loader:" + file("x.mlt")},
        {"", "x.mlt"},
        {"", "x.melt"},
        {"", "x.m3u8"},
        {"", "x.sdp"},
        {"", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>"},
        {"avformat", "concat:" + file("x.txt") + "|" + file("x.so")},
        {"avformat", "lavfi:movie=" + file("x.txt")},
        {"avformat", "tcp://127.0.0.1:9"},
        {"pixbuf", file("%s%n.png")},
        {"pixbuf", file("%d%d.png")},
    };
    for (const auto& [service, resource] : clips)
        expectHarmless(showing(service, resource), "");
}

/** What no file that is read leads to today is refused all the same: the gate trusts nobody. */
TEST_F(HostileProject, NoSettingHoldsAFileOrACommand)
{
    const std::string out = file("x.txt");
    const auto refused = [&](const Projection& edit) {
        std::vector<EngineProblem> problems;
        made(edit, problems);
        return problems.size();
    };
    EXPECT_EQ(refused(sampleEdit("volume", {{"level", "0=-3;25~=1.5e-3"}, {"disable", "0"}})), 0U);
    EXPECT_EQ(refused(sampleEdit("frei0r.colortap", {{"0", "xpro"}})), 0U);
    EXPECT_EQ(refused(sampleEdit("volume", {{"level", "nan"}, {"properties", out}, {"mlt_service", "sox"}})), 3U);
    EXPECT_EQ(refused(sampleEdit("frei0r.colortap", {{"0", out}})), 1U);
    EXPECT_EQ(refused(sampleEdit("avfilter.exposure", {{"av.exposure", "1,metadata=print:file=" + out}})), 1U);

    Projection edit = sampleEdit();
    edit.clips[1].properties = {{"audio_index", "-1"}, {"filter", "sox:x"}, {"mlt_service", "melt"}};
    edit.transitions.push_back({"t", "composite", 0, 1, 0, 0, {{"luma", out}}});
    edit.transitions.push_back({"u", "luma:" + out, 0, 1, 0, 0, {}});
    for (const std::string& map : {file("x.mlt"), std::string("%luma01.pgm"), std::string("http://127.0.0.1:9/x.pgm"),
                                   "loader:" + file("x.png"), file("../x.png"), file("%d.png")})
        edit.transitions.push_back({"v", "luma", 0, 1, 0, 0, {{"resource", map}}});
    EXPECT_EQ(refused(edit), 10U);

    const auto graph = MltGraph::build(session, sampleEdit("volume", {{"level", "0"}}), {});
    EXPECT_FALSE(graph->apply({kSampleEffect, "properties", out}));
    EXPECT_FALSE(graph->apply({kSampleEffect, "level", "@" + out}));
}

} // namespace
} // namespace workbench

// Edits of more clips than anybody would want to have open at a time.
#include "tests/engine/SampleMedia.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <gmock/gmock.h>
#include <mlt++/Mlt.h>

#include <fstream>
#include <string_view>

namespace workbench
{
namespace
{

constexpr FrameSize kSize{160, 90};
constexpr int kCuts = 300;
constexpr int kLength = 2; // of each

/** The sample clip in pieces, each from another frame of it; the last piece is of a file that is no film. */
Projection manyCuts()
{
    const std::string broken = (SampleMedia::folder() / "broken.mp4").string();
    std::ofstream(broken) << "no film";
    Projection edit = sampleEdit();
    const ProjectedClip whole = edit.clips.back();
    std::vector<ProjectedEntry>& entries = edit.tracks.back().entries;
    edit.clips.pop_back();
    entries.clear();
    for (int cut = 0; cut < kCuts; ++cut) {
        ProjectedClip clip = whole;
        clip.id = "cut" + std::to_string(cut);
        clip.in = cut % 70;
        clip.out = clip.in + kLength - 1;
        clip.resource = cut == kCuts - 1 ? broken : clip.resource;
        entries.push_back({ProjectedEntry::Kind::Clip, kLength, {clip.id, clip.in, clip.out}, {}, {}});
        edit.clips.push_back(clip);
    }
    edit.length = kCuts * kLength;
    edit.clips.front().out = edit.length - 1; // the background
    edit.tracks.front().entries = {
        {ProjectedEntry::Kind::Clip, edit.length, {edit.clips.front().id, 0, edit.length - 1}, {}, {}}};
    return edit;
}

std::size_t openFilms(const MltGraph& graph)
{
    std::size_t films = 0;
    for (Mlt::Service* const service : graph.services())
        if (const char* name = service->get("mlt_service"); name && std::string_view(name).starts_with("avformat"))
            ++films;
    return films;
}

TEST(ManyCuts, AreOpenOnlyWhereTheyAreShown)
{
    const auto session = MltSession::open();
    const auto graph = MltGraph::build(session, manyCuts(), {});
    const auto plain = MltGraph::build(session, sampleEdit(), {});
    EXPECT_EQ(openFilms(*graph), 0U);
    EXPECT_EQ(graph->producer().get_length(), kCuts * kLength);
    for (int cut : {0, 17, 250, 3, 298, 0}) {
        const auto picture = renderFrame(graph->producer(), cut * kLength + 1, kSize);
        const auto expected = renderFrame(plain->producer(), cut % 70 + 1, kSize);
        ASSERT_TRUE(picture && expected);
        EXPECT_EQ(picture->rgba, expected->rgba) << cut;
    }
    EXPECT_EQ(openFilms(*graph), 5U);
    for (int cut = 0; cut < kCuts - 1; cut += 2)
        renderFrame(graph->producer(), cut * kLength, kSize);
    EXPECT_LT(openFilms(*graph), 50U);

    EXPECT_THAT(graph->takeProblems(), testing::IsEmpty()) << "nobody has looked at it yet";
    const auto standIn = renderFrame(graph->producer(), kCuts * kLength - 1, kSize);
    EXPECT_GT(standIn->pixel(80, 45)[0], standIn->pixel(80, 45)[2] + 20) << "dark red";
    const auto problems = graph->takeProblems();
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].subject, "cut299");
}

} // namespace
} // namespace workbench

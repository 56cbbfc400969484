#include "workbench/engine/client/PictureService.h"

#include "tests/engine/EngineFixture.h"
#include "tests/engine/Workers.h"
#include "workbench/engine/worker/StillRenderer.h"
#include "workbench/model/projection/MediaProjection.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <deque>
#include <fstream>

namespace workbench
{
namespace
{

using Priority = PictureService::Priority;
using testing::ElementsAre;

/** A service, and the thread that hears of it: the test's, while it waits. */
class PictureServiceTest : public testing::Test
{
protected:
    PictureServiceTest() { fs::remove_all(folder()); }

    static fs::path folder() { return SampleMedia::folder() / "pictures"; }

    void start(std::uint64_t limit = 1 << 24, std::chrono::milliseconds restAfter = 10s)
    {
        service.emplace(testEngine(), PictureService::Settings{folder(), limit, restAfter},
                        [this](std::function<void()> act) {
                            {
                                const std::lock_guard lock(mutex);
                                posted.push_back(std::move(act));
                            }
                            arrived.notify_all();
                        });
    }

    /** Calls what was posted until the condition holds. */
    template <class Condition>
    bool runUntil(Condition&& condition, std::chrono::milliseconds limit = 20s)
    {
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!condition()) {
            std::unique_lock lock(mutex);
            if (!arrived.wait_until(lock, end, [&] { return !posted.empty(); }))
                return false;
            const std::function<void()> act = std::move(posted.front());
            posted.pop_front();
            lock.unlock();
            act();
        }
        return true;
    }

    /** What comes of one wish. */
    template <class Wanted>
    Made ask(Wanted wanted)
    {
        std::optional<Made> answer;
        const auto ticket =
            service->request(std::move(wanted), Priority::Visible, [&answer](const Made& made) { answer = made; });
        EXPECT_TRUE(runUntil([&] { return answer.has_value(); }));
        return answer.value_or(Made());
    }

    static request::MakeThumbnail thumbnail(int frame) { return {sampleEdit(), frame, 160, 90}; }

    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<std::function<void()>> posted;
    std::optional<PictureService> service;
};

TEST_F(PictureServiceTest, makesThePictureThatTheViewerShowsAndKeepsIt)
{
    start();
    const Made made = ask(thumbnail(30));
    ASSERT_TRUE(made.picture) << made.problem;
    const auto session = MltSession::open();
    StillRenderer renderer(session);
    const auto expected = renderer.render(sampleEdit(), 30, 160, 90);
    ASSERT_TRUE(expected);
    EXPECT_EQ(made.picture->rgba, expected->rgba);

    // The next program finds it on the disk, and needs no worker for it.
    service.reset();
    testEngine()->rest();
    start();
    const Made kept = ask(thumbnail(30));
    ASSERT_TRUE(kept.picture);
    EXPECT_EQ(kept.picture->rgba, expected->rgba);
    EXPECT_EQ(kept.picture->width, expected->width);
    EXPECT_THAT(workers(), ElementsAre());

    // What became of a file that it shows is made anew, and what is damaged is not taken.
    fs::last_write_time(SampleMedia::clip(), fs::file_time_type::clock::now());
    for (const auto& file : fs::directory_iterator(folder()))
        std::fstream(file.path(), std::ios::in | std::ios::out | std::ios::binary).seekp(5000) << "damage";
    EXPECT_EQ(ask(thumbnail(30)).picture->rgba, expected->rgba);
    EXPECT_EQ(workers().size(), 1U);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder()), fs::directory_iterator()), 2);
}

TEST_F(PictureServiceTest, aFileIsShownInItsOwnShape)
{
    start();
    const MediaProbeResult clip =
        testEngine()->probeMedia(SampleMedia::make("tall.mkv", "-f lavfi -i testsrc=s=90x160:r=30 -t 2 -c:v mpeg4"));
    ASSERT_TRUE(clip.info) << clip.problem;
    const Projection edit = projectMedia(*clip.info, 25, 1);
    EXPECT_EQ(edit.length, 50);
    const Made made = ask(request::MakeThumbnail{edit, 49, 100, 80});
    ASSERT_TRUE(made.picture) << made.problem;
    EXPECT_NEAR(made.picture->height, 80, 2);
    EXPECT_NEAR(made.picture->width, 45, 2);

    Projection gone = edit;
    gone.clips[0].resource = "/no/such/film.mkv";
    const Made none = ask(request::MakeThumbnail{gone, 0, 100, 80});
    EXPECT_FALSE(none.picture);
    EXPECT_THAT(none.problem, testing::HasSubstr("film.mkv"));
}

TEST_F(PictureServiceTest, tellsHowSoundSwings)
{
    start();
    // Silence, then a loud tone on the left and half of it on the right.
    const std::string path = SampleMedia::make(
        "swing.wav", "-f lavfi -i \"aevalsrc='if(gte(t,1),0.8*sin(2*PI*440*t))|if(gte(t,1),0.4*sin(2*PI*440*t))':"
                     "s=44100\" -t 2");
    const Made made = ask(request::MakeWaveform{path, 0, 0.5, 2.0, 20});
    ASSERT_TRUE(made.waveform) << made.problem;
    const WaveformPeaks& peaks = *made.waveform;
    ASSERT_EQ(peaks.parts(), 20U);
    ASSERT_EQ(peaks.channels, 2);
    const auto full = [](double share) { return share * 32767.0; };
    for (std::size_t part = 0; part < 20; ++part) {
        const bool loud = part >= 5 && part < 15; // from 1.0 s to 2.0 s of the file
        for (int channel = 0; channel < 2; ++channel) {
            const double height = loud ? full(channel == 0 ? 0.8 : 0.4) : 0.0;
            EXPECT_NEAR(peaks.highest(part, channel), height, full(0.01)) << part;
            EXPECT_NEAR(peaks.lowest(part, channel), -height, full(0.01)) << part;
        }
    }
    // From the disk the same, and of what has no sound a reason.
    EXPECT_EQ(*ask(request::MakeWaveform{path, 0, 0.5, 2.0, 20}).waveform, peaks);
    EXPECT_THAT(ask(request::MakeWaveform{path, 1, 0.0, 1.0, 5}).problem, testing::HasSubstr("no sound"));
    EXPECT_THAT(ask(request::MakeWaveform{"/etc/passwd", 0, 0.0, 1.0, 5}).problem, testing::HasSubstr("no sound"));
}

TEST_F(PictureServiceTest, whatIsInViewComesFirstAndWhatIsNotWantedNever)
{
    start();
    std::vector<int> order;
    const auto wish = [&](int frame, Priority priority) {
        return service->request(thumbnail(frame), priority, [&order, frame](const Made&) { order.push_back(frame); });
    };
    const auto first = wish(0, Priority::Visible); // the thread may take it at once
    const auto later = wish(1, Priority::Ahead);
    const auto soon = wish(2, Priority::Ahead);
    auto dropped = wish(3, Priority::Visible);
    const auto seen = wish(4, Priority::Visible);
    service->setPriority(soon, Priority::Visible);
    dropped.reset();
    ASSERT_TRUE(runUntil([&] { return order.size() == 4; }));
    EXPECT_EQ(order.back(), 1);
    EXPECT_THAT(order, testing::UnorderedElementsAre(0, 1, 2, 4));
}

TEST_F(PictureServiceTest, aWorkerThatDiesCostsNoMoreThanThePictureThatKillsIt)
{
    start();
    std::vector<PictureService::Ticket> tickets;
    int told = 0;
    int pictures = 0;
    for (int frame = 0; frame < 30; ++frame)
        tickets.push_back(service->request(thumbnail(frame), Priority::Visible, [&](const Made& made) {
            ++told;
            pictures += made.picture ? 1 : 0;
        }));
    ASSERT_TRUE(runUntil([&] { return told == 5; }));
    sendToWorkers(SIGKILL);
    const Made bad = ask(request::MakeThumbnail{sampleEdit(kCrashing, {{"0", "0.9"}}), 3, 160, 90});
    EXPECT_FALSE(bad.picture);
    EXPECT_TRUE(bad.isFinal);
    EXPECT_TRUE(ask(request::MakeThumbnail{sampleEdit(kCrashing, {{"0", "0.9"}}), 3, 160, 90}).isFinal);
    ASSERT_TRUE(runUntil([&] { return told == 30; }));
    EXPECT_EQ(pictures, 30);
}

TEST_F(PictureServiceTest, endsItsWorkerWhenThereIsNothingToDoAndKeepsNoMoreThanItMay)
{
    // A picture takes 57 kB.
    start(1'000'000, 50ms);
    for (int frame = 0; frame < 40; ++frame)
        ASSERT_TRUE(ask(thumbnail(frame)).picture);
    std::uintmax_t size = 0;
    for (const auto& file : fs::directory_iterator(folder()))
        size += file.file_size();
    EXPECT_LE(size, 1'000'000U);
    EXPECT_GE(size, 500'000U);
    for (int i = 0; i < 200 && !workers().empty(); ++i)
        std::this_thread::sleep_for(20ms);
    EXPECT_THAT(workers(), ElementsAre());
    EXPECT_TRUE(ask(thumbnail(41)).picture) << "the next one starts another";

    // Nor what is not to be kept.
    fs::remove_all(folder());
    const auto ticket = service->request(
        thumbnail(42), Priority::Visible, [&](const Made& made) { size = made.picture ? 1 : 0; },
        PictureService::Keeping::None);
    ASSERT_TRUE(runUntil([&] { return size <= 1; }));
    EXPECT_EQ(size, 1U);
    EXPECT_FALSE(fs::exists(folder()));

    // A folder that cannot be used is no harm.
    service.reset();
    fs::remove_all(folder());
    std::ofstream(folder()) << "in the way";
    start();
    EXPECT_TRUE(ask(thumbnail(7)).picture);
    EXPECT_TRUE(ask(thumbnail(7)).picture);
    service.reset();
    fs::remove(folder());
}

} // namespace
} // namespace workbench

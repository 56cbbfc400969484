#include "workbench/engine/protocol/FramePool.h"
#include "workbench/engine/protocol/TraceMarks.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

using namespace workbench;
using namespace std::chrono_literals;

Descriptor another(int descriptor)
{
    return Descriptor(dup(descriptor));
}

/** A pool of two slots, and the worker's side of it in this process. */
class FramePoolTest : public testing::Test
{
protected:
    std::optional<event::FrameReady> render(std::uint8_t colour, std::shared_ptr<std::uint8_t[]>* kept = nullptr)
    {
        const auto bytes = slots_->reserve(8, 4, 0ms);
        if (!bytes)
            return std::nullopt;
        std::fill_n(bytes.get(), 128, colour);
        FrameImage image{8, 4, PixelBytes(bytes, 128), 5, 6};
        if (kept)
            *kept = bytes;
        return slots_->handOver(image);
    }

    std::unique_ptr<FramePool> pool_ = FramePool::create(2, 1000);
    std::unique_ptr<FrameSlots> slots_ = FrameSlots::map(another(pool_->descriptor()));
};

TEST_F(FramePoolTest, aSlotIsFreeAgainWithTheLastReference)
{
    FrameImagePtr first = pool_->take(render(1).value());
    FrameImagePtr second = pool_->take(render(2).value());
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->rgba[127], 1);
    EXPECT_EQ(second->rgba[0], 2);
    EXPECT_EQ(second->frame, 5);
    EXPECT_FALSE(render(3)) << "both are looked at";

    const PixelBytes kept = first->rgba;
    first.reset();
    EXPECT_FALSE(render(3));
    second.reset();
    EXPECT_EQ(pool_->take(render(3).value())->rgba[0], 3);
    EXPECT_EQ(kept[0], 1);

    pool_.reset();
    EXPECT_EQ(kept[0], 1) << "a picture outlives the pool";
}

TEST_F(FramePoolTest, whatTheWorkerDoesNotSendIsFreeAtOnce)
{
    std::shared_ptr<std::uint8_t[]> late;
    pool_->take(render(1, &late).value());
    const auto again = slots_->reserve(8, 4, 0ms);
    late.reset();
    EXPECT_NE(slots_->reserve(8, 4, 0ms).get(), again.get()) << "who comes late takes it from nobody";
    EXPECT_TRUE(slots_->reserve(8, 4, 0ms)) << "one that was not handed over";
    EXPECT_FALSE(slots_->reserve(8, 4000, 0ms));
    EXPECT_FALSE(slots_->reserve(1 << 30, 1 << 30, 0ms));
}

TEST_F(FramePoolTest, believesNoWorker)
{
    const event::FrameReady ready = render(1).value();
    auto with = [&](auto change) {
        event::FrameReady changed = ready;
        change(changed);
        return pool_->take(changed);
    };
    EXPECT_FALSE(with([](auto& lie) { lie.slot = 1; })) << "handed over was the other one";
    EXPECT_FALSE(with([](auto& lie) { lie.slot = 2; }));
    EXPECT_FALSE(with([](auto& lie) { lie.slot = -1; }));
    EXPECT_FALSE(with([](auto& lie) { lie.width = 32'000; }));
    EXPECT_FALSE(with([](auto& lie) { lie.height = -4; }));
    const FrameImagePtr image = pool_->take(ready);
    EXPECT_TRUE(image);
    EXPECT_FALSE(pool_->take(ready)) << "it is looked at";
}

TEST_F(FramePoolTest, aNewWorkerFindsWhatTheFormerHeld)
{
    const FrameImagePtr image = pool_->take(render(1).value());
    const auto unfinished = slots_->reserve(8, 4, 0ms);
    pool_->reclaim();
    EXPECT_TRUE(render(2));
    EXPECT_FALSE(render(3));
    EXPECT_EQ(image->rgba[0], 1);
}

TEST(SharedMemory, takesNothingThatCouldShrink)
{
    Descriptor unsealed(memfd_create("test", MFD_CLOEXEC));
    ASSERT_EQ(ftruncate(unsealed.number(), 1 << 20), 0);
    EXPECT_FALSE(FrameSlots::map(std::move(unsealed)));
    EXPECT_FALSE(TraceMarks::map(Descriptor(open("/dev/null", O_RDWR | O_CLOEXEC))));
    EXPECT_FALSE(TraceMarks::map(Descriptor()));
    EXPECT_FALSE(FrameSlots::map(another(SharedMemory::create("zeroes", 1 << 20)->descriptor())));
}

TraceMarks* faulty = nullptr;

TEST(TraceMarks, tellsInWhichEffectAProcessEnded)
{
    const auto marks = TraceMarks::create();
    const pid_t child = fork();
    if (child == 0) {
        const auto mine = TraceMarks::map(another(marks->descriptor()));
        faulty = mine.get();
        struct sigaction action = {};
        action.sa_handler = [](int) {
            faulty->noteFault();
            _exit(7);
        };
        sigaction(SIGSEGV, &action, nullptr);
        // In a thread of its own: the one that forked keeps the number that it had in the parent.
        std::thread faulting([&] {
            mine->setFrame(12);
            mine->enter(effectMark("outer"));
            std::thread other([&] { mine->enter(effectMark("other")); });
            other.join();
            mine->enter(effectMark("inner"));
            raise(SIGSEGV);
        });
        faulting.join();
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 7);
    EXPECT_EQ(marks->faulted(), effectMark("inner"));
    EXPECT_EQ(marks->current(), effectMark("other")) << "which has been there for longest";
    EXPECT_EQ(marks->frame(), 12);

    marks->clear();
    EXPECT_EQ(marks->faulted(), 0U);
    EXPECT_EQ(marks->current(), 0U);
}

TEST(TraceMarks, knowsWhatIsInnermostAndWhatIsLate)
{
    const auto marks = TraceMarks::create();
    marks->leave(); // of nothing
    marks->enter(1);
    marks->enter(0);
    EXPECT_EQ(marks->current(), 0U) << "what is below the first effect is none";
    marks->leave();
    EXPECT_EQ(marks->current(), 1U);
    for (int deep = 0; deep < 200; ++deep)
        marks->enter(2);
    for (int deep = 0; deep < 200; ++deep)
        marks->leave();
    EXPECT_EQ(marks->current(), 1U);
    marks->leave();
    EXPECT_EQ(marks->current(), 0U);

    const auto now = TraceMarks::Clock::now();
    marks->setDeadline(TraceMarks::Work::Playback, now + 1s);
    marks->setDeadline(TraceMarks::Work::Command, now + 2s);
    EXPECT_FALSE(marks->isLate(now));
    EXPECT_TRUE(marks->isLate(now + 1500ms));
    marks->setDeadline(TraceMarks::Work::Playback, TraceMarks::Clock::time_point::max());
    EXPECT_FALSE(marks->isLate(now + 1500ms));
    marks->allowUntil(now + 5s);
    EXPECT_FALSE(marks->isLate(now + 3s));
    marks->allowUntil(now + 4s);
    EXPECT_FALSE(marks->isLate(now + 4500ms)) << "nobody gets less";
    EXPECT_TRUE(marks->isLate(now + 6s));
}

} // namespace

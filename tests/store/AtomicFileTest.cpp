#include "workbench/store/files/AtomicFile.h"
#include "tests/store/TemporaryFolder.h"

#include <atomic>
#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace workbench;
using test::slurp;
using test::spill;
using test::TemporaryFolder;
using testing::HasSubstr;

namespace
{
/** No file of this process becomes larger than this, while the object lives: what a full disk does to a write. */
class SizeLimit
{
public:
    explicit SizeLimit(rlim_t bytes)
    {
        former_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit small{bytes, limit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }

    ~SizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, former_);
    }

private:
    rlimit limit_{};
    void (*former_)(int) = nullptr;
};

mode_t modeOf(const std::filesystem::path& path)
{
    struct stat present {
    };

    stat(path.c_str(), &present);
    return present.st_mode & 07777;
}
} // namespace

TEST(AtomicFile, ReplacesWholeAndKeepsLinksAndPermissions)
{
    const TemporaryFolder folder;
    spill(folder / "real", "old");
    chmod((folder / "real").c_str(), 0640);
    std::filesystem::create_symlink("real", folder / "link");

    std::string big(3'000'000, 'x');
    big += '\0';
    EXPECT_EQ(replaceFile(folder / "link", big), "");
    EXPECT_EQ(slurp(folder / "real"), big);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(modeOf(folder / "real"), 0640u);

    std::filesystem::create_directory(folder / "below");
    std::filesystem::create_symlink("../made", folder / "below/dangling");
    EXPECT_EQ(replaceFile(folder / "below/dangling", "new"), "");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "below/dangling"));
    EXPECT_EQ(slurp(folder / "made"), "new");
    std::filesystem::create_symlink("circle", folder / "circle");
    EXPECT_THAT(replaceFile(folder / "circle", "x"), HasSubstr("circle"));
    EXPECT_EQ(folder.count(), 5u) << "nothing else is left behind";
}

TEST(AtomicFile, NewFilesNeverHaveMorePermissionsThanTheUserGives)
{
    const TemporaryFolder folder;
    const mode_t former = umask(027);
    std::atomic<bool> done{false};
    // The mask belongs to the whole process: whoever changes it, for however short a time, changes it for all.
    std::thread other([&] {
        for (int i = 0; i < 300; ++i)
            replaceFile(folder / "other", "");
        done = true;
    });
    int wide = 0;
    for (int i = 0; !done; ++i) {
        const auto file = folder / ("plain" + std::to_string(i));
        spill(file, "");
        wide += modeOf(file) != 0640;
        std::filesystem::remove(file);
    }
    other.join();
    umask(former);
    EXPECT_EQ(wide, 0);
    EXPECT_EQ(modeOf(folder / "other"), 0640u);
}

TEST(AtomicFile, SaysWhatIsWrongAndLosesNothing)
{
    const TemporaryFolder folder;
    spill(folder / "file", "old");
    {
        const SizeLimit limit(1000);
        EXPECT_THAT(replaceFile(folder / "file", std::string(5000, 'x')), HasSubstr("larger than allowed"));
    }
    EXPECT_EQ(slurp(folder / "file"), "old");
    EXPECT_EQ(folder.count(), 1u) << "the part that was written is gone";

    EXPECT_THAT(replaceFile(folder.path(), "x"), HasSubstr("a folder has that name"));
    EXPECT_THAT(replaceFile(folder / "none/file", "x"), HasSubstr("no such"));
    EXPECT_THAT(replaceFile(folder / std::string(300, 'n'), "x"), HasSubstr("too long"));
    EXPECT_EQ(replaceFile(folder / std::string(255, 'n'), "x"), "") << "as long as names can be";
}

TEST(ReadFile, ReadsRegularFilesUpToALimit)
{
    const TemporaryFolder folder;
    spill(folder / "file", std::string(300'000, 'a'));
    EXPECT_EQ(readFile(folder / "file", 300'000).bytes.size(), 300'000u);
    EXPECT_THAT(readFile(folder / "file", 299'999).error, HasSubstr("larger"));
    EXPECT_THAT(readFile(folder.path(), 10).error, HasSubstr("folder"));
    EXPECT_THAT(readFile(folder / "none", 10).error, HasSubstr("no such"));
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_NE(readFile(folder / "pipe", 10).error, "") << "and does not wait for a writer";
}

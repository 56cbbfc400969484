#include "workbench/store/files/AtomicFile.h"
#include "tests/store/TemporaryFolder.h"

#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
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

    EXPECT_EQ(replaceFile(folder / "new", ""), "");
    EXPECT_TRUE(std::filesystem::exists(folder / "new"));
    EXPECT_NE(modeOf(folder / "new") & 0400u, 0u);
    EXPECT_EQ(folder.count(), 3u) << "nothing else is left behind";
}

TEST(AtomicFile, LeavesTheOldFileWhenItIsNotCommitted)
{
    const TemporaryFolder folder;
    spill(folder / "file", "old");
    {
        AtomicFile file(folder / "file");
        EXPECT_TRUE(file.write("new"));
        EXPECT_EQ(slurp(folder / "file"), "old");
    }
    EXPECT_EQ(slurp(folder / "file"), "old");
    EXPECT_EQ(folder.count(), 1u);
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
    EXPECT_THAT(replaceFile(folder / "file/file", "x"), HasSubstr("not a folder"));
    EXPECT_THAT(replaceFile("/dev/full", "x"), HasSubstr("Cannot write"));
    EXPECT_THAT(replaceFile(folder / std::string(300, 'n'), "x"), HasSubstr("too long"));
    EXPECT_EQ(replaceFile(folder / std::string(255, 'n'), "x"), "") << "as long as names can be";
    if (geteuid() != 0) {
        chmod(folder.path().c_str(), 0500);
        EXPECT_THAT(replaceFile(folder / "file", "x"), HasSubstr("not allowed"));
        chmod(folder.path().c_str(), 0700);
    }
    EXPECT_EQ(slurp(folder / "file"), "old");
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

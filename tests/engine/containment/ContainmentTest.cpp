// What a contained process can and cannot do. Each act runs in a child of its own: what was given up never comes back.
#include "workbench/engine/worker/containment/Containment.h"
#include "workbench/model/projection/Projection.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

namespace workbench
{
namespace
{

namespace fs = std::filesystem;
using Act = std::function<long()>; // as a system call: below 0 with errno set, when it is refused

constexpr int kKilledBy = 1000;

class ContainmentTest : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = (fs::temp_directory_path() / "oribund-contained-XXXXXX").string();
        folder = mkdtemp(name.data());
        fs::create_directory(folder / "media");
        for (const char* const file : {"secret", "media/film.mp4", "export.mp4"})
            std::ofstream(folder / file) << "twelve bytes";
        rules.readable = {path("media"), path("not there")};
        rules.writable = {path("export.mp4")};
        rules.sound = true;
    }

    void TearDown() override { fs::remove_all(folder); }

    std::string path(const std::string& name) const { return (folder / name).string(); }

    static int inProcess(const std::function<int()>& work)
    {
        const pid_t child = fork();
        if (child == 0)
            _exit(work());
        int status = 0;
        waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? kKilledBy + WTERMSIG(status) : WEXITSTATUS(status);
    }

    /** The error of the act in a contained process; 0 when it goes well. */
    int contained(const Act& act) const
    {
        return inProcess([&] {
            contain(rules);
            errno = 0;
            return act() < 0 ? errno : 0;
        });
    }

    int opening(const std::string& file, int flags) const
    {
        return contained([&] { return open(file.c_str(), flags | O_CLOEXEC, 0600); });
    }

    bool fencesFiles() const
    {
        return inProcess([&] { return contain(rules).files ? 1 : 0; }) == 1;
    }

    fs::path folder;
    ContainmentRules rules;
};

TEST_F(ContainmentTest, ReachesNoFileButThoseOfTheRules)
{
    if (!fencesFiles())
        GTEST_SKIP() << "this kernel cannot fence files off";
    EXPECT_EQ(opening(path("media/film.mp4"), O_RDONLY), 0);
    EXPECT_EQ(opening(path("export.mp4"), O_RDWR | O_TRUNC), 0);
    EXPECT_EQ(opening("/dev/null", O_RDWR), 0);
    EXPECT_EQ(opening("/proc/self/status", O_RDONLY), 0);
    EXPECT_EQ(contained([] { return dlopen("libm.so.6", RTLD_NOW) ? 0 : -1; }), 0);

    EXPECT_EQ(opening(path("secret"), O_RDONLY), EACCES);
    EXPECT_EQ(opening(path("media/../secret"), O_RDONLY), EACCES);
    EXPECT_EQ(opening("/etc/passwd", O_RDONLY), EACCES);
    EXPECT_EQ(opening(path("."), O_RDONLY | O_DIRECTORY), EACCES);
    EXPECT_EQ(opening(path("media/film.mp4"), O_RDWR), EACCES);
    EXPECT_EQ(opening(path("media/new"), O_WRONLY | O_CREAT), EACCES);
    const auto refused = [&](const Act& act) { EXPECT_THAT(contained(act), testing::AnyOf(EACCES, EPERM, EXDEV)); };
    refused([&] { return truncate(path("media/film.mp4").c_str(), 0); });
    refused([&] { return unlink(path("media/film.mp4").c_str()); });
    refused([&] { return mkdir(path("media/folder").c_str(), 0700); });
    refused([&] { return symlink("secret", path("media/link").c_str()); });
    refused([&] { return link(path("secret").c_str(), path("media/link").c_str()); });
    refused([&] { return rename(path("secret").c_str(), path("media/film.mp4").c_str()); });
    refused([&] { return chmod(path("secret").c_str(), 0777); });
    refused([&] { return utimensat(AT_FDCWD, path("media/film.mp4").c_str(), nullptr, 0); });
}

TEST_F(ContainmentTest, WritesIntoAFolderOfTheRules)
{
    rules.writable = {path("media")};
    EXPECT_EQ(opening(path("media/new"), O_WRONLY | O_CREAT), 0);
    EXPECT_EQ(contained([&] { return rename(path("media/new").c_str(), path("media/other").c_str()); }), 0);
    EXPECT_EQ(contained([&] { return unlink(path("media/other").c_str()); }), 0);
}

TEST_F(ContainmentTest, ReachesNoNetwork)
{
    const auto socketOf = [](int family, int type) { return [=] { return socket(family, type | SOCK_CLOEXEC, 0); }; };
    for (const int family : {AF_INET, AF_INET6, AF_NETLINK, AF_PACKET, AF_VSOCK, AF_BLUETOOTH})
        EXPECT_EQ(contained(socketOf(family, SOCK_RAW)), EACCES) << family;
    EXPECT_EQ(contained(socketOf(AF_INET, SOCK_STREAM)), EACCES);
    EXPECT_EQ(contained(socketOf(AF_UNIX, SOCK_STREAM)), 0) << "sound servers";
    rules.sound = false;
    EXPECT_EQ(contained(socketOf(AF_UNIX, SOCK_STREAM)), EACCES);
}

TEST_F(ContainmentTest, StartsThreadsButNoProcess)
{
    EXPECT_EQ(contained([] {
                  int ran = -1;
                  std::thread([&ran] { ran = 0; }).join();
                  return ran;
              }),
              0);
    const auto threadCannot = [](const Act& act) {
        return [act] {
            long result = 0;
            int error = 0;
            std::thread([&] {
                result = act();
                error = errno;
            }).join();
            errno = error;
            return result;
        };
    };
    const pid_t test = getpid();
    const Act acts[] = {
        [] { return execl("/bin/true", "true", nullptr); },
        [] { return fork(); },
        [] { return vfork(); },
        [] { return syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0); },
        [] { return unshare(CLONE_NEWUSER); },
        [test] { return ptrace(PTRACE_ATTACH, test, 0, 0); },
        [test] { return kill(test, 0); },
        [test] { return prlimit(test, RLIMIT_CPU, nullptr, nullptr); },
    };
    for (std::size_t i = 0; i < std::size(acts); ++i) {
        EXPECT_EQ(contained(acts[i]), EPERM) << i;
        EXPECT_EQ(contained(threadCannot(acts[i])), EPERM) << i;
    }
    EXPECT_NE(contained([] { return popen("true", "r") ? 0 : -1; }), 0);
    EXPECT_EQ(contained([] { return kill(getpid(), SIGKILL); }), kKilledBy + SIGKILL) << "it may end itself";
}

TEST_F(ContainmentTest, ChangesNothingOfTheSystem)
{
    const std::pair<long, int> calls[] = {{SYS_mount, EPERM},           {SYS_bpf, EPERM},    {SYS_keyctl, EPERM},
                                          {SYS_perf_event_open, EPERM}, {SYS_setuid, EPERM}, {SYS_chroot, EPERM},
                                          {SYS_io_uring_setup, ENOSYS}, {SYS_clone3, ENOSYS}};
    for (const auto& [call, error] : calls)
        EXPECT_EQ(contained([number = call] { return syscall(number, 0, 0, 0, 0, 0); }), error) << call;
    EXPECT_EQ(contained([] { return ioctl(STDIN_FILENO, TIOCSTI, "x"); }), EPERM);
#ifdef __x86_64__
    EXPECT_EQ(contained([] {
                  long result = 20; // getpid of the 32-bit interface
                  asm volatile("int $0x80" : "+a"(result)::"memory");
                  return result;
              }),
              kKilledBy + SIGSYS);
#endif
}

#if !defined(__SANITIZE_ADDRESS__)
TEST_F(ContainmentTest, HasOnlySoMuchMemory)
{
    rules.memoryLimit = 64 << 20;
    const auto mapping = [](std::size_t size, int kind) {
        return [=] {
            return mmap(nullptr, size, PROT_READ | PROT_WRITE, kind | MAP_ANONYMOUS, -1, 0) == MAP_FAILED ? -1 : 0;
        };
    };
    EXPECT_EQ(contained(mapping(16 << 20, MAP_PRIVATE)), 0);
    EXPECT_EQ(contained(mapping(128 << 20, MAP_PRIVATE)), ENOMEM);
    EXPECT_EQ(contained(mapping(128 << 20, MAP_SHARED)), 0) << "pictures are shared with the program";
}
#endif

TEST_F(ContainmentTest, TellsWhatIsNotInForce)
{
    rules.memoryLimit = 0; // a sanitized build has none, and says so
    // The report as a number: files, calls, and how many gaps are told.
    const auto reported = [&](const std::function<void()>& before) {
        return inProcess([&] {
            before();
            const ContainmentReport report = contain(rules);
            return (report.files ? 100 : 0) + (report.calls ? 10 : 0) + static_cast<int>(report.gaps.size());
        });
    };
    const auto withoutCall = [&](int call) {
        return reported([call] {
            const scmp_filter_ctx filter = seccomp_init(SCMP_ACT_ALLOW);
            seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), call, 0);
            seccomp_load(filter);
        });
    };
    EXPECT_EQ(withoutCall(SCMP_SYS(landlock_create_ruleset)), 11) << "an old kernel";
    if (!fencesFiles())
        return;
    EXPECT_EQ(reported([] {}), 110);
    EXPECT_EQ(withoutCall(SCMP_SYS(seccomp)), 101);
    EXPECT_EQ(reported([] { std::thread([] { pause(); }).detach(); }), 11) << "a thread that runs is not bound";
}

TEST(ContainmentRulesTest, CoverTheMediaAndTheMapsOfAnEdit)
{
    Projection edit;
    edit.clips.push_back({"a", "avformat", "/media/film.mp4", 0, 9, {}, {}});
    edit.clips.push_back({"b", "pixbuf", "/media/row/%04d.png", 0, 9, {}, {}});
    edit.clips.push_back({"c", "color", "red", 0, 9, {}, {}});
    edit.clips[2].filters.push_back({"e", "ladspa", 0, 9, {{"resource", "/bait.so"}}});
    edit.clips.push_back({"d", "melt", "/bait.melt", 0, 9, {}, {}});
    edit.transitions.push_back({"t", "luma", 0, 1, 0, 0, {{"resource", "/maps/bar.pgm"}}});
    edit.transitions.push_back({"u", "composite", 0, 1, 0, 0, {{"luma", "/bait.pgm"}}});
    EXPECT_THAT(placesOf(edit), testing::ElementsAre("/maps/bar.pgm", "/media/film.mp4", "/media/row"));

    const auto covering = [&](std::vector<std::string> readable) {
        ContainmentRules rules;
        rules.readable = std::move(readable);
        return covers(rules, edit);
    };
    EXPECT_TRUE(covering({"/maps", "/media/"}));
    EXPECT_TRUE(covering(placesOf(edit)));
    EXPECT_FALSE(covering({"/maps", "/media/film.mp4"}));
    EXPECT_FALSE(covering({"/map", "/med"}));
}

} // namespace
} // namespace workbench

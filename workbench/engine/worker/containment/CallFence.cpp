#include "workbench/engine/worker/containment/CallFence.h"

#include "workbench/engine/protocol/ContainmentRules.h"

#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>
#include <memory>
#include <system_error>
#include <type_traits>

namespace workbench
{

namespace
{

// Calls are refused by name and the others let through. The other way round would be tighter; but which calls the
// libraries, the drivers and the plug-ins of a machine make changes with every version of them, and nobody can try them
// all. What is a danger to others is a short list.

constexpr int kOtherPrograms[] = {SCMP_SYS(execve), SCMP_SYS(execveat), SCMP_SYS(fork), SCMP_SYS(vfork)};

constexpr int kOtherProcesses[] = {SCMP_SYS(ptrace),          SCMP_SYS(process_vm_readv), SCMP_SYS(process_vm_writev),
                                   SCMP_SYS(process_madvise), SCMP_SYS(process_mrelease), SCMP_SYS(kcmp),
                                   SCMP_SYS(pidfd_open),      SCMP_SYS(pidfd_getfd),      SCMP_SYS(pidfd_send_signal),
                                   SCMP_SYS(tkill),           SCMP_SYS(rt_sigqueueinfo),  SCMP_SYS(migrate_pages),
                                   SCMP_SYS(move_pages)};

// Files: what Landlock does not look at. A file that may be read must not be given other rights or another date.
constexpr int kFileMarks[] = {SCMP_SYS(chmod),
                              SCMP_SYS(fchmod),
                              SCMP_SYS(fchmodat),
                              SCMP_SYS(chown),
                              SCMP_SYS(fchown),
                              SCMP_SYS(lchown),
                              SCMP_SYS(fchownat),
                              SCMP_SYS(setxattr),
                              SCMP_SYS(lsetxattr),
                              SCMP_SYS(fsetxattr),
                              SCMP_SYS(removexattr),
                              SCMP_SYS(utime),
                              SCMP_SYS(lremovexattr),
                              SCMP_SYS(fremovexattr),
                              SCMP_SYS(utimes),
                              SCMP_SYS(utimensat),
                              SCMP_SYS(futimesat),
                              SCMP_SYS(mknod),
                              SCMP_SYS(mknodat),
                              SCMP_SYS(acct),
                              SCMP_SYS(quotactl),
                              SCMP_SYS(quotactl_fd),
                              SCMP_SYS(name_to_handle_at),
                              SCMP_SYS(open_by_handle_at)};

constexpr int kSystem[] = {
    SCMP_SYS(unshare),       SCMP_SYS(setns),         SCMP_SYS(mount),           SCMP_SYS(umount2),
    SCMP_SYS(pivot_root),    SCMP_SYS(chroot),        SCMP_SYS(move_mount),      SCMP_SYS(open_tree),
    SCMP_SYS(fsopen),        SCMP_SYS(fsconfig),      SCMP_SYS(fsmount),         SCMP_SYS(fspick),
    SCMP_SYS(mount_setattr), SCMP_SYS(bpf),           SCMP_SYS(perf_event_open), SCMP_SYS(userfaultfd),
    SCMP_SYS(add_key),       SCMP_SYS(request_key),   SCMP_SYS(keyctl),          SCMP_SYS(init_module),
    SCMP_SYS(finit_module),  SCMP_SYS(delete_module), SCMP_SYS(kexec_load),      SCMP_SYS(kexec_file_load),
    SCMP_SYS(reboot),        SCMP_SYS(swapon),        SCMP_SYS(swapoff),         SCMP_SYS(sethostname),
    SCMP_SYS(setdomainname), SCMP_SYS(settimeofday),  SCMP_SYS(clock_settime),   SCMP_SYS(clock_adjtime),
    SCMP_SYS(adjtimex),      SCMP_SYS(iopl),          SCMP_SYS(ioperm),          SCMP_SYS(modify_ldt),
    SCMP_SYS(personality),   SCMP_SYS(syslog),        SCMP_SYS(vhangup),         SCMP_SYS(fanotify_init),
    SCMP_SYS(setuid),        SCMP_SYS(setgid),        SCMP_SYS(setreuid),        SCMP_SYS(setregid),
    SCMP_SYS(setresuid),     SCMP_SYS(setresgid),     SCMP_SYS(setfsuid),        SCMP_SYS(setfsgid),
    SCMP_SYS(setgroups),     SCMP_SYS(capset),        SCMP_SYS(setsid),          SCMP_SYS(setpgid),
    SCMP_SYS(mq_open),       SCMP_SYS(msgget),        SCMP_SYS(listen)};

// A filter sees numbers, not what they point to. Libraries do without these where the kernel has none of them; for
// clone3 they take clone, whose flags can be seen.
constexpr int kUnseen[] = {SCMP_SYS(clone3), SCMP_SYS(io_uring_setup), SCMP_SYS(io_uring_enter),
                           SCMP_SYS(io_uring_register)};

// Sound without a server is mixed in memory that all programs share.
constexpr int kSharedMemory[] = {SCMP_SYS(shmget), SCMP_SYS(shmat), SCMP_SYS(semget)};

constexpr unsigned kNewNamespaces =
    CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;
constexpr scmp_datum_t kLowWord = 0xffffffff; // all that the kernel reads of an `int`

using Filter = std::unique_ptr<std::remove_pointer_t<scmp_filter_ctx>, decltype(&seccomp_release)>;

class CallRules
{
public:
    explicit CallRules(scmp_filter_ctx filter)
        : filter_(filter)
    {
    }

    template <std::size_t count>
    void refuse(const int (&calls)[count], int error)
    {
        for (const int call : calls)
            refuse(call, error, {});
    }

    void refuse(int call, int error, std::initializer_list<scmp_arg_cmp> when)
    {
        const int result = seccomp_rule_add_array(filter_, SCMP_ACT_ERRNO(static_cast<std::uint32_t>(error)), call,
                                                  static_cast<unsigned>(when.size()), when.begin());
        // Some calls are not there on some processors.
        if (result != 0 && result != -EDOM)
            result_ = result;
    }

    int result() const { return result_; }

private:
    scmp_filter_ctx filter_;
    int result_ = 0;
};

scmp_arg_cmp differs(unsigned argument, scmp_datum_t value)
{
    return {argument, SCMP_CMP_NE, value, 0};
}

scmp_arg_cmp masked(unsigned argument, scmp_datum_t mask, scmp_datum_t value)
{
    return {argument, SCMP_CMP_MASKED_EQ, mask, value};
}

void refuseProcesses(CallRules& rules)
{
    rules.refuse(kOtherPrograms, EPERM);
    rules.refuse(kOtherProcesses, EPERM);
    rules.refuse(SCMP_SYS(clone), EPERM, {masked(0, CLONE_THREAD, 0)});
    for (unsigned flag = 1U << 31; flag != 0; flag >>= 1U)
        if (flag & kNewNamespaces)
            rules.refuse(SCMP_SYS(clone), EPERM, {masked(0, flag, flag)});
    const auto self = static_cast<scmp_datum_t>(getpid());
    for (const int signal : {SCMP_SYS(kill), SCMP_SYS(tgkill), SCMP_SYS(rt_tgsigqueueinfo)})
        rules.refuse(signal, EPERM, {differs(0, self)});
    rules.refuse(SCMP_SYS(prlimit64), EPERM, {differs(0, 0)});
}

void refuseNetwork(CallRules& rules, bool sound)
{
    if (!sound) {
        rules.refuse(SCMP_SYS(socket), EACCES, {});
        rules.refuse(kSharedMemory, EACCES);
        return;
    }
    rules.refuse(SCMP_SYS(socket), EACCES, {differs(0, AF_UNIX)});
}

std::string callProblem(int error)
{
    return "Network and other programs are not fenced off: " + std::generic_category().message(-error) + '.';
}

} // namespace

std::string fenceCalls(const ContainmentRules& rules)
{
    const Filter filter(seccomp_init(SCMP_ACT_ALLOW), &seccomp_release);
    if (!filter)
        return callProblem(-ENOSYS);
    CallRules calls(filter.get());
    refuseProcesses(calls);
    refuseNetwork(calls, rules.sound);
    calls.refuse(kFileMarks, EPERM);
    calls.refuse(kSystem, EPERM);
    calls.refuse(kUnseen, ENOSYS);
    // What is typed into a terminal is run by it.
    calls.refuse(SCMP_SYS(ioctl), EPERM, {masked(1, kLowWord, TIOCSTI)});
    if (calls.result() != 0)
        return callProblem(calls.result());

    // Calls by way of another processor's numbers would pass the filter unseen.
    int result = seccomp_attr_set(filter.get(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS);
    if (result == 0)
        result = seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1);
    if (result == 0)
        result = seccomp_load(filter.get());
    return result == 0 ? "" : callProblem(result);
}

} // namespace workbench

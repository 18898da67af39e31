#include <platform/linux/process/ThreadConfinement.h>

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tulvane {

namespace {

// Newer than the headers of the oldest system that this is built on: since the third version of Landlock.
constexpr std::uint64_t truncateFiles = 1ULL << 14;
constexpr std::uint64_t changeFiles = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                                      LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
                                      LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
                                      LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
                                      LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;

/// Handling an access without a rule that permits it denies it everywhere.
bool takeFiles()
{
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return false;
    std::uint64_t handled = changeFiles;
    if (version >= 2)
        handled |= LANDLOCK_ACCESS_FS_REFER;
    if (version >= 3)
        handled |= truncateFiles;
    const landlock_ruleset_attr attributes{.handled_access_fs = handled};
    const long rules = syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0);
    if (rules < 0)
        return false;
    const bool taken = syscall(SYS_landlock_restrict_self, rules, 0) == 0;
    close(static_cast<int>(rules));
    return taken;
}

#if defined(__x86_64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t architecture = 0;
#endif
// Calls of the other ABI of x86-64 have this bit; nothing here makes any.
constexpr std::uint32_t otherAbi = 0x4000'0000;

constexpr std::array deniedCalls{SYS_socket,
                                 SYS_connect,
                                 SYS_bind,
                                 SYS_listen,
                                 SYS_accept,
                                 SYS_accept4,
                                 SYS_execve,
                                 SYS_execveat,
                                 SYS_ptrace,
                                 SYS_process_vm_readv,
                                 SYS_process_vm_writev,
                                 SYS_open_by_handle_at,
                                 SYS_io_uring_setup};

sock_filter load(std::size_t offset)
{
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
}

sock_filter end(std::uint32_t verdict)
{
    return BPF_STMT(BPF_RET | BPF_K, verdict);
}

/// Skips the next instruction unless the loaded number stands so to `number`.
sock_filter unless(std::uint16_t relation, std::uint32_t number)
{
    return BPF_JUMP(static_cast<std::uint16_t>(BPF_JMP | relation | BPF_K), number, 0, 1);
}

std::vector<sock_filter> filterOfCalls()
{
    constexpr std::uint32_t deny = SECCOMP_RET_ERRNO | EACCES;
    std::vector<sock_filter> filter{load(offsetof(seccomp_data, arch)),
                                    BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, architecture, 1, 0),
                                    end(deny),
                                    load(offsetof(seccomp_data, nr)),
                                    unless(BPF_JGE, otherAbi),
                                    end(deny)};
    for (const long call : deniedCalls) {
        filter.push_back(unless(BPF_JEQ, static_cast<std::uint32_t>(call)));
        filter.push_back(end(deny));
    }
    filter.push_back(end(SECCOMP_RET_ALLOW));
    return filter;
}

bool takeCalls()
{
    if (architecture == 0)
        return false;
    std::vector<sock_filter> filter = filterOfCalls();
    sock_fprog program{.len = static_cast<unsigned short>(filter.size()), .filter = filter.data()};
    return syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, 0, &program) == 0;
}

} // namespace

Confinement confineThread()
{
    // Both ask for it: the thread can gain no rights by starting a program.
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return {};
    const bool files = takeFiles();
    return {.files = files, .calls = takeCalls()};
}

} // namespace tulvane

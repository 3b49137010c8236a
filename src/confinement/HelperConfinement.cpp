#include "confinement/HelperConfinement.hpp"

#include "base/FileDescriptor.hpp"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>

namespace pagora {

namespace {

// Landlock, as the kernel documents it. Older headers lack some of the names.
namespace landlock {
constexpr std::uint64_t Execute = 1 << 0;
constexpr std::uint64_t WriteFile = 1 << 1;
constexpr std::uint64_t ReadFile = 1 << 2;
constexpr std::uint64_t ReadFolder = 1 << 3;
constexpr std::uint64_t firstRights = (1 << 13) - 1;
constexpr std::uint64_t Refer = 1 << 13;
constexpr std::uint64_t Truncate = 1 << 14;
constexpr std::uint64_t DeviceControl = 1 << 15;
constexpr std::uint64_t deviceRights = 1 << 6 | 1 << 11;
constexpr int belowPath = 1;
constexpr unsigned askForVersion = 1;

struct Ruleset {
    std::uint64_t files;
    std::uint64_t network;
    std::uint64_t scoped;
};
struct __attribute__((packed)) Rule {
    std::uint64_t rights;
    std::int32_t folder;
};
constexpr long createRuleset = 444;
constexpr long addRule = 445;
constexpr long restrictSelf = 446;
}

std::uint64_t rightsOf(long version)
{
    auto rights = landlock::firstRights;
    if (version >= 2)
        rights |= landlock::Refer;
    if (version >= 3)
        rights |= landlock::Truncate;
    if (version >= 5)
        rights |= landlock::DeviceControl;
    return rights;
}

bool allow(int ruleset, const std::string& path, std::uint64_t rights)
{
    const FileDescriptor folder(::open(path.c_str(), O_PATH | O_CLOEXEC));
    if (!folder)
        return errno == ENOENT;
    const landlock::Rule rule { rights, folder.get() };
    return ::syscall(landlock::addRule, ruleset, landlock::belowPath, &rule, 0) == 0;
}

bool confineFiles(const std::vector<std::string>& folders)
{
    const auto version = ::syscall(landlock::createRuleset, nullptr, 0, landlock::askForVersion);
    if (version < 1)
        return false;
    const auto rights = rightsOf(version);
    // Version 4 adds TCP rules; version 6 adds scopes for signals and abstract sockets.
    const landlock::Ruleset attributes { rights, version >= 4 ? 3u : 0u, version >= 6 ? 3u : 0u };
    const auto size = version >= 6 ? sizeof attributes : version >= 4 ? std::size_t { 16 } : std::size_t { 8 };
    const FileDescriptor ruleset(static_cast<int>(::syscall(landlock::createRuleset, &attributes, size, 0)));
    if (!ruleset)
        return false;
    std::error_code ignored;
    const auto ownFolder = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path().string();
    const auto reading = landlock::Execute | landlock::ReadFile | landlock::ReadFolder;
    for (const auto& path : { std::string("/usr"), std::string("/lib"), std::string("/lib64"), std::string("/app"),
             std::string("/etc"), std::string("/var/cache/fontconfig"), ownFolder }) {
        if (!allow(ruleset.get(), path, reading))
            return false;
    }
    if (!allow(ruleset.get(), "/dev/null", landlock::ReadFile | landlock::WriteFile))
        return false;
    const auto making = rights & ~(landlock::Execute | landlock::DeviceControl | landlock::deviceRights);
    for (const auto& folder : folders) {
        if (!allow(ruleset.get(), folder, making))
            return false;
    }
    return ::syscall(landlock::restrictSelf, ruleset.get(), 0) == 0;
}

// System calls that reading a book does not need, with the numbers of this architecture.
constexpr long refusedCalls[] = {
    SYS_socket,
    SYS_socketpair,
    SYS_connect,
    SYS_bind,
    SYS_listen,
    SYS_accept4,
    SYS_sendto,
    SYS_sendmsg,
    SYS_sendmmsg,
    SYS_ptrace,
    SYS_process_vm_readv,
    SYS_process_vm_writev,
    SYS_kill,
    SYS_tkill,
    SYS_rt_sigqueueinfo,
    SYS_rt_tgsigqueueinfo,
    SYS_mount,
    SYS_umount2,
    SYS_pivot_root,
    SYS_chroot,
    SYS_unshare,
    SYS_setns,
    SYS_bpf,
    SYS_perf_event_open,
    SYS_userfaultfd,
    SYS_keyctl,
    SYS_add_key,
    SYS_request_key,
    SYS_init_module,
    SYS_finit_module,
    SYS_delete_module,
    SYS_kexec_load,
    SYS_reboot,
    SYS_swapon,
    SYS_swapoff,
    SYS_acct,
    SYS_open_by_handle_at,
    // These have the same numbers on all architectures: pidfd_send_signal, io_uring, the new mount calls, pidfd_getfd.
    424,
    425,
    426,
    427,
    428,
    429,
    430,
    431,
    432,
    433,
    438,
    442,
};

#if defined(__x86_64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t architecture = 0;
#endif

bool confineCalls()
{
    if (architecture == 0)
        return false;
    constexpr std::uint32_t otherNumbering = 0x40000000;
    std::vector<sock_filter> filter {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, architecture, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, otherNumbering, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    for (const long call : refusedCalls) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call), 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog program { static_cast<unsigned short>(filter.size()), filter.data() };
    return ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

bool limit(__rlimit_resource resource, std::uint64_t most)
{
    const rlimit both { most, most };
    return ::setrlimit(resource, &both) == 0;
}

bool confineSizes(const HelperConfinement& confinement)
{
    bool all = limit(RLIMIT_CORE, 0) && limit(RLIMIT_FSIZE, confinement.fileBytes);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) && !defined(PAGORA_FUZZING)
    // Sanitizers reserve far more address space than they use.
    all = limit(RLIMIT_DATA, confinement.memoryBytes) && all;
#endif
    return all;
}

}

HelperWalls confineHelper(const HelperConfinement& confinement)
{
    HelperWalls result;
    result.limits = confineSizes(confinement);
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return result;
    result.files = confineFiles(confinement.folders);
    result.calls = confineCalls();
    return result;
}

void allowProcessorTime(unsigned seconds)
{
    timespec used {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    rlimit limits {};
    if (::getrlimit(RLIMIT_CPU, &limits) != 0)
        return;
    limits.rlim_cur = std::min<rlim_t>(static_cast<rlim_t>(used.tv_sec) + seconds + 1, limits.rlim_max);
    ::setrlimit(RLIMIT_CPU, &limits);
}

}

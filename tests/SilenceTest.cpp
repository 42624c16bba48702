#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/LibraryFixture.hpp"
#include "support/LibraryUse.hpp"
#include "support/OpenDescriptors.hpp"
#include "support/ScopedRoot.hpp"

namespace reference::docparser {
namespace {

namespace fs = std::filesystem;

/// The system calls for reading files, for memory and locks, and for waiting for a leased file.
/// None of them starts a thread or a process, creates, changes or removes a file, or reaches
/// another process.
const std::vector<std::uint32_t> kHarmlessCalls = {
    SYS_brk,       SYS_clock_gettime,  SYS_clock_nanosleep, SYS_close,       SYS_exit_group,
    SYS_fcntl,     SYS_fstat,          SYS_futex,           SYS_getdents64,  SYS_getpid,
    SYS_getrandom, SYS_gettid,         SYS_lseek,           SYS_madvise,     SYS_mmap,
    SYS_mprotect,  SYS_mremap,         SYS_munmap,          SYS_pipe2,       SYS_newfstatat,
    SYS_pread64,   SYS_read,           SYS_rt_sigaction,    SYS_sched_yield, SYS_sigaltstack,
    SYS_statx,     SYS_rt_sigprocmask,
};

std::vector<sock_filter> makeFilter() {
    const auto load = [](std::size_t offset) {
        return sock_filter{BPF_LD | BPF_W | BPF_ABS, 0, 0, static_cast<std::uint32_t>(offset)};
    };
    const auto allow = sock_filter{BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW};
    const auto kill = sock_filter{BPF_RET | BPF_K, 0, 0, SECCOMP_RET_KILL_PROCESS};
    std::vector<sock_filter> filter = {load(offsetof(seccomp_data, nr))};
    for (const std::uint32_t call : kHarmlessCalls) {
        filter.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, call});
        filter.push_back(allow);
    }
    // Writes are allowed except to the standard streams: no file is open for writing, and the
    // sanitizers look at memory through a pipe. A file may be opened for reading only.
    constexpr std::uint32_t kForWriting = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC;
    const std::size_t descriptor = offsetof(seccomp_data, args);
    const std::size_t flags = descriptor + 2 * sizeof(std::uint64_t);
    filter.insert(filter.end(), {sock_filter{BPF_JMP | BPF_JEQ | BPF_K, 0, 4, SYS_write},
                                 load(descriptor),
                                 {BPF_JMP | BPF_JGT | BPF_K, 0, 1, STDERR_FILENO},
                                 allow,
                                 kill,
                                 {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, SYS_openat},
                                 kill,
                                 load(flags),
                                 {BPF_JMP | BPF_JSET | BPF_K, 0, 1, kForWriting},
                                 kill,
                                 allow});
    return filter;
}

/// From here on the kernel ends the process at the first call that is not harmless.
void allowHarmlessCallsOnly() {
    std::vector<sock_filter> filter = makeFilter();
    sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        ::_exit(100);
}

template <typename Action>
[[noreturn]] void runHarmlessly(Action action) {
    allowHarmlessCallsOnly();
    ::_exit(action() ? 0 : 1);
}

class SilenceTest : public testsupport::LibraryFixture {
protected:
    SilenceTest() { GTEST_FLAG_SET(death_test_style, "fast"); }

    testsupport::ScopedRoot root;
};

TEST_F(SilenceTest, TheKernelStopsWhatTheLibraryMustNotDo) {
    const std::pair<const char*, std::function<bool()>> actions[] = {
        {"print an error", [] { return std::fputs("x", stderr) >= 0; }},
        {"print", [] { return std::puts("x") >= 0 && std::fflush(stdout) == 0; }},
        {"start a thread", [] { return std::thread([] {}).joinable(); }},
        {"write", [this] { return std::ofstream(root.nativePathOf("x")).is_open(); }},
        {"make a folder", [this] { return fs::create_directory(root.nativePathOf("x")); }},
        {"remove", [this] { return fs::remove_all(root.path()) > 0; }},
    };
    for (const auto& [name, action] : actions)
        EXPECT_EXIT(runHarmlessly(action), testing::KilledBySignal(SIGSYS), "") << name;
}

TEST_F(SilenceTest, TheLibraryStartsWritesAndPrintsNothingAndClosesItsFiles) {
    writeDocumentation(root);
    const auto useItAll = [this] {
        const std::ptrdiff_t descriptors = testsupport::openDescriptors();
        return testsupport::useTheWholeLibrary(root) &&
               testsupport::openDescriptors() == descriptors;
    };
    EXPECT_EXIT(runHarmlessly(useItAll), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace reference::docparser

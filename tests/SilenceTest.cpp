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

#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/LookupFixture.hpp"
#include "support/OpenDescriptors.hpp"
#include "support/ResourceNotation.hpp"
#include "support/ZipFile.hpp"

namespace reference::docparser {
namespace {

using namespace DocResourceParser;
namespace fs = std::filesystem;
using testsupport::lookupText;

/// The system calls that looking at files, memory and locks takes. None of them starts a thread or
/// a process, creates, changes or removes a file, or reaches another process.
const std::vector<std::uint32_t> kHarmlessCalls = {
    SYS_brk,     SYS_clock_gettime,  SYS_close,       SYS_exit_group,
    SYS_fcntl,   SYS_fstat,          SYS_futex,       SYS_getdents64,
    SYS_getpid,  SYS_getrandom,      SYS_gettid,      SYS_lseek,
    SYS_madvise, SYS_mmap,           SYS_mprotect,    SYS_mremap,
    SYS_munmap,  SYS_pipe2,          SYS_newfstatat,  SYS_pread64,
    SYS_read,    SYS_rt_sigaction,   SYS_sched_yield, SYS_sigaltstack,
    SYS_statx,   SYS_rt_sigprocmask,
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
    // Writing may be done anywhere but to the standard streams, for no file is open for it: the
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

class SilenceTest : public testsupport::LookupFixture {
protected:
    SilenceTest() { GTEST_FLAG_SET(death_test_style, "fast"); }
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

bool useTheWholeLibrary(const testsupport::ScopedRoot& root) {
    const std::ptrdiff_t descriptors = testsupport::openDescriptors();
    restoreDefaultSettings();
    const std::string lookups = testsupport::notationOf(getResourceLookupFiles());
    const std::string items = testsupport::notationOf(getResourceFile(u"abc"));
    const bool isHostInstalled = isProductInstalled(u"f") && isProductInstalled(u"p");
    setTestProducts({}, {});
    setReferenceRoot(root.pathOf("missing"));
    clearSupportPackageCache();
    const bool isNothingLeft = testsupport::notationOf(getResourceLookupFiles()).empty() &&
                               getResourceFile(u"abc").empty() &&
                               openAndReadFile(root.pathOf("missing")).empty();
    return lookups == "+f:Ja n=1@Ja,2@En | +p:Zip m=1@Zip | -q:Zip n=1@Zip" &&
           items == "f:Ja a=1 b=4 c=5 d=3" && isHostInstalled && isNothingLeft &&
           testsupport::openDescriptors() == descriptors;
}

TEST_F(SilenceTest, TheLibraryStartsWritesAndPrintsNothingAndClosesItsFiles) {
    write({{"a.json", "f:En n=1,2 | p:En m=1"},
           {"a_ja.json", "f:Ja n=1"},
           {"a_de.json", "f:De n=1"},
           {"b.zip/x.json", "q:Zip n=1 | p:Zip m=1"}});
    root.lookupFile("broken.json", "no JSON");
    root.lookupFile("broken.zip", "no zip");
    testsupport::ZipFile()
        .add("x.json", lookupText("g:Bad n=1"))
        .build()
        .breakChecksum(0)
        .write(root.lookupFolder() / "broken_entry.zip");
    testsupport::ZipFile()
        .add("x.json", lookupText("g:Bad n=1"))
        .build()
        .truncate(60)
        .write(root.lookupFolder() / "truncated.zip");
    root.referenceFile("abc.json", testsupport::referenceText("f:En a=1 b=2 d=3"));
    root.referenceFile("abc_ja.json", testsupport::referenceText("f:Ja b=4 c=5"));
    root.writeFile("installedProducts.json", R"([{"shortName": "f"}])");
    root.makeFolder("supportPackages/p");
    // What is installed the built-in services say.
    environment::Services services;
    services.docLanguage = host().docLanguage;
    services.docDataRoot = host().docDataRoot;
    environment::setServices(services);
    EXPECT_EXIT(runHarmlessly([this] { return useTheWholeLibrary(root); }),
                testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace reference::docparser

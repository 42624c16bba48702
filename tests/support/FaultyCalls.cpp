#include "support/FaultyCalls.hpp"

#include <atomic>
#include <cerrno>
#include <limits>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/types.h>

namespace testsupport {

namespace {

constexpr std::size_t kNoFault = std::numeric_limits<std::size_t>::max();

// The number of calls of this thread that still succeed.
thread_local std::size_t remaining = kNoFault;
thread_local CallFault kind = CallFault::Error;
thread_local const char* struckCall = nullptr;

std::atomic<std::size_t> strayCloses = 0;

int errorOf(CallFault fault) noexcept {
    switch (fault) {
    case CallFault::Interrupt:
        return EINTR;
    case CallFault::Leased:
        return EWOULDBLOCK;
    default:
        return EIO;
    }
}

bool strikes(const char* call) noexcept {
    if (remaining == kNoFault || struckCall != nullptr)
        return false;
    if (remaining > 0) {
        --remaining;
        return false;
    }
    struckCall = call;
    errno = errorOf(kind);
    return true;
}

bool strikesAny(const char* call) noexcept {
    return kind == CallFault::Error && strikes(call);
}

bool strikesOpening(const char* call) noexcept {
    return kind != CallFault::Short && strikes(call);
}

bool strikesReading(const char* call) noexcept {
    return kind != CallFault::Leased && strikes(call);
}

/// The function of the C library that the program's own one replaces.
template <typename Function>
Function* next(const char* call) noexcept {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, call));
}

template <typename... Arguments>
int openFile(const char* call, Arguments... arguments) noexcept {
    return strikesOpening(call) ? -1 : next<int(Arguments...)>(call)(arguments...);
}

DIR* openFolder(const char* call, const char* path) noexcept {
    return kind != CallFault::Leased && strikesOpening(call) ? nullptr
                                                             : next<DIR*(const char*)>(call)(path);
}

template <typename... Arguments>
int lookAt(const char* call, Arguments... arguments) noexcept {
    return strikesAny(call) ? -1 : next<int(Arguments...)>(call)(arguments...);
}

template <typename... Position>
ssize_t readFile(const char* call, int file, void* buffer, std::size_t size,
                 Position... position) noexcept {
    const auto real = next<ssize_t(int, void*, std::size_t, Position...)>(call);
    if (!strikesReading(call))
        return real(file, buffer, size, position...);
    return kind == CallFault::Short ? real(file, buffer, (size + 1) / 2, position...) : -1;
}

off64_t seek(const char* call, int file, off64_t offset, int whence) noexcept {
    return strikesAny(call) ? -1 : next<off64_t(int, off64_t, int)>(call)(file, offset, whence);
}

void* readEntry(const char* call, DIR* folder) noexcept {
    return strikesAny(call) ? nullptr : next<void*(DIR*)>(call)(folder);
}

void* map(const char* call, void* address, std::size_t size, int protection, int flags, int file,
          off64_t offset) noexcept {
    return strikesAny(call) ? MAP_FAILED
                            : next<void*(void*, std::size_t, int, int, int, off64_t)>(call)(
                                  address, size, protection, flags, file, offset);
}

} // namespace

FaultyCall::FaultyCall(std::size_t succeeding, CallFault fault) noexcept {
    struckCall = nullptr;
    kind = fault;
    remaining = succeeding;
}

FaultyCall::~FaultyCall() {
    remaining = kNoFault;
}

const char* FaultyCall::name() const noexcept {
    return struckCall;
}

std::size_t closesOfNothing() noexcept {
    return strayCloses;
}

} // namespace testsupport

// These have names of their own because the system's headers declare the functions differently. On
// this platform a file offset has 64 bits under either name, so that both name one function.
#pragma GCC visibility push(default)
extern "C" {

int faultyOpen(const char* path, int flags, mode_t mode) __asm__("open");
DIR* faultyOpendir(const char* path) __asm__("opendir");
int faultyStat(const char* path, struct stat* status) __asm__("stat");
int faultyFstat(int file, struct stat* status) __asm__("fstat");
int faultyFstatat(int folder, const char* path, struct stat* status, int flags) __asm__("fstatat");
off64_t faultyLseek(int file, off64_t offset, int whence) __asm__("lseek");
ssize_t faultyRead(int file, void* buffer, std::size_t size) __asm__("read");
ssize_t faultyPread(int file, void* buffer, std::size_t size, off64_t offset) __asm__("pread");
void* faultyReaddir(DIR* folder) __asm__("readdir");
void* faultyMmap(void* address, std::size_t size, int protection, int flags, int file,
                 off64_t offset) __asm__("mmap");
int watchedClose(int file) __asm__("close");

int faultyOpen(const char* path, int flags, mode_t mode) {
    return testsupport::openFile("open", path, flags, mode);
}

DIR* faultyOpendir(const char* path) {
    return testsupport::openFolder("opendir", path);
}

int faultyStat(const char* path, struct stat* status) {
    return testsupport::lookAt("stat", path, status);
}

int faultyFstat(int file, struct stat* status) {
    return testsupport::lookAt("fstat", file, status);
}

int faultyFstatat(int folder, const char* path, struct stat* status, int flags) {
    return testsupport::lookAt("fstatat", folder, path, status, flags);
}

off64_t faultyLseek(int file, off64_t offset, int whence) {
    return testsupport::seek("lseek", file, offset, whence);
}

ssize_t faultyRead(int file, void* buffer, std::size_t size) {
    return testsupport::readFile("read", file, buffer, size);
}

ssize_t faultyPread(int file, void* buffer, std::size_t size, off64_t offset) {
    return testsupport::readFile("pread", file, buffer, size, offset);
}

void* faultyReaddir(DIR* folder) {
    return testsupport::readEntry("readdir", folder);
}

void* faultyMmap(void* address, std::size_t size, int protection, int flags, int file,
                 off64_t offset) {
    return testsupport::map("mmap", address, size, protection, flags, file, offset);
}

[[gnu::alias("open")]] int faultyOpen64(const char* path, int flags, mode_t mode) __asm__("open64");
[[gnu::alias("stat")]] int faultyStat64(const char* path, struct stat* status) __asm__("stat64");
[[gnu::alias("fstat")]] int faultyFstat64(int file, struct stat* status) __asm__("fstat64");
[[gnu::alias("lseek")]] off64_t faultyLseek64(int file, off64_t offset,
                                              int whence) __asm__("lseek64");
[[gnu::alias("pread")]] ssize_t faultyPread64(int file, void* buffer, std::size_t size,
                                              off64_t offset) __asm__("pread64");
[[gnu::alias("readdir")]] void* faultyReaddir64(DIR* folder) __asm__("readdir64");
[[gnu::alias("mmap")]] void* faultyMmap64(void* address, std::size_t size, int protection,
                                          int flags, int file, off64_t offset) __asm__("mmap64");

int watchedClose(int file) {
    const int result = testsupport::next<int(int)>("close")(file);
    if (result != 0 && errno == EBADF)
        ++testsupport::strayCloses;
    return result;
}

} // extern "C"
#pragma GCC visibility pop

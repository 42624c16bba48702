#include "environment/local/OpenedFile.hpp"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>

#include "environment/PathAndText.hpp"

namespace environment::local {

namespace {

constexpr off_t kMaximumHoles = 64 << 20;

// The pauses add up to more than the 45 seconds after which Linux takes a lease away.
constexpr std::chrono::milliseconds kFirstPause{1};
constexpr std::chrono::milliseconds kLastPause{1 << 15};

// Not every system reads more than 2^31 - 1 bytes at once.
constexpr std::size_t kMaximumRead = std::size_t{1} << 30;

bool isFileOrFolder(const struct stat& status) {
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
}

/// A file system that is served by another process may interrupt a call.
int openDescriptor(const std::string& path) {
    for (;;) {
        const int number = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        if (number >= 0 || errno != EINTR)
            return number;
    }
}

/// The first attempt makes the system ask the holder of a lease to give it up. Waiting in `open`
/// itself would also wait for a pipe, if the path came to name one.
int openWhenNotLeased(const std::string& path) {
    for (auto pause = kFirstPause;; pause *= 2) {
        const int number = openDescriptor(path);
        if (number >= 0 || errno != EWOULDBLOCK || pause > kLastPause)
            return number;
        std::this_thread::sleep_for(pause);
    }
}

/// Moves the descriptor's position. A file system without a notion of holes has none; any other
/// failure counts as large holes.
bool hasLargeHoles(int descriptor, off_t size) {
    off_t holes = 0;
    for (off_t position = 0; size - position + holes > kMaximumHoles;) {
        const off_t hole = ::lseek(descriptor, position, SEEK_HOLE);
        if (hole >= size || (hole < 0 && (errno == EINVAL || errno == ENOTSUP || errno == ENOTTY)))
            return false;
        if (hole < 0)
            return true;
        const off_t data = ::lseek(descriptor, hole, SEEK_DATA);
        position = data < 0 ? size : std::min(data, size);
        holes += position - hole;
        if (holes > kMaximumHoles)
            return true;
    }
    return false;
}

std::optional<off_t> contentSize(int descriptor, const struct stat& status) {
    if (S_ISDIR(status.st_mode) || hasLargeHoles(descriptor, status.st_size))
        return std::nullopt;
    return status.st_size;
}

} // namespace

std::optional<std::string> accessPath(const std::u16string& pathname) {
    std::string path = fl::filesystem::detail::make_native_access_form_with_cleanup_i18n(pathname);
    return path.find('\0') == path.npos ? std::optional(std::move(path)) : std::nullopt;
}

std::optional<OpenedFile> openForReading(const std::u16string& pathname) {
    const std::optional<std::string> path = accessPath(pathname);
    struct stat status {};
    // The kind is checked before opening, because opening a pipe would wake a writer that waits for
    // a reader, and again afterwards, because the path may name another file by then.
    if (!path || ::stat(path->c_str(), &status) != 0 || !isFileOrFolder(status))
        return std::nullopt;
    FileDescriptor descriptor(openWhenNotLeased(*path));
    if (descriptor.get() < 0 || ::fstat(descriptor.get(), &status) != 0 || !isFileOrFolder(status))
        return std::nullopt;
    const std::optional<off_t> size = contentSize(descriptor.get(), status);
    return OpenedFile{std::move(descriptor), size};
}

ssize_t readAt(int descriptor, char* buffer, std::size_t capacity, off_t position) noexcept {
    for (;;) {
        const ssize_t count =
            ::pread(descriptor, buffer, std::min(capacity, kMaximumRead), position);
        if (count >= 0 || errno != EINTR)
            return count;
    }
}

} // namespace environment::local

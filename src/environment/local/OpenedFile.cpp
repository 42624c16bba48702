#include "environment/local/OpenedFile.hpp"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

#include "environment/PathAndText.hpp"

namespace environment::local {

namespace {

constexpr off_t kMaximumHoles = 64 << 20;

bool isFileOrFolder(const struct stat& status) {
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
}

/// A file system that asks another process may be interrupted.
int openDescriptor(const std::string& path) {
    for (;;) {
        const int number = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        if (number >= 0 || errno != EINTR)
            return number;
    }
}

/// Moves the descriptor's position. Where the file system has no notion of holes there are none;
/// any other failure to tell counts as large holes.
bool hasLargeHoles(int descriptor, off_t size) {
    off_t holes = 0;
    for (off_t position = 0; size - position + holes > kMaximumHoles;) {
        const off_t hole = ::lseek(descriptor, position, SEEK_HOLE);
        if (hole >= size || (hole < 0 && (errno == EINVAL || errno == ENOTSUP)))
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

bool hasContent(int descriptor, const struct stat& status) {
    if (S_ISDIR(status.st_mode))
        return false;
    return status.st_size <= kMaximumHoles ||
           (!hasLargeHoles(descriptor, status.st_size) && ::lseek(descriptor, 0, SEEK_SET) == 0);
}

} // namespace

std::optional<std::string> accessPath(const std::u16string& pathname) {
    if (pathname.find(u'\0') != std::u16string::npos)
        return std::nullopt;
    return fl::filesystem::detail::make_native_access_form_with_cleanup_i18n(pathname);
}

std::optional<OpenedFile> openForReading(const std::u16string& pathname) {
    const std::optional<std::string> path = accessPath(pathname);
    struct stat status {};
    // Looked at first, for opening a pipe would wake a writer that waits for a reader, and again
    // when open, for the path may have come to name another file meanwhile.
    if (!path || ::stat(path->c_str(), &status) != 0 || !isFileOrFolder(status))
        return std::nullopt;
    FileDescriptor descriptor(openDescriptor(*path));
    if (descriptor.get() < 0 || ::fstat(descriptor.get(), &status) != 0 || !isFileOrFolder(status))
        return std::nullopt;
    const bool isStored = hasContent(descriptor.get(), status);
    return OpenedFile{std::move(descriptor), isStored};
}

ssize_t readAt(int descriptor, char* buffer, std::size_t capacity, off_t position) noexcept {
    for (;;) {
        const ssize_t count = ::pread(descriptor, buffer, capacity, position);
        if (count >= 0 || errno != EINTR)
            return count;
    }
}

} // namespace environment::local

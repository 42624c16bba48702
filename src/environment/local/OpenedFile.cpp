#include "environment/local/OpenedFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include "environment/PathAndText.hpp"

namespace environment::local {

namespace {

bool isFileOrFolder(const struct stat& status) {
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
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
    FileDescriptor descriptor(::open(path->c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (descriptor.get() < 0 || ::fstat(descriptor.get(), &status) != 0 || !isFileOrFolder(status))
        return std::nullopt;
    return OpenedFile{std::move(descriptor), S_ISDIR(status.st_mode)};
}

} // namespace environment::local

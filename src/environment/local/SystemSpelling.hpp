#pragma once

#include <ctime>

#include <sys/stat.h>

/// What one system spells differently from the next.
namespace environment::local {

/// When a file was last written.
inline timespec modificationTime(const struct stat& status) noexcept {
#ifdef __APPLE__
    return status.st_mtimespec;
#else
    return status.st_mtim;
#endif
}

} // namespace environment::local

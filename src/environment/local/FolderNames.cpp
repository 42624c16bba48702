#include "environment/local/FolderNames.hpp"

#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>

#include "environment/PathAndText.hpp"

namespace environment::local {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

// The iterators of std::filesystem do not serve: those of GCC end the program when memory runs out.
std::unique_ptr<DIR, CloseFolder> openFolder(const std::string& path) {
    for (;;) {
        std::unique_ptr<DIR, CloseFolder> folder(::opendir(path.c_str()));
        if (folder || errno != EINTR)
            return folder;
    }
}

bool isOfKind(DIR* folder, const dirent& entry, EntryKind kind) {
    if (entry.d_type == DT_REG)
        return kind == EntryKind::File;
    if (entry.d_type == DT_DIR)
        return kind == EntryKind::Folder;
    struct stat status {};
    if (::fstatat(::dirfd(folder), entry.d_name, &status, 0) != 0)
        return false;
    return kind == EntryKind::File ? S_ISREG(status.st_mode) : S_ISDIR(status.st_mode);
}

bool isFolderItselfOrParent(const dirent& entry) {
    return std::strcmp(entry.d_name, ".") == 0 || std::strcmp(entry.d_name, "..") == 0;
}

void addName(const char* name, std::vector<std::u16string>& names) {
    const fl::i18n::codecvt_string_to_ustring decoder("utf8", false);
    try {
        names.push_back(decoder.convert(name, std::strlen(name)));
    } catch (const std::range_error&) {
        // The name is not UTF-8.
    }
}

} // namespace

std::error_code addNames(const std::string& folder, const std::string& pattern, EntryKind kind,
                         std::vector<std::u16string>& names) {
    const auto opened = openFolder(folder);
    if (!opened)
        return {errno, std::generic_category()};
    for (;;) {
        errno = 0;
        const dirent* const entry = ::readdir(opened.get());
        if (entry == nullptr)
            return {errno, std::generic_category()};
        if (!isFolderItselfOrParent(*entry) && ::fnmatch(pattern.c_str(), entry->d_name, 0) == 0 &&
            isOfKind(opened.get(), *entry, kind))
            addName(entry->d_name, names);
    }
}

} // namespace environment::local

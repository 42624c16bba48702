#include "PosixProgram.hpp"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Readers.hpp"

namespace bench {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

std::vector<std::string> listFiles(DIR* folder) {
    std::vector<std::string> names;
    while (const dirent* const entry = ::readdir(folder)) {
        std::string name = entry->d_name;
        if (entry->d_type == DT_REG && name.ends_with(".json"))
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

void readFile(int folder, const std::string& name, std::string& text) {
    const int file = ::openat(folder, name.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (file < 0 || ::fstat(file, &status) != 0)
        fail(name);
    text.resize(static_cast<std::size_t>(status.st_size));
    if (::read(file, text.data(), text.size()) != status.st_size)
        fail(name);
    ::close(file);
}

} // namespace

Lookups readLookupFolder(const std::filesystem::path& folder) {
    const std::unique_ptr<DIR, CloseFolder> opened(::opendir(folder.c_str()));
    if (!opened)
        fail(folder);
    Lookups all;
    std::string text;
    for (const std::string& name : listFiles(opened.get())) {
        readFile(::dirfd(opened.get()), name, text);
        all.merge(readLookupsWithBoostJsonArena(text));
    }
    return all;
}

} // namespace bench

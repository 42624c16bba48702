#include "support/ScopedRoot.hpp"

#include <cerrno>
#include <fstream>
#include <system_error>

#include <stdlib.h>
#include <sys/stat.h>

namespace testsupport {

namespace {

std::filesystem::path makeTemporaryFolder() {
    std::string name = std::filesystem::temp_directory_path() / "docparser-test-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), name);
    return name;
}

} // namespace

ScopedRoot::ScopedRoot() : folder_(makeTemporaryFolder()) {}

ScopedRoot::~ScopedRoot() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void ScopedRoot::writeFile(const std::filesystem::path& relative, std::string_view bytes) const {
    const std::filesystem::path path = folder_ / relative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios_base::binary);
    file.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
}

void ScopedRoot::makeFolder(const std::filesystem::path& relative) const {
    std::filesystem::create_directories(folder_ / relative);
}

void ScopedRoot::makePipe(const std::filesystem::path& relative) const {
    const std::filesystem::path path = folder_ / relative;
    std::filesystem::create_directories(path.parent_path());
    if (::mkfifo(path.c_str(), 0600) != 0)
        throw std::system_error(errno, std::generic_category(), path);
}

void ScopedRoot::remove(const std::filesystem::path& relative) const {
    std::filesystem::remove_all(folder_ / relative);
}

void ScopedRoot::lookupFile(const std::filesystem::path& name, std::string_view text) const {
    writeFile(lookupFolder() / name, text);
}

void ScopedRoot::referenceFile(const std::filesystem::path& name, std::string_view text) const {
    writeFile(referenceFolder() / name, text);
}

std::filesystem::path ScopedRoot::lookupFolder() const {
    return folder_ / "docCatalog" / "referenceapi_lookup";
}

std::filesystem::path ScopedRoot::referenceFolder() const {
    return folder_ / "docCatalog" / "referenceapi";
}

} // namespace testsupport

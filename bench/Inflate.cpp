#include "Inflate.hpp"

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <utility>

#include <libdeflate.h>
#include <zip.h>

namespace bench {

namespace {

struct Release {
    void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
    void operator()(zip_file_t* file) const noexcept { zip_fclose(file); }
    void operator()(libdeflate_decompressor* inflater) const noexcept {
        libdeflate_free_decompressor(inflater);
    }
};

using Archive = std::unique_ptr<zip_t, Release>;

[[noreturn]] void fail() {
    throw std::runtime_error("a package cannot be read");
}

Archive openArchive(const std::filesystem::path& package) {
    Archive archive(zip_open(package.c_str(), ZIP_RDONLY, nullptr));
    return archive ? std::move(archive) : throw std::runtime_error("a package cannot be opened");
}

zip_stat_t describe(zip_t* archive, std::uint64_t index) {
    zip_stat_t entry;
    return zip_stat_index(archive, index, 0, &entry) == 0 ? entry : (fail(), entry);
}

std::string read(zip_t* archive, std::uint64_t index, std::uint64_t size, zip_flags_t flags) {
    const std::unique_ptr<zip_file_t, Release> file(zip_fopen_index(archive, index, flags));
    std::string content(size, '\0');
    if (!file || zip_fread(file.get(), content.data(), size) != static_cast<zip_int64_t>(size))
        fail();
    return content;
}

std::uint64_t countEntries(zip_t* archive) {
    return static_cast<std::uint64_t>(zip_get_num_entries(archive, 0));
}

} // namespace

std::vector<std::string> inflateWithLibzip(const std::filesystem::path& package) {
    const Archive archive = openArchive(package);
    std::vector<std::string> contents;
    for (std::uint64_t index = 0; index < countEntries(archive.get()); ++index)
        contents.push_back(read(archive.get(), index, describe(archive.get(), index).size, 0));
    return contents;
}

std::vector<std::string> inflateWithLibdeflate(const std::filesystem::path& package) {
    const Archive archive = openArchive(package);
    const std::unique_ptr<libdeflate_decompressor, Release> inflater(
        libdeflate_alloc_decompressor());
    std::vector<std::string> contents;
    for (std::uint64_t index = 0; index < countEntries(archive.get()); ++index) {
        const zip_stat_t entry = describe(archive.get(), index);
        const std::string packed = read(archive.get(), index, entry.comp_size, ZIP_FL_COMPRESSED);
        std::string content(entry.size, '\0');
        if (libdeflate_deflate_decompress(inflater.get(), packed.data(), packed.size(),
                                          content.data(), content.size(),
                                          nullptr) != LIBDEFLATE_SUCCESS ||
            libdeflate_crc32(0, content.data(), content.size()) != entry.crc)
            fail();
        contents.push_back(std::move(content));
    }
    return contents;
}

} // namespace bench

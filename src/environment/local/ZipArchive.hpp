#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include <zip.h>

#include "environment/ZipPackages.hpp"

namespace opc {

struct zqservices::FileSystemEntry::Leaf {
    std::uint64_t index;
    std::u16string baseName;
    bool isWithinFile; ///< whether the file has as many bytes as the entry claims
};

namespace zippackage {

/// A zip file, read through libzip. Any thread may use it.
class ZipArchive : public std::enable_shared_from_this<ZipArchive> {
public:
    using Leaf = zqservices::FileSystemEntry::Leaf;

    explicit ZipArchive(std::u16string path);

    /// Does nothing when the archive is open already.
    void open();

    /// All entries but the folders, in the order of the central directory; throws when the archive
    /// is not open.
    std::shared_ptr<const std::vector<Leaf>> getLeaves() const;

    /// The whole name of an entry, folders included.
    std::u16string pathOf(const Leaf& leaf) const;

    std::unique_ptr<zqservices::ContentSource> openLeaf(const Leaf& leaf);

private:
    class Content;

    struct Discard {
        void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
    };

    /// Throws when the package may not inflate by `size` bytes more for an entry. An entry that
    /// does not fit takes nothing away from those behind it.
    void checkContentLeft(std::uint64_t index, std::uint64_t size);
    /// Counts the first `size` bytes of an entry, each once however often it is read.
    void countContent(std::uint64_t index, std::uint64_t size);

    const std::u16string path_;
    mutable std::mutex mutex_; // guards the members below and all that libzip derives from them
    std::unique_ptr<zip_t, Discard> archive_;
    std::shared_ptr<const std::vector<Leaf>> leaves_;
    std::unordered_map<std::uint64_t, std::uint64_t> countedContent_; // by the entry's index
    std::uint64_t contentLeft_ = 0;
};

} // namespace zippackage

} // namespace opc

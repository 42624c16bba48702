#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace testsupport {

/// The methods by their numbers in the format.
enum class ZipMethod { Stored = 0, Deflated = 8, Bzip2 = 12 };

/// `number` in `width` bytes, the lowest first.
std::string littleEndian(std::uint64_t number, int width);

/// The bytes of a zip file, to be damaged. Entries are counted in the order of the central
/// directory, from 0; what both the local and the central header have is changed in both places.
class ZipBytes {
public:
    explicit ZipBytes(std::string bytes) : bytes_(std::move(bytes)) {}

    ZipBytes& truncate(std::size_t size);
    ZipBytes& setByte(std::size_t offset, unsigned char value);
    /// Writes the first byte of an entry's stored or compressed content.
    ZipBytes& setContentByte(std::size_t entry, unsigned char value);
    ZipBytes& breakChecksum(std::size_t entry);
    ZipBytes& markEncrypted(std::size_t entry);
    ZipBytes& setMethod(std::size_t entry, std::uint16_t method);
    ZipBytes& setDeclaredSize(std::size_t entry, std::uint32_t size);
    /// `name` may be any bytes, as many as the name that it replaces.
    ZipBytes& setName(std::size_t entry, const std::string& name);
    ZipBytes& setCompressedSize(std::size_t entry, std::uint32_t size);
    ZipBytes& setFlags(std::size_t entry, std::uint16_t flags);

    // These change the central directory alone.
    /// `name` may be any bytes, of any length.
    ZipBytes& setCentralName(std::size_t entry, const std::string& name);
    ZipBytes& setCentralField(std::size_t entry, std::size_t offset, std::size_t width,
                              std::uint32_t number);
    ZipBytes& addExtraField(std::size_t entry, const std::string& field);
    ZipBytes& shareLocalHeader(std::size_t entry, std::size_t other);
    /// The entry gets the other one's bytes, and keeps its own name.
    ZipBytes& shareContent(std::size_t entry, std::size_t other);

    /// Appends a comment, or, unless it `isCounted`, bytes that belong to nothing.
    ZipBytes& append(const std::string& text, bool isCounted);

    std::size_t directoryOffset() const;
    /// The record at the end, which says where the directory lies.
    std::string endRecordBytes() const { return bytes_.substr(endRecord()); }
    const std::string& bytes() const noexcept { return bytes_; }
    std::size_t size() const noexcept { return bytes_.size(); }
    void write(const std::filesystem::path& path) const;

private:
    std::uint32_t numberAt(std::size_t offset, std::size_t width) const;
    void setNumberAt(std::size_t offset, std::size_t width, std::uint32_t number);
    void setHeaderField(std::size_t entry, std::size_t localOffset, std::size_t centralOffset,
                        std::size_t width, std::uint32_t number);
    std::size_t centralHeader(std::size_t entry) const;
    std::size_t localHeader(std::size_t entry) const;
    std::size_t endRecord() const;
    void growDirectory(std::size_t size);

    std::string bytes_;
};

/// Builds a sound zip file in memory.
class ZipFile {
public:
    /// `name` is UTF-8; a folder's name ends with '/'. Names may occur more than once.
    ZipFile& add(const std::string& name, std::string content,
                 ZipMethod method = ZipMethod::Deflated);

    /// Throws when libzip cannot build it.
    ZipBytes build() const;
    void write(const std::filesystem::path& path) const { build().write(path); }

private:
    struct Entry {
        std::string name;
        std::string content;
        ZipMethod method;
    };

    std::vector<Entry> entries_;
    std::set<std::string> names_;
    std::map<std::size_t, std::string>
        repeatedNames_; // by entry; until built, the entry has another name
};

} // namespace testsupport

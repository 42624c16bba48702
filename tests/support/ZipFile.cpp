#include "support/ZipFile.hpp"

#include <fstream>
#include <memory>
#include <stdexcept>

#include <zip.h>

namespace testsupport {

namespace {

// Offsets of the fields of the headers.
constexpr std::size_t kEndRecordSize = 22;
constexpr std::size_t kCentralDirectoryOffset = 16;
constexpr std::size_t kCentralHeaderSize = 46;
constexpr std::size_t kLocalHeaderSize = 30;

void check(bool done, const char* step) {
    if (!done)
        throw std::runtime_error(step);
}

std::string readAll(zip_source_t* source) {
    zip_stat_t status;
    check(zip_source_stat(source, &status) == 0, "zip_source_stat");
    std::string bytes(status.size, '\0');
    check(zip_source_open(source) == 0, "zip_source_open");
    check(zip_source_read(source, bytes.data(), bytes.size()) ==
              static_cast<zip_int64_t>(bytes.size()),
          "zip_source_read");
    zip_source_close(source);
    return bytes;
}

void addEntry(zip_t* archive, const std::string& name, const std::string& content,
              ZipMethod method) {
    if (name.ends_with('/')) {
        check(zip_dir_add(archive, name.c_str(), ZIP_FL_ENC_UTF_8) >= 0, "zip_dir_add");
        return;
    }
    zip_source_t* const source = zip_source_buffer(archive, content.data(), content.size(), 0);
    const zip_int64_t index = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    check(index >= 0, "zip_file_add");
    check(zip_set_file_compression(archive, static_cast<zip_uint64_t>(index),
                                   static_cast<zip_int32_t>(method), 1) == 0,
          "zip_set_file_compression");
}

} // namespace

std::string littleEndian(std::uint64_t number, int width) {
    std::string bytes;
    for (; width > 0; --width, number >>= 8)
        bytes.push_back(static_cast<char>(number & 0xFF));
    return bytes;
}

ZipFile& ZipFile::add(const std::string& name, std::string content, ZipMethod method) {
    std::string unique = name;
    // libzip refuses a name that there is already, so the entry is given it afterwards.
    for (std::size_t number = entries_.size(); !names_.insert(unique).second; ++number) {
        repeatedNames_[entries_.size()] = name;
        const std::string digits = std::to_string(number);
        check(digits.size() <= name.size(), "a repeated name must be longer");
        unique.replace(0, digits.size(), digits);
    }
    entries_.push_back({unique, std::move(content), method});
    return *this;
}

ZipBytes ZipFile::build() const {
    const std::unique_ptr<zip_source_t, decltype(&zip_source_free)> target(
        zip_source_buffer_create(nullptr, 0, 0, nullptr), &zip_source_free);
    std::unique_ptr<zip_t, decltype(&zip_discard)> archive(
        zip_open_from_source(target.get(), ZIP_TRUNCATE, nullptr), &zip_discard);
    check(archive != nullptr, "zip_open_from_source");
    zip_source_keep(target.get());
    for (const Entry& entry : entries_)
        addEntry(archive.get(), entry.name, entry.content, entry.method);
    check(zip_close(archive.get()) == 0, "zip_close");
    static_cast<void>(archive.release());
    ZipBytes bytes(readAll(target.get()));
    for (const auto& [entry, name] : repeatedNames_)
        bytes.setName(entry, name);
    return bytes;
}

ZipBytes& ZipBytes::truncate(std::size_t size) {
    bytes_.resize(size);
    return *this;
}

ZipBytes& ZipBytes::setByte(std::size_t offset, unsigned char value) {
    bytes_.at(offset) = static_cast<char>(value);
    return *this;
}

ZipBytes& ZipBytes::setContentByte(std::size_t entry, unsigned char value) {
    const std::size_t header = localHeader(entry);
    return setByte(header + kLocalHeaderSize + numberAt(header + 26, 2) + numberAt(header + 28, 2),
                   value);
}

ZipBytes& ZipBytes::breakChecksum(std::size_t entry) {
    setHeaderField(entry, 14, 16, 4, ~numberAt(centralHeader(entry) + 16, 4));
    return *this;
}

ZipBytes& ZipBytes::markEncrypted(std::size_t entry) {
    setHeaderField(entry, 6, 8, 2, numberAt(centralHeader(entry) + 8, 2) | 1U);
    return *this;
}

ZipBytes& ZipBytes::setMethod(std::size_t entry, std::uint16_t method) {
    setHeaderField(entry, 8, 10, 2, method);
    return *this;
}

ZipBytes& ZipBytes::setDeclaredSize(std::size_t entry, std::uint32_t size) {
    setHeaderField(entry, 22, 24, 4, size);
    return *this;
}

ZipBytes& ZipBytes::setName(std::size_t entry, const std::string& name) {
    check(numberAt(centralHeader(entry) + 28, 2) == name.size(), "a name of another length");
    bytes_.replace(centralHeader(entry) + kCentralHeaderSize, name.size(), name);
    bytes_.replace(localHeader(entry) + kLocalHeaderSize, name.size(), name);
    return *this;
}

ZipBytes& ZipBytes::setCompressedSize(std::size_t entry, std::uint32_t size) {
    setHeaderField(entry, 18, 20, 4, size);
    return *this;
}

ZipBytes& ZipBytes::setFlags(std::size_t entry, std::uint16_t flags) {
    setHeaderField(entry, 6, 8, 2, flags);
    return *this;
}

ZipBytes& ZipBytes::setCentralField(std::size_t entry, std::size_t offset, std::size_t width,
                                    std::uint32_t number) {
    setNumberAt(centralHeader(entry) + offset, width, number);
    return *this;
}

ZipBytes& ZipBytes::setCentralName(std::size_t entry, const std::string& name) {
    const std::size_t header = centralHeader(entry);
    const std::size_t size = numberAt(header + 28, 2);
    bytes_.replace(header + kCentralHeaderSize, size, name);
    setNumberAt(header + 28, 2, static_cast<std::uint32_t>(name.size()));
    growDirectory(name.size() - size);
    return *this;
}

ZipBytes& ZipBytes::addExtraField(std::size_t entry, const std::string& field) {
    const std::size_t header = centralHeader(entry);
    const std::size_t size = numberAt(header + 30, 2);
    bytes_.insert(header + kCentralHeaderSize + numberAt(header + 28, 2) + size, field);
    setNumberAt(header + 30, 2, static_cast<std::uint32_t>(size + field.size()));
    growDirectory(field.size());
    return *this;
}

ZipBytes& ZipBytes::shareLocalHeader(std::size_t entry, std::size_t other) {
    return setCentralField(entry, 42, 4, static_cast<std::uint32_t>(localHeader(other)));
}

ZipBytes& ZipBytes::shareContent(std::size_t entry, std::size_t other) {
    // Flags, method, time, checksum and sizes.
    const std::string description = bytes_.substr(centralHeader(other) + 8, 20);
    bytes_.replace(centralHeader(entry) + 8, description.size(), description);
    return shareLocalHeader(entry, other);
}

ZipBytes& ZipBytes::append(const std::string& text, bool isCounted) {
    if (isCounted)
        setNumberAt(endRecord() + 20, 2, static_cast<std::uint32_t>(text.size()));
    bytes_ += text;
    return *this;
}

void ZipBytes::write(const std::filesystem::path& path) const {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios_base::binary);
    file.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    file.write(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
    file.close();
}

std::uint32_t ZipBytes::numberAt(std::size_t offset, std::size_t width) const {
    std::uint32_t number = 0;
    for (std::size_t byte = width; byte-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes_.at(offset + byte));
    return number;
}

void ZipBytes::setNumberAt(std::size_t offset, std::size_t width, std::uint32_t number) {
    for (std::size_t byte = 0; byte < width; ++byte)
        setByte(offset + byte, static_cast<unsigned char>(number >> 8 * byte & 0xFF));
}

void ZipBytes::setHeaderField(std::size_t entry, std::size_t localOffset, std::size_t centralOffset,
                              std::size_t width, std::uint32_t number) {
    setNumberAt(localHeader(entry) + localOffset, width, number);
    setNumberAt(centralHeader(entry) + centralOffset, width, number);
}

std::size_t ZipBytes::centralHeader(std::size_t entry) const {
    std::size_t header = directoryOffset();
    for (; entry > 0; --entry)
        header += kCentralHeaderSize + numberAt(header + 28, 2) + numberAt(header + 30, 2) +
                  numberAt(header + 32, 2);
    return header;
}

std::size_t ZipBytes::endRecord() const {
    return bytes_.size() - kEndRecordSize;
}

std::size_t ZipBytes::directoryOffset() const {
    return numberAt(endRecord() + kCentralDirectoryOffset, 4);
}

void ZipBytes::growDirectory(std::size_t size) {
    const std::size_t field = endRecord() + 12;
    setNumberAt(field, 4, static_cast<std::uint32_t>(numberAt(field, 4) + size));
}

std::size_t ZipBytes::localHeader(std::size_t entry) const {
    return numberAt(centralHeader(entry) + 42, 4);
}

} // namespace testsupport

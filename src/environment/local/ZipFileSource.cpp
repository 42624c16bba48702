#include "environment/local/ZipFileSource.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

#include <sys/types.h>

#include "environment/local/OpenedFile.hpp"
#include "environment/local/ZipError.hpp"

namespace opc::zippackage {

namespace {

using environment::local::OpenedFile;

/// The state behind a source of libzip; its operations return what libzip expects, -1 on failure.
class FileReader {
public:
    FileReader(OpenedFile file, std::uint64_t size,
               const std::shared_ptr<const ForeignEndRecords>& foreignEndRecords)
        : file_(std::move(file)), size_(size), foreignEndRecords_(foreignEndRecords) {}

    static zip_int64_t handle(void* reader, void* data, zip_uint64_t length,
                              zip_source_cmd_t command) noexcept {
        auto* const self = static_cast<FileReader*>(reader);
        if (command != ZIP_SOURCE_FREE)
            return self->handle(data, length, command);
        const std::unique_ptr<FileReader> released(self);
        return 0;
    }

private:
    zip_int64_t handle(void* data, zip_uint64_t length, zip_source_cmd_t command) noexcept {
        switch (command) {
        case ZIP_SOURCE_OPEN:
            position_ = 0;
            return 0;
        case ZIP_SOURCE_READ:
            return read(data, length);
        case ZIP_SOURCE_SEEK:
            return seek(data, length);
        case ZIP_SOURCE_TELL:
            return static_cast<zip_int64_t>(position_);
        case ZIP_SOURCE_STAT:
            return describe(static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(error_.get(), data, length);
        case ZIP_SOURCE_SUPPORTS:
            // 0 is the answer to what is listed but not handled here: "done" or "no".
            return zip_source_make_command_bitmap(
                ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL,
                ZIP_SOURCE_ACCEPT_EMPTY, -1);
        default:
            return 0;
        }
    }

    zip_int64_t read(void* buffer, zip_uint64_t capacity) noexcept {
        const bool isInWindow = position_ >= windowBegin_ && position_ < windowBegin_ + windowSize_;
        if (!isInWindow && !moveWindow())
            return -1;
        const std::size_t offset = position_ - windowBegin_;
        // Only the size at first counts when a file grows.
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(
            {capacity, windowSize_ - offset, size_ - std::min(position_, size_)}));
        std::memcpy(buffer, window_.data() + offset, count);
        if (const auto foreign = foreignEndRecords_.lock())
            foreign->hide(position_, static_cast<char*>(buffer), count);
        position_ += count;
        return static_cast<zip_int64_t>(count);
    }

    bool moveWindow() noexcept {
        const ssize_t count = environment::local::readAt(
            file_.descriptor.get(), window_.data(), window_.size(), static_cast<off_t>(position_));
        if (count < 0) {
            zip_error_set(error_.get(), ZIP_ER_READ, errno);
            return false;
        }
        windowBegin_ = position_;
        windowSize_ = static_cast<std::size_t>(count);
        return true;
    }

    zip_int64_t seek(void* data, zip_uint64_t length) noexcept {
        const zip_int64_t position =
            zip_source_seek_compute_offset(position_, size_, data, length, error_.get());
        if (position < 0)
            return -1;
        position_ = static_cast<std::uint64_t>(position);
        return 0;
    }

    zip_int64_t describe(zip_stat_t* status) const noexcept {
        zip_stat_init(status);
        status->valid = ZIP_STAT_SIZE;
        status->size = size_;
        return static_cast<zip_int64_t>(sizeof(*status));
    }

    OpenedFile file_;
    std::uint64_t size_;
    std::weak_ptr<const ForeignEndRecords> foreignEndRecords_;
    std::uint64_t position_ = 0;
    ZipError error_;
    // libzip reads a header in several pieces, and entries are mostly read in order.
    std::array<char, std::size_t{32} * 1024> window_;
    std::uint64_t windowBegin_ = 0;
    std::size_t windowSize_ = 0;
};

} // namespace

ZipFileSource openZipFile(const std::u16string& path) {
    std::optional<OpenedFile> file = environment::local::openForReading(path);
    if (!file || !file->size)
        throwBroken("not a file that can be read");
    const auto size = static_cast<std::uint64_t>(*file->size);
    auto foreign = std::make_shared<const ForeignEndRecords>(file->descriptor.get(), size);
    auto reader = std::make_unique<FileReader>(*std::move(file), size, foreign);
    ZipError error;
    std::unique_ptr<zip_source_t, FreeZipSource> source(
        zip_source_function_create(&FileReader::handle, reader.get(), error.get()));
    if (!source)
        throwBroken(zip_error_strerror(error.get()));
    static_cast<void>(reader.release());
    return {std::move(source), size, std::move(foreign)};
}

} // namespace opc::zippackage

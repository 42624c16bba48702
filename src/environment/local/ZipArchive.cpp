#include "environment/local/ZipArchive.hpp"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "environment/PathAndText.hpp"
#include "environment/local/ZipError.hpp"
#include "environment/local/ZipFileSource.hpp"

namespace opc::zippackage {

namespace {

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20;

/// How many bytes one stored byte may inflate to. Documentation has 5 to 20.
constexpr std::uint64_t kMaximumInflation = 64;
/// What any entry, and any package as a whole, may inflate to, however little of it is stored.
constexpr std::uint64_t kContentOfAnyEntry = 32 * kMebibyte;
constexpr std::uint64_t kContentOfAnyPackage = 64 * kMebibyte;
/// The most that an entry may inflate to.
constexpr std::uint64_t kMaximumContentSize = 1024 * kMebibyte;

/// The stored contents of a package may add up to this many times the size of its file. They exceed
/// that size only when entries share stored bytes or declare false sizes. An entry that declares
/// more than the whole file is refused without being counted.
constexpr std::uint64_t kMaximumSharing = 8;

/// The product, or nearly the largest number when that overflows.
std::uint64_t times(std::uint64_t factor, std::uint64_t size) {
    return std::min(size, std::numeric_limits<std::uint64_t>::max() / factor) * factor;
}

std::uint64_t contentLimitOfEntry(std::uint64_t storedSize) {
    return std::min(kMaximumContentSize,
                    std::max(kContentOfAnyEntry, times(kMaximumInflation, storedSize)));
}

std::uint64_t contentLimitOfPackage(std::uint64_t fileSize) {
    return std::max(kContentOfAnyPackage, times(kMaximumInflation, fileSize));
}

/// Nothing for a folder, and for an entry whose name cannot be read.
std::optional<std::u16string> baseNameOfLeaf(zip_t* archive, std::uint64_t index) {
    const char* name = zip_get_name(archive, index, ZIP_FL_ENC_GUESS);
    const std::string_view path = name == nullptr ? "/" : name;
    if (path.ends_with('/'))
        return std::nullopt;
    return fl::i18n::from_utf8(path.substr(path.rfind('/') + 1));
}

/// How many bytes of the file an entry claims.
std::uint64_t storedSize(zip_t* archive, std::uint64_t index) {
    zip_stat_t entry;
    zip_stat_init(&entry);
    const bool isKnown =
        zip_stat_index(archive, index, 0, &entry) == 0 && (entry.valid & ZIP_STAT_COMP_SIZE) != 0;
    return isKnown ? entry.comp_size : 0;
}

std::vector<ZipArchive::Leaf> listLeaves(zip_t* archive, std::uint64_t fileSize) {
    const auto entryCount = static_cast<std::uint64_t>(zip_get_num_entries(archive, 0));
    std::vector<ZipArchive::Leaf> leaves;
    leaves.reserve(entryCount);
    std::uint64_t remaining = times(kMaximumSharing, fileSize);
    for (std::uint64_t index = 0; index < entryCount; ++index) {
        std::optional<std::u16string> baseName = baseNameOfLeaf(archive, index);
        if (!baseName)
            continue;
        const std::uint64_t size = storedSize(archive, index);
        const bool isWithinFile = size <= fileSize && size <= remaining;
        if (isWithinFile)
            remaining -= size;
        leaves.push_back({index, *std::move(baseName), isWithinFile});
    }
    return leaves;
}

/// The declared size of an entry; throws when its content cannot be read at all.
std::uint64_t checkReadable(zip_t* archive, std::uint64_t index) {
    constexpr zip_uint64_t kNeeded =
        ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
    zip_stat_t entry;
    zip_stat_init(&entry);
    if (zip_stat_index(archive, index, 0, &entry) != 0 || (entry.valid & kNeeded) != kNeeded)
        throwBroken("no such entry");
    if (entry.encryption_method != ZIP_EM_NONE)
        throwBroken("encrypted entry");
    if (entry.comp_method != ZIP_CM_STORE && entry.comp_method != ZIP_CM_DEFLATE)
        throwBroken("unsupported compression method");
    if (entry.size > contentLimitOfEntry(entry.comp_size))
        throwBroken(entry.size > kMaximumContentSize
                        ? "entry of more than 1 GiB"
                        : "entry that inflates to more than 64 times what is stored");
    return entry.size;
}

} // namespace

/// The content of one entry. libzip checks the checksum at the end of the content.
class ZipArchive::Content final : public zqservices::ContentSource, private InputStream {
public:
    Content(std::shared_ptr<ZipArchive> archive, const Leaf& leaf)
        : archive_(std::move(archive)), index_(leaf.index) {
        const std::lock_guard lock(archive_->mutex_);
        zip_t* const zip = archive_->archive_.get();
        if (zip == nullptr)
            throwBroken("not open");
        if (!leaf.isWithinFile)
            throwBroken("entries that have more content than is stored");
        remaining_ = checkReadable(zip, leaf.index);
        archive_->checkContentLeft(index_, remaining_);
        file_.reset(zip_fopen_index(zip, leaf.index, 0));
        if (!file_)
            throwBroken(zip_strerror(zip));
    }

    ~Content() override {
        const std::lock_guard lock(archive_->mutex_);
        file_.reset();
    }

    InputStream& getInputStream() override { return *this; }

private:
    struct Close {
        void operator()(zip_file_t* file) const noexcept { zip_fclose(file); }
    };

    std::size_t read(char* buffer, std::size_t capacity) override {
        const std::lock_guard lock(archive_->mutex_);
        const zip_int64_t count = zip_fread(file_.get(), buffer, capacity);
        if (count < 0)
            throwBroken(zip_file_strerror(file_.get()));
        const auto size = static_cast<std::uint64_t>(count);
        if (size > remaining_ || (size == 0 && capacity != 0 && remaining_ != 0))
            throwBroken("entry of another size than declared");
        remaining_ -= size;
        read_ += size;
        archive_->countContent(index_, read_);
        return static_cast<std::size_t>(size);
    }

    std::shared_ptr<ZipArchive> archive_;
    std::unique_ptr<zip_file_t, Close> file_;
    std::uint64_t index_;
    std::uint64_t read_ = 0;
    std::uint64_t remaining_ = 0;
};

ZipArchive::ZipArchive(std::u16string path) : path_(std::move(path)) {}

void ZipArchive::open() {
    const std::lock_guard lock(mutex_);
    if (archive_)
        return;
    auto [source, size, foreignEndRecords] = openZipFile(path_);
    ZipError error;
    std::unique_ptr<zip_t, Discard> archive(
        zip_open_from_source(source.get(), ZIP_RDONLY, error.get()));
    if (!archive)
        throwBroken(zip_error_strerror(error.get()));
    static_cast<void>(source.release());
    leaves_ = std::make_shared<const std::vector<Leaf>>(listLeaves(archive.get(), size));
    contentLeft_ = contentLimitOfPackage(size);
    archive_ = std::move(archive);
}

void ZipArchive::checkContentLeft(std::uint64_t index, std::uint64_t size) {
    if (size > countedContent_[index] + contentLeft_)
        throwBroken("entries that inflate to more than 64 times the size of the package");
}

void ZipArchive::countContent(std::uint64_t index, std::uint64_t size) {
    checkContentLeft(index, size);
    std::uint64_t& counted = countedContent_[index];
    contentLeft_ -= std::max(size, counted) - counted;
    counted = std::max(size, counted);
}

std::shared_ptr<const std::vector<ZipArchive::Leaf>> ZipArchive::getLeaves() const {
    const std::lock_guard lock(mutex_);
    if (!leaves_)
        throwBroken("not open");
    return leaves_;
}

std::u16string ZipArchive::pathOf(const Leaf& leaf) const {
    const std::lock_guard lock(mutex_);
    const char* name =
        archive_ ? zip_get_name(archive_.get(), leaf.index, ZIP_FL_ENC_GUESS) : nullptr;
    return name == nullptr ? leaf.baseName : fl::i18n::from_utf8(name);
}

std::unique_ptr<zqservices::ContentSource> ZipArchive::openLeaf(const Leaf& leaf) {
    return std::make_unique<Content>(shared_from_this(), leaf);
}

} // namespace opc::zippackage

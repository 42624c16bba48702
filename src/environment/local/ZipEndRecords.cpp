#include "environment/local/ZipEndRecords.hpp"

#include <algorithm>
#include <string>
#include <string_view>

#include "environment/local/OpenedFile.hpp"

namespace opc::zippackage {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kEndSignature = "PK\5\6"sv;
constexpr std::string_view kEntrySignature = "PK\1\2"sv;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kMaximumCommentSize = 0xFFFF;
/// libzip reads the locator of a Zip64 record in front of the end record.
constexpr std::size_t kZip64LocatorSize = 20;
/// Refers to a number in the file's Zip64 record.
constexpr std::uint64_t kInZip64 = 0xFFFFFFFF;

/// Fills `buffer`, and returns whether there was enough to read.
bool fill(std::string& buffer, int descriptor, std::uint64_t position) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const ssize_t count =
            environment::local::readAt(descriptor, buffer.data() + filled, buffer.size() - filled,
                                       static_cast<off_t>(position + filled));
        if (count <= 0)
            return false;
        filled += static_cast<std::size_t>(count);
    }
    return true;
}

std::uint64_t numberAt(std::string_view bytes, std::size_t position, std::size_t size) {
    std::uint64_t number = 0;
    for (std::size_t byte = size; byte > 0; --byte)
        number = number << 8 | static_cast<unsigned char>(bytes[position + byte - 1]);
    return number;
}

/// The part at the end of a file in which its end record may begin.
struct Tail {
    int descriptor;
    std::uint64_t begin;
    std::string bytes;
};

Tail readTail(int descriptor, std::uint64_t size) {
    const std::uint64_t tailSize =
        std::min<std::uint64_t>(size, kZip64LocatorSize + kEndSize + kMaximumCommentSize);
    Tail tail{descriptor, size - tailSize, std::string(tailSize, '\0')};
    if (!fill(tail.bytes, descriptor, tail.begin))
        tail.bytes.clear();
    return tail;
}

std::vector<std::size_t> findEndRecords(std::string_view bytes) {
    std::vector<std::size_t> found;
    for (std::size_t at = bytes.find(kEndSignature); at != bytes.npos;
         at = bytes.find(kEndSignature, at + 1))
        if (bytes.size() - at >= kEndSize)
            found.push_back(at);
    return found;
}

/// How plausible it is that a record is the file's own.
enum class Plausibility { None, DirectoryFits, CommentFitsToo };

/// Where the directory of a record lies, if the record itself says so.
struct Directory {
    std::uint64_t begin;
    std::uint64_t size;

    bool isInZip64() const { return begin == kInZip64 || size == kInZip64; }
};

Directory directoryOf(const Tail& tail, std::size_t record) {
    return {numberAt(tail.bytes, record + 16, 4), numberAt(tail.bytes, record + 12, 4)};
}

bool namesDirectory(const Tail& tail, std::size_t record) {
    const auto [begin, size] = directoryOf(tail, record);
    if (Directory{begin, size}.isInZip64())
        return true;
    if (begin + size > tail.begin + record)
        return false;
    if (size == 0) // a file without entries, where the record follows at once
        return numberAt(tail.bytes, record + 10, 2) == 0 && begin == tail.begin + record;
    std::string signature(kEntrySignature.size(), '\0');
    return fill(signature, tail.descriptor, begin) && signature == kEntrySignature;
}

Plausibility judge(const Tail& tail, std::size_t record) {
    const std::size_t behind = tail.bytes.size() - record - kEndSize;
    const std::uint64_t commentSize = numberAt(tail.bytes, record + 20, 2);
    if (commentSize > behind || !namesDirectory(tail, record))
        return Plausibility::None;
    return commentSize == behind ? Plausibility::CommentFitsToo : Plausibility::DirectoryFits;
}

/// The last of the most plausible ones.
std::size_t findOwn(const Tail& tail, const std::vector<std::size_t>& records) {
    std::size_t own = records.back();
    Plausibility best = Plausibility::None;
    for (const std::size_t record : records) {
        const Plausibility plausibility = judge(tail, record);
        if (plausibility != Plausibility::None && plausibility >= best) {
            best = plausibility;
            own = record;
        }
    }
    return own;
}

} // namespace

ForeignEndRecords::ForeignEndRecords(int descriptor, std::uint64_t size) {
    const Tail tail = readTail(descriptor, size);
    const std::vector<std::size_t> records = findEndRecords(tail.bytes);
    if (records.size() < 2)
        return;
    const std::size_t own = findOwn(tail, records);
    const Directory directory = directoryOf(tail, own);
    // Within the directory such bytes belong to a name or a number, unless they form a plausible
    // record.
    const auto isOfEntry = [&](std::size_t record) {
        const std::uint64_t position = tail.begin + record;
        return !directory.isInZip64() && position >= directory.begin &&
               position < directory.begin + directory.size &&
               judge(tail, record) == Plausibility::None;
    };
    for (const std::size_t record : records)
        if (record != own && !isOfEntry(record))
            positions_.push_back(tail.begin + record);
}

void ForeignEndRecords::hide(std::uint64_t position, char* bytes,
                             std::size_t count) const noexcept {
    // A record that begins just before may reach into these bytes.
    const std::uint64_t first = position - std::min<std::uint64_t>(position, kEndSignature.size());
    for (auto record = std::lower_bound(positions_.begin(), positions_.end(), first);
         record != positions_.end() && *record < position + count; ++record)
        for (std::uint64_t at = std::max(*record, position);
             at < std::min(*record + kEndSignature.size(), position + count); ++at)
            bytes[at - position] = '\0';
}

} // namespace opc::zippackage

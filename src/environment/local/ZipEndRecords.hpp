#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace opc::zippackage {

/// The end records of a zip file that are not its own. Bytes that look like one may stand in its
/// comment, behind its end, and in packages that are stored in it. libzip would follow each of them
/// through a whole directory; so all but one are hidden from libzip while it opens the file.
///
/// The file's own record is the last one of those whose directory begins where they say. One whose
/// comment ends with the file has precedence.
class ForeignEndRecords {
public:
    /// There are none, and nothing is hidden.
    ForeignEndRecords() = default;

    /// Finds those of an open file of that size. What cannot be read hides nothing.
    ForeignEndRecords(int descriptor, std::uint64_t size);

    /// Makes the records unrecognisable in `count` bytes that were read at `position`.
    void hide(std::uint64_t position, char* bytes, std::size_t count) const noexcept;

private:
    std::vector<std::uint64_t> positions_; // ascending
};

} // namespace opc::zippackage

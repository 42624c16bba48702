#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace opc::zippackage {

/// The end records of a zip file that are not its own. Bytes that look like one may stand in its
/// comment, in what lies behind it, and in packages that are stored in it. libzip would follow all
/// of them through the whole directory that each names; so all but one are hidden from it while it
/// opens the file.
///
/// The file's own record is the last one of those whose directory begins where they say; one whose
/// comment ends with the file goes first.
class ForeignEndRecords {
public:
    /// None: nothing is hidden.
    ForeignEndRecords() = default;

    /// Those of an open file of that size, read at their places. What cannot be read hides nothing.
    ForeignEndRecords(int descriptor, std::uint64_t size);

    /// Makes the records unrecognisable in `count` bytes that were read at `position`.
    void hide(std::uint64_t position, char* bytes, std::size_t count) const noexcept;

private:
    std::vector<std::uint64_t> positions_; // ascending
};

} // namespace opc::zippackage

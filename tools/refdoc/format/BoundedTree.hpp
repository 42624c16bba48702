#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include <boost/json/error.hpp>
#include <boost/json/monotonic_resource.hpp>
#include <boost/json/value.hpp>

#include "refdoc/format/Format.hpp"

namespace refdoc {

/// The tree of a JSON text, with the memory that it lies in.
struct JsonTree {
    std::unique_ptr<boost::json::monotonic_resource> memory;
    boost::json::value value;
};

/// Of a JSON text as much as its time and memory stay linear in the text, whatever it says.
/// Members with unknown names are kept without their values, which become null.
struct BoundedTree {
    /// So many members with unknown names are kept of an object, repeated ones counted again: an
    /// object's hash table is no match for names that are made to collide.
    static constexpr std::size_t kMostUnknownMembers = 100;
    /// And so many of all objects.
    static constexpr std::size_t kMostUnknownMembersOfAll = std::size_t{1} << 20;

    /// Nothing for a text that is not JSON, that is nested deeper than 32 or has too many values.
    std::optional<JsonTree> tree;
    boost::json::error_code failure; ///< why there is no tree
    bool hasTooManyValues = false;   ///< whether that is why: more than `mostValues`
    std::size_t unknownMembers = 0;  ///< of how many, beyond the most, nothing is kept
};

/// How many values a text of so many bytes may have, as many as the library reads: those of members
/// with unknown names do not count.
std::size_t mostValues(std::size_t textSize);

/// @throws std::bad_alloc
BoundedTree parseBounded(std::string_view text, const Format::Names& knownNames);

} // namespace refdoc

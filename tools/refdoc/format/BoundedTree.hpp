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

/// The tree of a JSON text, together with the memory that holds it.
struct JsonTree {
    std::unique_ptr<boost::json::monotonic_resource> memory;
    boost::json::value value;
};

/// The result of parsing a JSON text in time and memory that are linear in the text, whatever it
/// contains. Members with unknown names are kept without their values, which become null.
struct BoundedTree {
    /// The limit of members with unknown names that are kept of an object, repeated ones counted
    /// again: an object's hash table cannot cope with names that are made to collide.
    static constexpr std::size_t kMostUnknownMembers = 100;
    /// The same limit for all objects together.
    static constexpr std::size_t kMostUnknownMembersOfAll = std::size_t{1} << 20;

    /// Empty for a text that is not JSON, is nested deeper than 32 or has too many values.
    std::optional<JsonTree> tree;
    boost::json::error_code failure; ///< why there is no tree
    bool hasTooManyValues = false;   ///< whether that is because of more values than `mostValues`
    std::size_t unknownMembers = 0;  ///< how many beyond the limits were dropped
};

/// The number of values that a text of this size may have, the same as in the library; those of
/// members with unknown names do not count.
std::size_t mostValues(std::size_t textSize);

/// @throws std::bad_alloc
BoundedTree parseBounded(std::string_view text, const Format::Names& knownNames);

} // namespace refdoc

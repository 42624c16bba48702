#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace refdoc {

/// Where in a text; lines and columns count from 1, and columns in characters.
struct TextPosition {
    std::size_t line = 0; ///< 0 for nowhere in it
    std::size_t column = 0;
};

/// A member whose name its object has already.
struct RepeatedMember {
    std::string pointer;
    std::size_t offset;
};

struct RepeatedMembers {
    std::vector<RepeatedMember> first; ///< in their order
    std::size_t count = 0;             ///< of all
};

/// Goes once through a sound JSON text, which must not be nested deeper than 32, and finds where
/// the values begin that JSON pointers name, in bytes and the order of the pointers: of members of
/// one name the last. A pointer that names nothing gets the offset 0.
std::vector<std::size_t> findInJson(std::string_view text,
                                    const std::vector<std::string>& pointers);

/// Goes once through a text of this kind, and finds repeated members: keeps so many of them at
/// most, and 4 MiB of their pointers.
RepeatedMembers repeatedMembersIn(std::string_view text, std::size_t most);

/// The lines and columns of byte offsets, in their order; one pass over the text.
std::vector<TextPosition> positionsOf(std::string_view text,
                                      const std::vector<std::size_t>& offsets);

/// `name` as one step of a JSON pointer, slash included.
std::string pointerStep(std::string_view name);

/// The names and indices that a JSON pointer consists of.
std::vector<std::string> pointerSteps(std::string_view pointer);

} // namespace refdoc

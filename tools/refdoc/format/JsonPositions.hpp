#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace refdoc {

/// A place in a text; lines and columns count from 1, and columns in characters.
struct TextPosition {
    std::size_t line = 0; ///< 0 for no place in the text
    std::size_t column = 0;
};

/// A member whose name its object already has.
struct RepeatedMember {
    std::string pointer;
    std::size_t offset;
};

struct RepeatedMembers {
    std::vector<RepeatedMember> first; ///< in the order of the text
    std::size_t count = 0;             ///< of all repeated members
};

/// Finds the byte offsets where the values begin that JSON pointers lead to, in the order of the
/// pointers, in a single pass over a valid JSON text that is nested no deeper than 32. Of repeated
/// members the last one counts. A pointer that leads nowhere gets the offset 0.
std::vector<std::size_t> findInJson(std::string_view text,
                                    const std::vector<std::string>& pointers);

/// Finds the repeated members of such a text in a single pass: at most `most` of them, and 4 MiB of
/// their pointers.
RepeatedMembers repeatedMembersIn(std::string_view text, std::size_t most);

/// The lines and columns of byte offsets, in the order of the offsets; a single pass over the text.
std::vector<TextPosition> positionsOf(std::string_view text,
                                      const std::vector<std::size_t>& offsets);

/// `name` as one step of a JSON pointer, slash included.
std::string pointerStep(std::string_view name);

/// The names and indices that make up a JSON pointer.
std::vector<std::string> pointerSteps(std::string_view pointer);

} // namespace refdoc

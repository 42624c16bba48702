#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace refdoc {

/// Whether a user at a terminal can see a question and answer it.
bool canAskUser();

/// Lists `choices` with numbers under `question` and waits for an answer.
///
/// @return the index of the choice; nothing if the user declines ("q", an empty line or the end of
/// the input).
/// @throws std::system_error if standard output cannot be written.
std::optional<std::size_t> askUser(const std::string& question,
                                   const std::vector<std::u16string>& choices);

} // namespace refdoc

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace refdoc {

/// Whether there is a user at a terminal who can see a question and answer it.
bool canAskUser();

/// Lists `choices` with numbers under `question` and waits for one of these.
///
/// @return the index of the choice; nothing when the user wants none ("q", an empty line or the end
///         of the input).
/// @throws std::system_error when standard output cannot be written.
std::optional<std::size_t> askUser(const std::string& question,
                                   const std::vector<std::u16string>& choices);

} // namespace refdoc

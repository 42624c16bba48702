#pragma once

#include <string>
#include <vector>

#include "refdoc/completion/CommandWords.hpp"

namespace refdoc {

struct Completion {
    std::string word;
    std::string meaning; ///< one line, possibly empty
};

/// Whether the word to be completed is the name of a folder.
bool wantsFolder(const CommandWords& words);

/// What any other word may become, in the host that is set up. What a terminal could not show as it
/// is, what would be taken for an option, and what leads out of the documentation is never offered.
std::vector<Completion> completionsOf(const CommandWords& words);

} // namespace refdoc

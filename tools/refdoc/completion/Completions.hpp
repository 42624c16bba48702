#pragma once

#include <string>
#include <vector>

#include "refdoc/completion/CommandWords.hpp"

namespace refdoc {

struct Completion {
    std::string word;
    std::string meaning; ///< one line, possibly empty
};

/// Whether the word to complete is the name of a folder.
bool wantsFolder(const CommandWords& words);

/// The completions of any other word, in the host that is set up. Never offers what a terminal
/// would not show unchanged, what would be taken for an option, or what leads out of the
/// documentation.
std::vector<Completion> completionsOf(const CommandWords& words);

} // namespace refdoc

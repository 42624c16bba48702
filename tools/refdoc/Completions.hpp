#pragma once

#include <string>
#include <vector>

#include "refdoc/CommandWords.hpp"

namespace refdoc {

struct Completion {
    std::string word;
    std::string meaning; ///< one line, possibly empty
};

/// What the word to be completed may become, in the host that is set up.
std::vector<Completion> completionsOf(const CommandWords& words);

} // namespace refdoc

#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "refdoc/completion/CommandWords.hpp"

namespace refdoc {

struct Completion {
    std::string word;
    std::string meaning; ///< one line, possibly empty
};

/// The values of options, by their names ("--level").
using OptionValues = std::map<std::string, std::vector<std::string_view>>;

/// Whether the word to complete is the name of a folder.
bool wantsFolder(const CommandWords& words);

/// The completions of any other word, in the host that is set up. Never offers what a terminal
/// would not show unchanged, what would be taken for an option, or what leads out of the
/// documentation.
///
/// @param optionValues the values of options whose commands have a fixed set of them.
std::vector<Completion> completionsOf(const CommandWords& words, const OptionValues& optionValues);

} // namespace refdoc

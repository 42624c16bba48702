#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <CLI/App.hpp>

namespace refdoc {

/// A command line that the user is still typing, parsed up to the word to complete.
class CommandWords {
public:
    /// @param words all words with their quotes removed, from the program's name to the word to
    /// complete.
    CommandWords(const CLI::App& application, const std::vector<std::string>& words);

    /// The option whose value the word is; null if it is not a value. The option's name may be part
    /// of the word, as in "--language=j".
    const CLI::Option* optionToFill() const { return optionToFill_; }
    /// The word without its fixed part.
    const std::string& word() const { return word_; }
    /// The beginning of the word that every completion must keep: "--language=", or nothing.
    const std::string& fixedPart() const { return fixedPart_; }

    const CLI::App& application() const { return application_; }
    /// The command in the line, or the application itself if there is none yet.
    const CLI::App& command() const { return *command_; }
    const std::vector<std::string>& positionals() const { return positionals_; }
    std::optional<std::string> valueOf(const std::string& option) const;
    bool hasFlag(const std::string& option) const { return values_.contains(option); }
    /// Whether a word that begins with "-" would be an option.
    bool optionsAllowed() const { return !onlyPositionals_; }

private:
    void read(const std::string& word);
    void readOption(const std::string& word);
    const CLI::Option* findOption(const std::string& name) const;

    const CLI::App& application_;
    const CLI::App* command_;
    const CLI::Option* optionToFill_ = nullptr;
    std::string word_;
    std::string fixedPart_;
    std::map<std::string, std::string> values_;
    std::vector<std::string> positionals_;
    bool onlyPositionals_ = false;
};

} // namespace refdoc

#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <CLI/App.hpp>

namespace refdoc {

/// A command line that the user is still typing, understood up to the word to be completed.
class CommandWords {
public:
    /// @param words all words without quotes, that of the program first and that to be completed
    ///     last.
    CommandWords(const CLI::App& application, const std::vector<std::string>& words);

    /// The option whose value the word is, without the option's name if that is part of the word;
    /// null when it is none.
    const CLI::Option* optionToFill() const { return optionToFill_; }
    /// The word without what `fixedPart` says.
    const std::string& word() const { return word_; }
    /// What the word begins with and every completion must keep: "--language=" or nothing.
    const std::string& fixedPart() const { return fixedPart_; }

    const CLI::App& application() const { return application_; }
    /// The command that was named; the application itself when none was yet.
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

#include "refdoc/completion/CommandWords.hpp"

#include <cstddef>

namespace refdoc {

namespace {

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

} // namespace

CommandWords::CommandWords(const CLI::App& application, const std::vector<std::string>& words)
    : application_(application), command_(&application), word_(words.back()) {
    for (std::size_t at = 1; at + 1 < words.size(); ++at)
        read(words[at]);
    const std::size_t equals = word_.find('=');
    if (optionToFill_ == nullptr && optionsAllowed() && word_.starts_with("--") &&
        equals != word_.npos) {
        optionToFill_ = findOption(word_.substr(0, equals));
        fixedPart_ = word_.substr(0, equals + 1);
        word_.erase(0, equals + 1);
    }
}

std::optional<std::string> CommandWords::valueOf(const std::string& option) const {
    const auto found = values_.find(option);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void CommandWords::read(const std::string& word) {
    if (optionToFill_ != nullptr) {
        values_[optionToFill_->get_name()] = word;
        optionToFill_ = nullptr;
    } else if (!onlyPositionals_ && word == "--") {
        onlyPositionals_ = true;
    } else if (!onlyPositionals_ && word.starts_with("-")) {
        readOption(word);
    } else if (command_ == &application_) {
        const auto named = application_.get_subcommands(
            [&](const CLI::App* command) { return command->get_name() == word; });
        command_ = named.empty() ? command_ : named.front();
    } else {
        positionals_.push_back(word);
    }
}

void CommandWords::readOption(const std::string& word) {
    const std::size_t equals = word.find('=');
    const CLI::Option* option = findOption(word.substr(0, equals));
    if (option == nullptr)
        return;
    if (equals != word.npos || !takesValue(*option))
        values_[option->get_name()] = equals == word.npos ? "" : word.substr(equals + 1);
    else
        optionToFill_ = option;
}

const CLI::Option* CommandWords::findOption(const std::string& name) const {
    const CLI::Option* option = command_->get_option_no_throw(name);
    return option != nullptr ? option : application_.get_option_no_throw(name);
}

} // namespace refdoc

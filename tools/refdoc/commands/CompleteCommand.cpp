#include "refdoc/commands/CompleteCommand.hpp"

#include <memory>
#include <optional>
#include <string>

#include <CLI/App.hpp>

#include "environment/ReferenceProperty.hpp"
#include "refdoc/check/findings/Rules.hpp"
#include "refdoc/completion/CommandWords.hpp"
#include "refdoc/completion/Completions.hpp"
#include "refdoc/completion/ShellWords.hpp"
#include "refdoc/host/HostSetup.hpp"
#include "refdoc/terminal/Output.hpp"

namespace refdoc {

namespace {

struct CompleteArguments {
    std::string line;
    std::string breaks;
    bool bash = false;
};

std::string inserted(const std::string& word, const TypedLine& typed, bool bash) {
    return bash ? bashCompletion(word.substr(typed.kept.size()), typed.open) : word;
}

OptionValues fixedOptionValues() {
    const auto& types = reference::property::RefEntityType::texts;
    return {{"--level", {kLevelNames.begin(), kLevelNames.end()}},
            {"--type", {types.begin(), types.end()}}};
}

std::string completions(const CommandWords& words, const TypedLine& typed, bool bash) {
    if (wantsFolder(words))
        return "folder\n";
    GlobalOptions options;
    options.root = words.valueOf("--root");
    options.language = words.valueOf("--language");
    setUpHost(options);
    std::string text;
    for (const Completion& completion : completionsOf(words, fixedOptionValues()))
        text += inserted(completion.word, typed, bash) + '\t' + completion.meaning + '\n';
    return text;
}

ExitCode complete(const CLI::App& application, const CompleteArguments& arguments) {
    const std::optional<TypedLine> typed = readTypedLine(arguments.line, arguments.breaks);
    if (!typed)
        return ExitCode::NothingFound;
    const std::string text =
        completions(CommandWords(application, typed->words), *typed, arguments.bash);
    writeOutput(text);
    return text.empty() ? ExitCode::NothingFound : ExitCode::Found;
}

} // namespace

Command addCompleteCommand(CLI::App& application) {
    const auto arguments = std::make_shared<CompleteArguments>();
    CLI::App* declaration =
        application
            .add_subcommand("complete",
                            "Print how the last word of a command line can be completed")
            ->group("");
    declaration->add_flag("--bash", arguments->bash, "Quote the completions for bash");
    declaration->add_option("LINE", arguments->line, "The unfinished command line")->required();
    declaration->add_option("BREAKS", arguments->breaks,
                            "The characters at which bash breaks words");
    declaration->footer("For the completion scripts of bash and zsh.");
    return {declaration, [arguments, &application](const GlobalOptions&) {
                return complete(application, *arguments);
            }};
}

} // namespace refdoc

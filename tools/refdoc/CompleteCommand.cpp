#include "refdoc/CompleteCommand.hpp"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <CLI/App.hpp>

#include "environment/Services.hpp"
#include "refdoc/CommandWords.hpp"
#include "refdoc/Completions.hpp"
#include "refdoc/HostSetup.hpp"
#include "refdoc/Output.hpp"

namespace refdoc {

namespace {

struct CompleteArguments {
    std::size_t index = 0;
    std::vector<std::string> words;
};

ExitCode complete(const CLI::App& application, const CompleteArguments& arguments) {
    const CommandWords words(application, arguments.words, arguments.index);
    GlobalOptions options;
    options.root = words.valueOf("--root");
    options.language = words.valueOf("--language");
    environment::setServices(hostServices(options));
    std::string text;
    for (const Completion& completion : completionsOf(words))
        text += completion.word + '\t' + completion.meaning + '\n';
    writeOutput(text);
    return text.empty() ? ExitCode::NothingFound : ExitCode::Found;
}

} // namespace

Command addCompleteCommand(CLI::App& application) {
    const auto arguments = std::make_shared<CompleteArguments>();
    CLI::App* declaration = application.add_subcommand("complete")->group("");
    declaration->add_option("INDEX", arguments->index)->required();
    declaration->add_option("WORDS", arguments->words);
    return {declaration, [arguments, &application](const GlobalOptions&) {
                return complete(application, *arguments);
            }};
}

} // namespace refdoc

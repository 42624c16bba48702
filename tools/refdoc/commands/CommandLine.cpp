#include "refdoc/commands/CommandLine.hpp"

#include <algorithm>
#include <exception>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <fmt/format.h>

#include "environment/Diagnostics.hpp"
#include "refdoc/Version.hpp"
#include "refdoc/commands/CheckCommand.hpp"
#include "refdoc/commands/Command.hpp"
#include "refdoc/commands/CompleteCommand.hpp"
#include "refdoc/commands/LookupCommand.hpp"
#include "refdoc/commands/ProductsCommand.hpp"
#include "refdoc/commands/ShowCommand.hpp"
#include "refdoc/host/Options.hpp"
#include "refdoc/terminal/Output.hpp"

namespace refdoc {

namespace {

constexpr const char* kMainFooter = R"(Options may come before or after the command. Exit codes:
  0  found, or no errors
  1  nothing found, or errors in what was checked
  2  wrong usage, a broken list of installed products, or output that cannot be written

Examples:
  refdoc lookup print                     find the names that begin with "print"
  refdoc show malloc                      show the entry for a name as a manual page
  refdoc show libc                        list what the resource "libc" documents
  refdoc show libc printf                 show the entry for a name in one resource
  refdoc --language ja show libc printf   the same in Japanese
  refdoc show libc printf --json          the same as JSON
  refdoc products                         list what is installed and documented
  refdoc check docroot                    report what readers would miss, and where

"refdoc COMMAND --help" explains a command.)";

void declareGlobalOptions(CLI::App& application, GlobalOptions& options) {
    application
        .add_option("--root", options.root, "The documentation root (else the installed one)")
        ->type_name("DIR")
        ->take_last();
    application
        .add_option("--language", options.language,
                    "The documentation language (else that of the locale)")
        ->type_name("CODE")
        ->take_last();
    application.add_flag("--json", options.json, "Print JSON instead of text");
    application.add_flag("--verbose", options.verbose, "Say on stderr which files are read");
    application.set_help_flag("-h,--help", "Print this help and exit");
    application.set_version_flag("--version", fmt::format("refdoc {}", kVersion),
                                 "Print the version and exit");
}

/// What is wrong with the command line. If no command was recognised, that is the first unknown
/// word.
std::string complaintAbout(const CLI::App& application, const CLI::ParseError& stop) {
    const std::vector<std::string> unknown = application.remaining();
    if (!application.get_subcommands().empty())
        return stop.what();
    if (unknown.empty())
        return stop.get_name() == "RequiredError" ? "no command given" : stop.what();
    return fmt::format("\"{}\" is not {}", unknown.front(),
                       unknown.front().starts_with('-') ? "an option" : "a command");
}

/// Answers a request for help or the version, or reports what is wrong with the command line.
ExitCode answerParseStop(const CLI::App& application, const CLI::ParseError& stop) {
    std::ostringstream answer;
    std::ostringstream ignored;
    if (application.exit(stop, answer, ignored) == 0) {
        writeOutput(answer.str());
        return ExitCode::Found;
    }
    reportError(complaintAbout(application, stop), {{"Run with --help for more information."}});
    return ExitCode::Failure;
}

/// Runs the command that the command line names; the parser has made sure that it names one.
ExitCode runSelected(const std::vector<Command>& commands, const GlobalOptions& options) {
    const auto selected =
        std::find_if(commands.begin(), commands.end(),
                     [](const Command& command) { return command.declaration->parsed(); });
    return selected->run(options);
}

ExitCode parseAndRun(int argc, char** argv) {
    GlobalOptions options;
    CLI::App application{"Reads the reference documentation of installed products.", "refdoc"};
    application.fallthrough();
    application.get_formatter()->column_width(26);
    application.get_formatter()->label("SUBCOMMAND", "COMMAND");
    application.get_formatter()->label("REQUIRED", "");
    declareGlobalOptions(application, options);
    application.footer(kMainFooter);
    const std::vector<Command> commands{
        addLookupCommand(application), addShowCommand(application), addProductsCommand(application),
        addCheckCommand(application), addCompleteCommand(application)};
    application.require_subcommand(1);
    for (CLI::App* command : application.get_subcommands({}))
        if (!command->get_group().empty())
            command->group("Commands");
    try {
        application.parse(argc, argv);
    } catch (const CLI::ParseError& stop) {
        return answerParseStop(application, stop);
    }
    return runSelected(commands, options);
}

} // namespace

int runCommandLine(int argc, char** argv) {
    try {
        reserveStandardStreams();
        return static_cast<int>(parseAndRun(argc, argv));
    } catch (const std::exception& error) {
        reportError(error.what());
    } catch (const foundation::core::except::IException& error) {
        reportError(error.what());
    }
    return static_cast<int>(ExitCode::Failure);
}

} // namespace refdoc

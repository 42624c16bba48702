#include "refdoc/commands/CheckCommand.hpp"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/App.hpp>
#include <fmt/format.h>

#include "refdoc/check/RootCheck.hpp"
#include "refdoc/check/report/Report.hpp"
#include "refdoc/host/HostSetup.hpp"
#include "refdoc/terminal/Output.hpp"
#include "refdoc/terminal/Progress.hpp"
#include "refdoc/terminal/Terminal.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

constexpr const char* kFooter =
    R"(For documentation authors: reports what readers would silently miss, and where. All languages
are checked at once. Findings are
  error     something is lost: a file, an entry of a package, a document, an item
  warning   something is shown differently than intended
  note      something may be a mistake, or could not be checked
one per line, as FILE[:ENTRY][:LINE:COLUMN]: LEVEL: MESSAGE [(JSON POINTER)]. Lines and columns count
from 1, and columns in characters. The text shows the first 20 findings of a kind in a file or entry,
and how many more there are. --json (one object a line) and --sarif (a SARIF 2.1.0 log) show up to
10,000 of a kind and 4 MiB in a file or entry; 32 MiB are kept in all. Exit codes:
  0  no errors
  1  errors
  2  wrong usage (including a ROOT without resource files), or output that cannot be written

Examples:
  refdoc check                          check the installed documentation
  refdoc check build/docroot            check another root
  refdoc check --level error docroot    report only what is lost)";

struct CheckArguments {
    std::optional<std::string> root;
    std::string level = std::string(levelName(Level::Note));
    bool sarif = false;
};

Level levelNamed(const std::string& name) {
    const auto known = std::find(kLevelNames.begin(), kLevelNames.end(), name);
    if (known == kLevelNames.end())
        throw UsageError(fmt::format("--level: \"{}\" is not a level; the levels are {}", name,
                                     fmt::join(kLevelNames.rbegin(), kLevelNames.rend(), ", ")));
    return static_cast<Level>(known - kLevelNames.begin());
}

ReportOptions reportOptions(const CheckArguments& arguments, const GlobalOptions& options) {
    if (arguments.sarif && options.json)
        throw UsageError("--json and --sarif exclude each other");
    ReportOptions report;
    report.least = levelNamed(arguments.level);
    report.format = arguments.sarif ? ReportFormat::Sarif
                    : options.json  ? ReportFormat::JsonLines
                                    : ReportFormat::Text;
    report.styled = standardOutputTerminal().styled;
    return report;
}

/// The current root, which must have at least one of the catalog folders.
std::string checkedRoot() {
    const auto roots = reference::docparser::DocResourceParser::getReferenceRoots();
    std::error_code ignored;
    for (const std::u16string* folder :
         {&roots->referenceApiLookupFolder, &roots->referenceApiFolder})
        if (std::filesystem::is_directory(toUtf8(*folder), ignored))
            return toUtf8(roots->referenceRoot);
    throw UsageError(fmt::format(
        "{} holds no resource files: neither {} nor {} is a folder", toUtf8(roots->referenceRoot),
        toUtf8(roots->referenceApiLookupFolder), toUtf8(roots->referenceApiFolder)));
}

CheckResult checkWithProgress() {
    RootCheck check;
    Progress progress;
    while (check.stepsDone() < check.stepCount()) {
        check.step();
        progress.show(check.stepsDone(), check.stepCount());
    }
    return check.finish();
}

ExitCode check(const CheckArguments& arguments, GlobalOptions options) {
    ReportOptions report = reportOptions(arguments, options);
    if (arguments.root)
        options.root = arguments.root;
    setUpHost(options);
    report.root = checkedRoot();
    if (arguments.sarif)
        report.root = std::filesystem::absolute(report.root).lexically_normal().native();
    const CheckResult result = checkWithProgress();
    writeOutput(reportOn(result, report));
    return result.hasErrors() ? ExitCode::NothingFound : ExitCode::Found;
}

} // namespace

Command addCheckCommand(CLI::App& application) {
    const auto arguments = std::make_shared<CheckArguments>();
    CLI::App* declaration = application.add_subcommand(
        "check", "Report what is wrong with the resource files of a root");
    declaration
        ->add_option("ROOT", arguments->root, "The documentation root to check (else --root)")
        ->type_name("");
    declaration
        ->add_option("--level", arguments->level,
                     "The least level to report: error, warning or note (default: note)")
        ->type_name("LEVEL")
        ->take_last();
    declaration->add_flag("--sarif", arguments->sarif, "Print a SARIF 2.1.0 log instead of text");
    declaration->footer(kFooter);
    return {declaration,
            [arguments](const GlobalOptions& options) { return check(*arguments, options); }};
}

} // namespace refdoc

#include "refdoc/commands/ShowCommand.hpp"

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "refdoc/commands/ShowByName.hpp"
#include "refdoc/pages/ResourceEntries.hpp"
#include "refdoc/terminal/Output.hpp"
#include "refdoc/text/NearNames.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;

constexpr const char* kShowFooter =
    R"(A single word is the RESOURCE of that name if there is one, else a NAME, which is looked up: in
installed products, and in the others if none of those has it. When several products document it,
you are asked which one you mean; where nobody can be asked, the commands to choose from are told
on stderr.

A RESOURCE that you type may lead into another folder, as ../drafts/libc does from where the others
lie. What the documentation says never leads out of its folders.

The options of refdoc itself may stand here too: --root DIR, --language CODE, --json, --verbose.
A NAME that begins with "-" goes after "--". Exit codes:
  0  found
  1  nothing found
  2  wrong use, no choice made, or the output cannot be written

Examples:
  refdoc show libc                   list all names with their purposes
  refdoc show malloc                 show the entry that documents malloc, wherever it is
  refdoc show libc printf            show the entry for printf in libc
  refdoc show libc printf --json     print all its fields for a program)";

struct ShowArguments {
    std::string resourceOrName;
    std::optional<std::string> name;
};

ExitCode listResource(const ResourceDocuments& documents, const std::string& resource,
                      const GlobalOptions& options) {
    const std::vector<Selection> selections =
        select(documents, [](const auto&, const auto&) { return true; });
    if (selections.empty())
        reportError(fmt::format("no reference entries found for resource \"{}\"", resource),
                    {triedFiles(fromUtf8(resource))});
    return showEntries(selections, fromUtf8(resource),
                       options.json ? EntryFormat::Json : EntryFormat::Lists);
}

void reportUnknownName(const ResourceDocuments& documents, const std::string& resource,
                       const std::string& name) {
    std::set<std::u16string> known;
    for (const auto& [key, document] : documents)
        for (const auto& [href, items] : document.items)
            for (const RefItem& item : items)
                for (const RefEntity& entity : item.refEntities)
                    known.insert(entity.name);
    reportError(fmt::format(R"(resource "{}" documents nothing named "{}")", resource, name),
                {triedFiles(fromUtf8(resource), "not in it"), similarNames(fromUtf8(name), known)});
}

void reportNothingFound(const ResourceDocuments& documents, const std::string& resource,
                        const std::string& name, bool verbose) {
    const bool empty = std::all_of(documents.begin(), documents.end(),
                                   [](const auto& entry) { return entry.second.items.empty(); });
    if (!empty)
        return reportUnknownName(documents, resource, name);
    reportError(fmt::format("no reference entries found for resource \"{}\"", resource),
                {triedFiles(fromUtf8(resource)),
                 verbose ? Lines() : Lines{"(--verbose shows which files are read)"}});
}

ExitCode showEntry(const std::string& resource, const std::string& name,
                   const GlobalOptions& options) {
    const ResourceDocuments documents = DocResourceParser::getResourceFile(fromUtf8(resource));
    const std::vector<Selection> selections =
        select(documents, [wanted = fromUtf8(name)](const auto&, const RefItem& item) {
            return isCalled(item, wanted);
        });
    if (selections.empty())
        reportNothingFound(documents, resource, name, options.verbose);
    return showEntries(selections, fromUtf8(resource),
                       options.json ? EntryFormat::Json : EntryFormat::Pages);
}

ExitCode show(const ShowArguments& arguments, const GlobalOptions& options) {
    if (arguments.name)
        return showEntry(arguments.resourceOrName, *arguments.name, options);
    const ResourceDocuments documents =
        DocResourceParser::getResourceFile(fromUtf8(arguments.resourceOrName));
    return documents.empty() ? showByName(arguments.resourceOrName, options)
                             : listResource(documents, arguments.resourceOrName, options);
}

} // namespace

Command addShowCommand(CLI::App& application) {
    const auto arguments = std::make_shared<ShowArguments>();
    CLI::App* declaration = application.add_subcommand(
        "show", "Show the full reference entry of a name, or list a resource");
    declaration
        ->add_option("RESOURCE", arguments->resourceOrName,
                     "The resource (a file's name without suffix and extension), or only a NAME")
        ->type_name("")
        ->required();
    declaration
        ->add_option("NAME", arguments->name,
                     "A documented name or an item's href; a RESOURCE alone lists all its names")
        ->type_name("");
    declaration->footer(kShowFooter);
    return {declaration,
            [arguments](const GlobalOptions& options) { return show(*arguments, options); }};
}

} // namespace refdoc

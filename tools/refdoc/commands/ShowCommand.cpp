#include "refdoc/commands/ShowCommand.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "refdoc/catalog/LookupSearch.hpp"
#include "refdoc/catalog/NamedResources.hpp"
#include "refdoc/catalog/ResourceFiles.hpp"
#include "refdoc/completion/ShellWords.hpp"
#include "refdoc/host/HostSetup.hpp"
#include "refdoc/pages/Choice.hpp"
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
you are asked which one you mean; where nobody can be asked, the commands to choose from are
printed on stderr.

A RESOURCE that you type may lead into another folder, as ../drafts/libc does from the reference
folder. What the documentation says never leads out of its folders.

The options of refdoc itself are allowed here, too: --root DIR, --language CODE, --json, --verbose.
A NAME that begins with "-" goes after "--". Exit codes:
  0  found
  1  nothing found
  2  wrong usage, no choice made, a broken list of installed products, or output that cannot
     be written

Examples:
  refdoc show libc                   list all names with their purposes
  refdoc show malloc                 show the entry that documents malloc, wherever it is
  refdoc show libc printf            show the entry for printf in libc
  refdoc show libc printf --json     print all its fields as JSON)";

struct ShowArguments {
    std::string resourceOrName;
    std::optional<std::string> name;
};

EntryFormat entryFormat(const GlobalOptions& options) {
    return options.json ? EntryFormat::Json : EntryFormat::Pages;
}

ExitCode listResource(const ResourceDocuments& documents, const std::u16string& resource,
                      const GlobalOptions& options) {
    const std::vector<Selection> selections = select(documents, {});
    if (selections.empty())
        reportError(fmt::format("no reference entries found for resource \"{}\"", toUtf8(resource)),
                    {triedFiles(resource)});
    return showEntries(selections, resource, options.json ? EntryFormat::Json : EntryFormat::Lists);
}

bool hasEntries(const ResourceDocuments& documents) {
    return std::any_of(documents.begin(), documents.end(),
                       [](const auto& entry) { return !entry.second.items.empty(); });
}

std::set<std::u16string> namesIn(const ResourceDocuments& documents) {
    std::set<std::u16string> names;
    for (const Selection& selection : select(documents, {}))
        for (const RefItem* item : selection.items)
            for (const RefEntity& entity : item->refEntities)
                names.insert(entity.name);
    return names;
}

ExitCode showEntry(const std::u16string& resource, const std::string& name,
                   const GlobalOptions& options) {
    const ResourceDocuments documents = DocResourceParser::getResourceFile(resource);
    const std::vector<Selection> selections = select(documents, {.name = fromUtf8(name)});
    if (selections.empty() && hasEntries(documents))
        reportError(
            fmt::format(R"(resource "{}" documents nothing named "{}")", toUtf8(resource), name),
            {triedFiles(resource, "not in it"), similarNames(fromUtf8(name), namesIn(documents))});
    else if (selections.empty())
        reportError(fmt::format("no reference entries found for resource \"{}\"", toUtf8(resource)),
                    {triedFiles(resource),
                     options.verbose ? Lines() : Lines{"(--verbose shows which files are read)"}});
    return showEntries(selections, resource, entryFormat(options));
}

std::string commandFor(const NamedResource& found, const std::string& name,
                       const GlobalOptions& options) {
    std::string command = "refdoc";
    if (options.root)
        command += " --root " + shellQuoted(*options.root);
    if (options.language)
        command += " --language " + shellQuoted(*options.language);
    return fmt::format("{} show{}{} {} {}", command, options.json ? " --json" : "",
                       name.starts_with('-') || found.resource.starts_with(u'-') ? " --" : "",
                       shellQuoted(toUtf8(found.resource)), shellQuoted(name));
}

std::u16string description(const NamedResource& found) {
    return found.productName + u": " + found.purpose;
}

std::optional<NamedResource> askWhichOne(const std::vector<NamedResource>& found,
                                         const std::string& name) {
    std::vector<std::u16string> choices;
    choices.reserve(found.size());
    for (const NamedResource& each : found)
        choices.push_back(each.resource + u" - " + description(each));
    const auto chosen = askUser(fmt::format("Several products document \"{}\":", name), choices);
    return chosen ? std::optional(found[*chosen]) : std::nullopt;
}

/// The only resource, or the one that the user chooses. If the user cannot be asked, prints the
/// commands to choose from.
std::optional<NamedResource> chooseResource(const std::vector<NamedResource>& found,
                                            const std::string& name, const GlobalOptions& options) {
    if (found.size() == 1)
        return found.front();
    if (!options.json && canAskUser())
        return askWhichOne(found, name);
    Lines commands;
    for (const NamedResource& each : found) {
        commands.push_back(commandFor(each, name, options));
        commands.push_back("    " + toUtf8(description(each)));
    }
    reportError(fmt::format("several products document \"{}\"; choose one:", name), {commands});
    return std::nullopt;
}

ExitCode showNamed(const NamedResource& found, const std::string& name,
                   const GlobalOptions& options) {
    const ResourceDocuments documents = DocResourceParser::getResourceFile(found.resource);
    const std::vector<Selection> selections = select(
        documents, {.name = fromUtf8(name), .hrefs = found.hrefs, .products = found.products});
    if (selections.empty())
        reportError(fmt::format(R"({} documents "{}", but its resource "{}" has no entry for it)",
                                toUtf8(found.productName), name, toUtf8(found.resource)),
                    {documents.empty() ? triedFiles(found.resource) : Lines()});
    return showEntries(selections, found.resource, entryFormat(options));
}

void reportUnknown(const std::string& name, const LookupResources& documents) {
    const std::size_t records = countRecords(documents);
    if (records == 0)
        // Called so that it throws: a broken list of installed products drops all records.
        DocResourceParser::getTopLevelProducts();
    const auto roots = DocResourceParser::getReferenceRoots();
    reportError(
        fmt::format(R"(no reference entries found for "{}", neither a resource nor a name)", name),
        {triedFiles(fromUtf8(name)),
         {fmt::format("tried {} lookup record{} in {}", records, records == 1 ? "" : "s",
                      toUtf8(roots->referenceApiLookupFolder))},
         similarNames(fromUtf8(name), documents, {}, Installed::Either)});
}

/// The resources that document the name; notes on stderr name the records that lead to none.
std::vector<NamedResource> findResources(const LookupDocuments& documents,
                                         const std::string& name) {
    NamedResources resources = resourcesDocumenting(documents, fromUtf8(name));
    for (const auto& [product, helpFolder] : resources.unusable)
        reportError(fmt::format(
            R"(note: "{}" documents "{}", but its help folder "{}" cannot be the name of a resource)",
            toUtf8(product), name, toUtf8(helpFolder)));
    return std::move(resources.found);
}

/// Shows the entries of `name`, which must equal a name in the lookup records.
ExitCode showByName(const std::string& name, const GlobalOptions& options) {
    const LookupResources documents = DocResourceParser::getResourceLookupFiles();
    std::vector<NamedResource> found = findResources(documents.first, name);
    if (found.empty()) {
        found = findResources(documents.second, name);
        if (!found.empty())
            reportError("note: only products that are not installed document \"" + name + "\"");
    }
    if (found.empty()) {
        reportUnknown(name, documents);
        return showEntries({}, fromUtf8(name), entryFormat(options));
    }
    const auto chosen = chooseResource(found, name, options);
    return chosen ? showNamed(*chosen, name, options) : ExitCode::Failure;
}

ExitCode show(const ShowArguments& arguments, const GlobalOptions& options) {
    setUpHost(options);
    const std::u16string resource = fromUtf8(arguments.resourceOrName);
    if (arguments.name)
        return showEntry(resource, *arguments.name, options);
    const ResourceDocuments documents = DocResourceParser::getResourceFile(resource);
    return documents.empty() ? showByName(arguments.resourceOrName, options)
                             : listResource(documents, resource, options);
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

#include "refdoc/ShowCommand.hpp"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/ItemJson.hpp"
#include "refdoc/NameList.hpp"
#include "refdoc/NearNames.hpp"
#include "refdoc/Output.hpp"
#include "refdoc/Page.hpp"
#include "refdoc/Pager.hpp"
#include "refdoc/PrettyJson.hpp"
#include "refdoc/ReferencePage.hpp"
#include "refdoc/Terminal.hpp"
#include "refdoc/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
namespace parsing = DocResourceParser::ParsingTools;

using Documents = std::map<std::u16string, DocResource<RefItem>>;

constexpr const char* kFooter =
    R"(The options of refdoc itself may stand here too: --root DIR, --language CODE, --json, --verbose.
A NAME that begins with "-" goes after "--". Exit codes:
  0  found
  1  nothing found
  2  wrong use, or the output cannot be written

Examples:
  refdoc show libc                   list all names with their purposes
  refdoc show libc printf            show the entry that documents printf
  refdoc show libc printf --json     print all its fields for a program)";

struct ShowArguments {
    std::string resource;
    std::optional<std::string> name;
};

/// The wanted items of one document, in the order of their hrefs.
struct Selection {
    const std::u16string* key;
    const reference::property::HeaderInfo* header;
    std::vector<const RefItem*> items;
};

bool isCalled(const RefItem& item, const std::u16string& name) {
    return item.href == name ||
           std::any_of(item.refEntities.begin(), item.refEntities.end(),
                       [&](const RefEntity& entity) { return entity.name == name; });
}

std::vector<Selection> select(const Documents& documents, const ShowArguments& arguments) {
    const std::u16string name = fromUtf8(arguments.name.value_or(""));
    std::vector<Selection> selections;
    for (const auto& [key, document] : documents) {
        Selection selection{&key, &document.header, {}};
        for (const auto& [href, items] : document.items)
            for (const RefItem& item : items)
                if (!arguments.name || isCalled(item, name))
                    selection.items.push_back(&item);
        if (!selection.items.empty())
            selections.push_back(std::move(selection));
    }
    // The product's own document, which is the one under its help folder, comes before those of
    // support packages.
    std::stable_partition(selections.begin(), selections.end(), [](const Selection& selection) {
        return *selection.key == selection.header->getHelpFolder();
    });
    return selections;
}

std::string asJson(const std::vector<Selection>& selections, const ShowArguments& arguments) {
    boost::json::array documents;
    for (const Selection& selection : selections) {
        boost::json::array items;
        for (const RefItem* item : selection.items)
            items.emplace_back(toJson(*item));
        boost::json::object document{{"key", toJson(*selection.key)}};
        for (auto& member : toJson(*selection.header))
            document.emplace(member.key(), std::move(member.value()));
        document.emplace("items", std::move(items));
        documents.emplace_back(std::move(document));
    }
    return prettyJson(boost::json::object{{"resource", toJson(fromUtf8(arguments.resource))},
                                          {"language", toJson(parsing::getCurrentLocale())},
                                          {"documents", std::move(documents)}});
}

std::string asPages(const std::vector<Selection>& selections, const Terminal& terminal) {
    std::string text;
    for (const Selection& selection : selections) {
        for (const RefItem* item : selection.items) {
            Page page({terminal.width, terminal.styled});
            addReferencePage(page, *selection.header, *item);
            text += (text.empty() ? "" : "\n\n") + page.take();
        }
    }
    return text;
}

std::vector<ListedName> listedNames(const Selection& selection) {
    std::vector<ListedName> names;
    for (const RefItem* item : selection.items) {
        const std::u16string_view status = statusText(item->deprecationStatus);
        std::u16string purpose = item->refPurpose;
        if (!status.empty())
            purpose.append(u" (").append(status).append(u")");
        for (const RefEntity& entity : item->refEntities)
            names.push_back({entity.name, purpose});
        if (item->refEntities.empty())
            names.push_back({item->href, purpose});
    }
    return names;
}

/// A list for another program has one line per name, whatever its length.
std::string asLists(const std::vector<Selection>& selections, const Terminal& terminal) {
    const std::size_t width = terminal.interactive ? terminal.width : kUnlimitedWidth;
    Page page({width, terminal.styled});
    for (const Selection& selection : selections) {
        const std::u16string& product = selection.header->getProductName();
        addNameList(page, product.empty() ? *selection.key : product, listedNames(selection),
                    width);
    }
    return page.take();
}

/// The files that may hold a resource, with what came of reading them.
std::string triedFiles(const std::u16string& resource) {
    const std::u16string stem =
        DocResourceParser::getReferenceRoots()->referenceApiFolder + u'/' + resource;
    std::vector<std::u16string> paths{stem + parsing::kDotJsonExt};
    if (const std::u16string language = parsing::getCurrentLocale();
        language != parsing::kEnglishLocale)
        paths.push_back(stem + parsing::kLocaleSeparator + language + parsing::kDotJsonExt);
    std::string text;
    for (const std::u16string& path : paths) {
        std::error_code ignored;
        const bool exists = std::filesystem::exists(toUtf8(path), ignored);
        text += fmt::format("\n  tried {}: {}", toUtf8(path),
                            exists ? "no reference entries in it" : "no such file");
    }
    return text;
}

std::string unknownNameMessage(const Documents& documents, const ShowArguments& arguments) {
    std::set<std::u16string> known;
    for (const auto& [key, document] : documents)
        for (const auto& [href, items] : document.items)
            for (const RefItem& item : items)
                for (const RefEntity& entity : item.refEntities)
                    known.insert(entity.name);
    std::string message = fmt::format("resource \"{}\" documents nothing named \"{}\"",
                                      arguments.resource, *arguments.name);
    std::string suggestions;
    for (const std::u16string& name : nearNames(fromUtf8(*arguments.name), known))
        suggestions += (suggestions.empty() ? "\n  similar names: " : ", ") + toUtf8(name);
    return message + suggestions;
}

void reportNothingFound(const Documents& documents, const ShowArguments& arguments, bool verbose) {
    const bool empty = std::all_of(documents.begin(), documents.end(),
                                   [](const auto& entry) { return entry.second.items.empty(); });
    if (!empty)
        return reportError(unknownNameMessage(documents, arguments));
    reportError(fmt::format("no reference entries found for resource \"{}\"{}{}",
                            arguments.resource, triedFiles(fromUtf8(arguments.resource)),
                            verbose ? "" : "\n  (--verbose shows which files are read)"));
}

ExitCode show(const ShowArguments& arguments, const GlobalOptions& options) {
    const Documents documents = DocResourceParser::getResourceFile(fromUtf8(arguments.resource));
    const std::vector<Selection> selections = select(documents, arguments);
    if (selections.empty())
        reportNothingFound(documents, arguments, options.verbose);
    if (options.json) {
        writeOutput(asJson(selections, arguments));
    } else if (!selections.empty()) {
        const Terminal terminal = standardOutputTerminal();
        showText(arguments.name ? asPages(selections, terminal) : asLists(selections, terminal),
                 terminal);
    }
    return selections.empty() ? ExitCode::NothingFound : ExitCode::Found;
}

} // namespace

Command addShowCommand(CLI::App& application) {
    const auto arguments = std::make_shared<ShowArguments>();
    CLI::App* declaration =
        application.add_subcommand("show", "Show the full reference entries of a resource");
    declaration
        ->add_option("RESOURCE", arguments->resource,
                     "The resource: its file's name without language suffix and extension")
        ->type_name("")
        ->required();
    declaration
        ->add_option("NAME", arguments->name,
                     "A documented name or an item's href; without it all names are listed")
        ->type_name("");
    declaration->footer(kFooter);
    return {declaration,
            [arguments](const GlobalOptions& options) { return show(*arguments, options); }};
}

} // namespace refdoc

#include "refdoc/commands/LookupCommand.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/object.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "refdoc/catalog/LookupSearch.hpp"
#include "refdoc/host/HostSetup.hpp"
#include "refdoc/pages/Table.hpp"
#include "refdoc/terminal/Output.hpp"
#include "refdoc/terminal/Pager.hpp"
#include "refdoc/terminal/Terminal.hpp"
#include "refdoc/text/Json.hpp"
#include "refdoc/text/NearNames.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
using reference::property::RefEntityType;

constexpr const char* kLookupFooter =
    R"(A PATTERN with *, ? or [...] stands for whole names (quote it for the shell); any other one
finds the name itself, then all names that begin with it. Letter case counts only when the PATTERN
has an upper-case letter.

On a terminal the columns are name, type, purpose and product; elsewhere each record is one line
with tabs between these four. What is deprecated or not installed is marked as such after the
purpose. Exit codes:
  0  found
  1  nothing found
  2  wrong usage, a broken list of installed products, or output that cannot be written

Examples:
  refdoc lookup print                       names that begin with "print"
  refdoc lookup '*printf' --product libc    names that end in "printf", of one product
  refdoc lookup --type macro                all macros
  refdoc lookup SSL_ --all --limit 5        also products that are not installed)";

struct LookupArguments {
    std::optional<std::string> pattern;
    std::optional<std::string> type;
    std::optional<std::string> product;
    std::optional<std::size_t> limit;
    bool all = false;
};

RefEntityType entityType(const std::string& text) {
    try {
        return RefEntityType::stringToEnum(text);
    } catch (const std::invalid_argument&) {
        throw UsageError(fmt::format("--type: \"{}\" is not a type; the types are {}", text,
                                     fmt::join(RefEntityType::texts, ", ")));
    }
}

LookupQuery makeQuery(const LookupArguments& arguments) {
    LookupQuery query;
    if (arguments.pattern)
        query.pattern.emplace(fromUtf8(*arguments.pattern));
    if (arguments.type)
        query.type = entityType(*arguments.type);
    if (arguments.product)
        query.product = fromUtf8(*arguments.product);
    return query;
}

std::u16string markedPurpose(const LookupRecord& record) {
    const bool deprecated = record.item->isDeprecated();
    const std::u16string_view mark = deprecated && !record.installed
                                         ? u" (deprecated, not installed)"
                                     : deprecated        ? u" (deprecated)"
                                     : !record.installed ? u" (not installed)"
                                                         : u"";
    return record.item->getPurpose() + std::u16string(mark);
}

std::string asTable(const std::vector<LookupRecord>& records, const Terminal& terminal) {
    Table table({{{}, 3}, {{}, 1}, {{}, 0}, {{}, 4}});
    for (const LookupRecord& record : records)
        table.add({record.item->getName(), fromUtf8(record.item->getEntityType().toString()),
                   markedPurpose(record), *record.product});
    return table.text(terminal);
}

boost::json::object recordJson(const LookupRecord& record) {
    return {{"name", toJson(record.item->getName())},
            {"entityType", record.item->getEntityType().toString()},
            {"functionType", record.item->getFunctionType().toString()},
            {"purpose", toJson(record.item->getPurpose())},
            {"deprecated", record.item->isDeprecated()},
            {"href", toJson(record.item->getHref())},
            {"product", toJson(*record.product)},
            {"productName", toJson(record.header->getProductName())},
            {"helpFolder", toJson(record.header->getHelpFolder())},
            {"installed", record.installed}};
}

/// Writes while printing: there are many records, and each repeats the texts of its product.
void writeJson(const std::vector<LookupRecord>& records, std::size_t matches) {
    constexpr std::size_t kPiece = 1 << 16;
    JsonPrinter printer;
    printer.open('{');
    printer.key("language");
    printer.value(toJson(DocResourceParser::ParsingTools::getCurrentLocale()));
    printer.key("matches");
    printer.value(matches);
    printer.key("records");
    printer.open('[');
    for (const LookupRecord& record : records) {
        printer.value(recordJson(record));
        if (printer.size() > kPiece)
            writeOutput(printer.take());
    }
    printer.close(']');
    printer.close('}');
    writeOutput(printer.take() + '\n');
}

std::string describeQuery(const LookupArguments& arguments) {
    return fmt::format(
        "no {}{}{}", arguments.type ? *arguments.type : "name",
        arguments.pattern ? fmt::format(" matches \"{}\"", *arguments.pattern) : " is documented",
        arguments.product ? fmt::format(" in product \"{}\"", *arguments.product) : "");
}

/// Says that no product has the requested key; empty if one has.
Lines unknownProduct(const LookupArguments& arguments, const LookupResources& documents) {
    const std::u16string wanted = fromUtf8(arguments.product.value_or(""));
    if (!arguments.product || documents.first.contains(wanted) || documents.second.contains(wanted))
        return {};
    std::set<std::u16string> known;
    for (const auto* map : {&documents.first, &documents.second})
        for (const auto& [key, document] : *map)
            known.insert(key);
    Lines lines = similarNames(wanted, known);
    lines.insert(lines.begin(), "no product has that key (see refdoc products)");
    return lines;
}

/// Names products that are not installed and have matches; empty if none has.
Lines foundElsewhere(const LookupResources& documents, const LookupQuery& query) {
    constexpr std::ptrdiff_t kNamed = 5;
    std::set<const std::u16string*> keys;
    for (const LookupRecord& record : findRecords(documents, query, Installed::Not))
        keys.insert(record.product);
    std::set<std::string> products;
    for (const std::u16string* key : keys)
        products.insert(toUtf8(*key));
    if (products.empty())
        return {};
    const auto count = std::ssize(products);
    const auto last = std::next(products.begin(), std::min(count, kNamed));
    const std::string others = count > kNamed ? fmt::format(" and {} more", count - kNamed) : "";
    return {fmt::format("documented only by what is not installed: {}{} (--all shows it)",
                        fmt::join(products.begin(), last, ", "), others)};
}

/// Hints at what the user may have meant by a pattern that matches nothing.
Lines meantInstead(const LookupArguments& arguments, const LookupResources& documents,
                   const LookupQuery& query) {
    if (!query.pattern)
        return {};
    if (!query.pattern->isGlob())
        return similarNames(fromUtf8(*arguments.pattern), documents, query,
                            arguments.all ? Installed::Either : Installed::Only);
    return query.pattern->caseCounts()
               ? Lines{"letter case counted, since there are upper-case letters"}
               : Lines();
}

void reportNoMatch(const LookupArguments& arguments, const LookupResources& documents,
                   const LookupQuery& query) {
    if (countRecords(documents) == 0) {
        // Called so that it throws: a broken list of installed products drops all records.
        DocResourceParser::getTopLevelProducts();
        return reportError(
            "no lookup records found in " +
            toUtf8(DocResourceParser::getReferenceRoots()->referenceApiLookupFolder));
    }
    const Lines elsewhere = arguments.all ? Lines() : foundElsewhere(documents, query);
    const Lines unknown = unknownProduct(arguments, documents);
    const bool explained = !elsewhere.empty() || !unknown.empty();
    reportError(
        describeQuery(arguments),
        {elsewhere, unknown, explained ? Lines() : meantInstead(arguments, documents, query)});
}

ExitCode lookUp(const LookupArguments& arguments, const GlobalOptions& options) {
    setUpHost(options);
    const LookupQuery query = makeQuery(arguments);
    const LookupResources documents = DocResourceParser::getResourceLookupFiles();
    std::vector<LookupRecord> records =
        findRecords(documents, query, arguments.all ? Installed::Either : Installed::Only);
    const std::size_t matches = records.size();
    records.resize(std::min(matches, arguments.limit.value_or(matches)));
    if (matches == 0)
        reportNoMatch(arguments, documents, query);
    const Terminal terminal = standardOutputTerminal();
    if (options.json)
        writeJson(records, matches);
    else if (matches > 0)
        showText(asTable(records, terminal), terminal);
    if (terminal.interactive && !options.json && records.size() < matches)
        reportError(fmt::format("{} more (--limit)", matches - records.size()));
    return matches == 0 ? ExitCode::NothingFound : ExitCode::Found;
}

/// Empty if `text` is a number greater than 0.
std::string complaintAboutCount(const std::string& text) {
    const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == text.npos;
    const bool isPositive = text.find_first_not_of('0') != text.npos;
    return isNumber && isPositive ? "" : '"' + text + "\" is not a number of at least 1";
}

void declareOptions(CLI::App& declaration, LookupArguments& arguments) {
    declaration.add_option("PATTERN", arguments.pattern, "Which names; all by default")
        ->type_name("");
    declaration.add_option("--type", arguments.type, "Only names of this type")
        ->type_name("TYPE")
        ->take_last();
    declaration
        .add_option("--product", arguments.product,
                    "Only this product or support package, by its key")
        ->type_name("KEY")
        ->take_last();
    declaration.add_flag("--all", arguments.all, "Also names of products that are not installed");
    declaration.add_option("--limit", arguments.limit, "The most names to list, at least 1")
        ->type_name("N")
        ->take_last()
        ->check(complaintAboutCount, "");
}

} // namespace

Command addLookupCommand(CLI::App& application) {
    const auto arguments = std::make_shared<LookupArguments>();
    CLI::App* declaration =
        application.add_subcommand("lookup", "Find documented names by pattern, type and product");
    declareOptions(*declaration, *arguments);
    declaration->footer(kLookupFooter);
    return {declaration,
            [arguments](const GlobalOptions& options) { return lookUp(*arguments, options); }};
}

} // namespace refdoc

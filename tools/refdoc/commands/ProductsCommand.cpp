#include "refdoc/commands/ProductsCommand.hpp"

#include <string>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "refdoc/catalog/ProductSurvey.hpp"
#include "refdoc/host/HostSetup.hpp"
#include "refdoc/pages/Table.hpp"
#include "refdoc/terminal/Output.hpp"
#include "refdoc/terminal/Pager.hpp"
#include "refdoc/terminal/Terminal.hpp"
#include "refdoc/text/Json.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

constexpr const char* kProductsFooter =
    R"(Columns, separated by tabs and without titles where the output is not a terminal:
  KEY        the name of the product elsewhere: its short name, or its help folder or, for a
             support package, its base code in the lookup files
  NAME       from the documentation, or else from the installation
  KIND       product or package (a hardware support package)
  INSTALLED  yes or no
  RECORDS    the number of lookup records in the current language
  LANGUAGES  en, and those in which its name or a record differs from English
  FILES      the lookup files that are named after its help folder
Files that are named after no product come last, without a key. Exit codes:
  0  found
  1  nothing is installed, and nothing documented
  2  wrong usage, a broken list of installed products, or output that cannot be written

Examples:
  refdoc products                        list everything
  refdoc --language ja products --json   names and counts in Japanese, as JSON)";

std::u16string joined(const std::vector<std::u16string>& words) {
    std::u16string text;
    for (const std::u16string& word : words)
        text.append(text.empty() ? u"" : u" ").append(word);
    return text;
}

std::string asTable(const ProductSurvey& survey, const Terminal& terminal) {
    Table table({{u"KEY", 4},
                 {u"NAME", 4},
                 {u"KIND", 1},
                 {u"INSTALLED", 1},
                 {u"RECORDS", 1},
                 {u"LANGUAGES", 6},
                 {u"FILES", 0}});
    for (const SurveyedProduct& product : survey.products)
        table.add({product.key, product.name, product.isSupportPackage ? u"package" : u"product",
                   product.isInstalled ? u"yes" : u"no", fromUtf8(std::to_string(product.records)),
                   joined(product.languages), joined(product.files)});
    for (const std::u16string& file : survey.otherFiles)
        table.add({{}, {}, {}, {}, {}, {}, file});
    return table.text(terminal);
}

boost::json::array arrayJson(const std::vector<std::u16string>& texts) {
    boost::json::array array;
    for (const std::u16string& text : texts)
        array.emplace_back(toJson(text));
    return array;
}

std::string asJson(const ProductSurvey& survey) {
    boost::json::array products;
    for (const SurveyedProduct& product : survey.products)
        products.emplace_back(
            boost::json::object{{"key", toJson(product.key)},
                                {"name", toJson(product.name)},
                                {"displayName", toJson(product.displayName)},
                                {"kind", product.isSupportPackage ? "package" : "product"},
                                {"installed", product.isInstalled},
                                {"records", product.records},
                                {"languages", arrayJson(product.languages)},
                                {"files", arrayJson(product.files)}});
    namespace parsing = reference::docparser::DocResourceParser::ParsingTools;
    return prettyJson(boost::json::object{{"language", toJson(parsing::getCurrentLocale())},
                                          {"products", std::move(products)},
                                          {"otherFiles", arrayJson(survey.otherFiles)}});
}

ExitCode listProducts(const GlobalOptions& options) {
    using namespace reference::docparser;
    setUpHost(options);
    const ProductSurvey survey = surveyProducts();
    const bool empty = survey.products.empty() && survey.otherFiles.empty();
    const Terminal terminal = standardOutputTerminal();
    if (empty)
        reportError("nothing is installed, and there are no lookup files in " +
                    toUtf8(DocResourceParser::getReferenceRoots()->referenceApiLookupFolder));
    if (options.json)
        writeOutput(asJson(survey));
    else if (!empty)
        showText(asTable(survey, terminal), terminal);
    return empty ? ExitCode::NothingFound : ExitCode::Found;
}

} // namespace

Command addProductsCommand(CLI::App& application) {
    CLI::App* declaration =
        application.add_subcommand("products", "List what is installed and what is documented");
    declaration->footer(kProductsFooter);
    return {declaration, listProducts};
}

} // namespace refdoc

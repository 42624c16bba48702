// What an editor shows beside the cursor: a card about the name at that place. The editor decides
// where the documentation is, in which language it is read and what is installed, and plugs this in
// as services.
//
//     help_card DOCROOT LANGUAGE FILE LINE COLUMN

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "environment/DocProducts.hpp"
#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace {

namespace docs = reference::docparser::DocResourceParser;
using fl::i18n::from_utf8;
using fl::i18n::to_string;
using reference::docparser::RefItem;
using reference::property::RefItemLookup;

/// An editor knows what its user has; here it is everything that the example needs.
environment::TopLevelProductList installedProducts() {
    using doc_products_shared::TopLevelDocProduct;
    std::vector<std::shared_ptr<const TopLevelDocProduct>> products;
    for (const char* name : {"libc", "syscalls", "perl"})
        products.push_back(std::make_shared<const TopLevelDocProduct>(
            name, "", name, "", "", "", TopLevelDocProduct::Properties()));
    return std::make_shared<const decltype(products)>(std::move(products));
}

/// The services run on any thread that reads documentation; those left out stay built in.
void plugIn(const std::string& docroot, const std::string& language) {
    environment::Services services;
    services.docDataRoot = [root = from_utf8(docroot)] { return root; };
    services.docLanguage = [code = from_utf8(language)] { return code; };
    services.installedTopLevelDocProducts = installedProducts;
    environment::setServices(std::move(services));
}

bool isPartOfName(char character) {
    constexpr std::string_view kOthers = "_:.";
    return std::isalnum(static_cast<unsigned char>(character)) != 0 ||
           kOthers.find(character) != kOthers.npos;
}

/// The name around a column, which counts from 1.
std::string nameAt(const std::string& line, std::size_t column) {
    std::size_t begin = std::min(column - 1, line.size());
    std::size_t end = begin;
    while (begin > 0 && isPartOfName(line[begin - 1]))
        --begin;
    while (end < line.size() && isPartOfName(line[end]))
        ++end;
    return line.substr(begin, end - begin);
}

std::string readLine(const std::string& file, std::size_t number) {
    std::ifstream lines(file);
    std::string line;
    for (std::size_t passed = 0; passed < number; ++passed)
        if (!std::getline(lines, line))
            throw std::runtime_error(file + " has no line " + std::to_string(number));
    return line;
}

struct Found {
    std::u16string product;    ///< the key of its document
    std::u16string helpFolder; ///< names its resource: a support package is in its product's
    RefItemLookup lookup;
};

/// The first product that documents the name; what is installed comes first.
std::optional<Found> find(const std::u16string& name) {
    const auto resources = docs::getResourceLookupFiles();
    for (const auto* documents : {&resources.first, &resources.second})
        for (const auto& [product, document] : *documents)
            if (const auto entry = document.items.find(name); entry != document.items.end())
                return Found{product, document.header.getHelpFolder(), entry->second.front()};
    return std::nullopt;
}

/// The full entry behind a lookup, when the product has one.
std::optional<RefItem> findItem(const Found& found) {
    const auto documents = docs::getResourceFile(found.helpFolder);
    const auto document = documents.find(found.product);
    if (document == documents.end())
        return std::nullopt;
    const auto entry = document->second.items.find(found.lookup.getHref());
    return entry == document->second.items.end() ? std::nullopt
                                                 : std::optional(entry->second.front());
}

void printCard(const Found& found, const std::optional<RefItem>& item) {
    std::cout << to_string(found.lookup.getName()) << "  ("
              << found.lookup.getEntityType().toString() << ", " << to_string(found.product)
              << ")\n  " << to_string(found.lookup.getPurpose()) << '\n';
    if (found.lookup.isDeprecated())
        std::cout << "  Deprecated.\n";
    if (item)
        for (const auto& group : item->syntaxGroups)
            for (const std::u16string& line : group.syntax)
                std::cout << "    " << to_string(line) << '\n';
    std::cout << "  " << to_string(found.lookup.getHref()) << '\n';
}

/// A line or a column: digits only, and at least 1.
std::optional<std::size_t> parsePosition(const std::string& text) {
    std::size_t position = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, position);
    return error == std::errc() && rest == end && position > 0 ? std::optional(position)
                                                               : std::nullopt;
}

int reportUsage() {
    std::cerr << "usage: help_card DOCROOT LANGUAGE FILE LINE COLUMN\n"
                 "LINE and COLUMN are numbers, from 1 on.\n";
    return 2;
}

int run(const std::vector<std::string>& arguments) {
    if (arguments.size() != 5)
        return reportUsage();
    const auto lineNumber = parsePosition(arguments[3]);
    const auto column = parsePosition(arguments[4]);
    if (!lineNumber || !column)
        return reportUsage();
    plugIn(arguments[0], arguments[1]);
    const std::string name = nameAt(readLine(arguments[2], *lineNumber), *column);
    const auto found = find(from_utf8(name));
    if (!found) {
        std::cerr << "help_card: nothing is known about \"" << name << "\"\n";
        return 1;
    }
    printCard(*found, findItem(*found));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& failure) {
        std::cerr << "help_card: " << failure.what() << '\n';
        return 2;
    }
}

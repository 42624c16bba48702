#pragma once

#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/LibraryFixture.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ZipFile.hpp"

/// A short notation for lookup files, "key:product name=href,href name=href | key:product ...",
/// the product's own document first. The purpose of each lookup is the product of its document;
/// what is collected shows it behind the href, "name=href@product", and has '+' before the keys
/// of what is installed and '-' before the others.
namespace testsupport {

inline boost::json::object parseLookupDocument(const std::string& notation, bool isMain) {
    std::istringstream words(notation);
    std::string word;
    words >> word;
    const std::size_t colon = word.find(':');
    const std::string key = word.substr(0, colon);
    const std::string product = word.substr(colon + 1);
    boost::json::array items;
    while (words >> word) {
        const std::size_t equals = word.find('=');
        std::istringstream hrefs(word.substr(equals + 1));
        for (std::string href; std::getline(hrefs, href, ',');)
            items.push_back(
                {{"name", word.substr(0, equals)}, {"href", href}, {"refpurpose", product}});
    }
    return {{"productName", product},
            {"baseCode", isMain ? "not the key" : key},
            {"helpFolder", isMain ? key : "not the key"},
            {"helpLocation", ""},
            {"refItems", items}};
}

inline std::string lookupText(const std::string& notation) {
    std::istringstream documents(notation);
    std::string part;
    std::getline(documents, part, '|');
    boost::json::object main = parseLookupDocument(part, true);
    boost::json::array packages;
    while (std::getline(documents, part, '|'))
        packages.push_back(parseLookupDocument(part, false));
    main["supportPackages"] = packages;
    return boost::json::serialize(main);
}

inline std::string notationOf(const reference::docparser::LookupResources& resources) {
    using fl::i18n::to_string;
    std::string notation;
    const auto add = [&notation](char mark, const auto& documents) {
        for (const auto& [key, document] : documents) {
            notation += notation.empty() ? "" : " | ";
            notation += mark + to_string(key) + ':' + to_string(document.header.getProductName());
            for (const auto& [name, lookups] : document.items) {
                char separator = '=';
                notation += ' ' + to_string(name);
                for (const auto& lookup : lookups)
                    notation += std::exchange(separator, ',') + to_string(lookup.getHref()) + '@' +
                                to_string(lookup.getPurpose());
            }
        }
    };
    add('+', resources.first);
    add('-', resources.second);
    return notation;
}

/// A reference root and settings of its own: the language is Japanese, German is supported too;
/// the products "f" and "g" and the support package "p" are installed.
class LookupFixture : public LibraryFixture {
protected:
    /// A name, or a package's and an entry's as in "a.zip/b.json", and the notation of the text.
    using Files = std::vector<std::pair<std::string, std::string>>;

    LookupFixture() {
        environment::setServices(services());
        reference::docparser::DocResourceParser::setReferenceRoot(root.path());
        reference::docparser::DocResourceParser::setTestProducts({u"f", u"g"}, {u"p"});
    }

    environment::Services services() {
        environment::Services services;
        services.docLanguage = [this] { return language; };
        services.supportedDocLanguages = [] {
            return std::vector<std::u16string>{u"en", u"ja", u"de"};
        };
        return services;
    }

    void write(const Files& files) const {
        std::map<std::string, ZipFile> packages;
        for (const auto& [name, notation] : files) {
            const std::size_t slash = name.find('/');
            if (slash == name.npos)
                root.lookupFile(name, lookupText(notation));
            else
                packages[name.substr(0, slash)].add(name.substr(slash + 1), lookupText(notation));
        }
        for (const auto& [name, package] : packages)
            package.write(root.lookupFolder() / name);
    }

    /// What is collected when there are these files and no others.
    std::string collect(const Files& files) const {
        root.remove(root.lookupFolder());
        write(files);
        return collect();
    }

    static std::string collect() {
        return notationOf(reference::docparser::DocResourceParser::getResourceLookupFiles());
    }

    ScopedRoot root;
    std::u16string language = u"ja";
};

} // namespace testsupport

#pragma once

#include <map>
#include <sstream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/LibraryFixture.hpp"
#include "support/ResourceNotation.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ScopedServices.hpp"
#include "support/ZipFile.hpp"

/// A short notation for lookup files, "key:product name=href,href name=href | key:product ...",
/// the product's own document first. The purpose of each lookup is the product of its document. The
/// notation of a collection shows it behind the href, "name=href@product", and has '+' before the
/// keys of what is installed and '-' before the others.
namespace testsupport {

inline void writeLookups(boost::json::object& document) {
    boost::json::array lookups;
    for (const boost::json::value& item : document.at("refItems").as_array()) {
        std::istringstream hrefs(std::string(item.at("refpurpose").as_string()));
        for (std::string href; std::getline(hrefs, href, ',');)
            lookups.push_back({{"name", item.at("href")},
                               {"href", href},
                               {"refpurpose", document.at("productName")}});
    }
    document["refItems"] = lookups;
}

inline std::string lookupText(const std::string& notation) {
    // A full reference file's items "href=purpose" stand for "name=href,href" here.
    boost::json::value main = boost::json::parse(referenceText(notation));
    writeLookups(main.as_object());
    if (boost::json::value* packages = main.as_object().if_contains("supportPackages"))
        for (boost::json::value& package : packages->as_array())
            writeLookups(package.as_object());
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

/// A host whose language is Japanese, where German is supported too, and where the products "f" and
/// "g" and the support package "p" are installed; with a documentation root of its own.
class LookupFixture : public LibraryFixture {
protected:
    /// The name of a file, or of a package and an entry as in "a.zip/b.json", and the notation of
    /// its text.
    using Files = std::vector<std::pair<std::string, std::string>>;

    LookupFixture() {
        environment::setServices(host());
        reference::docparser::DocResourceParser::restoreDefaultSettings();
    }

    environment::Services host() {
        using Names = std::unordered_set<std::u16string>;
        environment::Services services;
        services.docDataRoot = [this] { return root.path(); };
        services.docLanguage = [this] { return language; };
        services.supportedDocLanguages = [] {
            return std::vector<std::u16string>{u"en", u"ja", u"de"};
        };
        services.installedTopLevelDocProducts = [] { return makeProducts({"f", "g"}); };
        services.supportPackageRoot = [] { return std::u16string(u"/packages"); };
        services.installedHardwareSupportPackages = [](const auto&) { return Names{u"p"}; };
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

    /// The collection of these files alone.
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

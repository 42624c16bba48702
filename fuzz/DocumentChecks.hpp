#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <boost/system/error_code.hpp>
#include <boost/system/system_error.hpp>

#include "Agreement.hpp"
#include "DocumentWriting.hpp"
#include "Format.hpp"
#include "Support.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/RefItem.hpp"
#include "resources/ReferenceResource.hpp"

/// What must hold for any text that is given to the parser of a resource file.
namespace fuzz {

/// What may become of a text; what else is thrown leaves, and ends the process.
enum class Verdict { Taken, NoJson, BrokenFormat };

template <typename T>
struct Outcome {
    Verdict verdict;
    docparser::ParsedResource<T> resource; ///< of a text that was taken
};

template <typename T>
Outcome<T> parse(const std::string& text) {
    try {
        return {Verdict::Taken, docparser::parseReferenceResource<T>(text)};
    } catch (const boost::system::system_error&) {
        return {Verdict::NoJson, {}};
    } catch (const docparser::DocParserException&) {
        return {Verdict::BrokenFormat, {}};
    }
}

/// The two kinds of resource file: how their items are grouped, and which texts are one.
template <typename T>
struct ResourceKind;

template <>
struct ResourceKind<reference::property::RefItemLookup> {
    static constexpr std::string_view itemKey = kLookupKey;
    static bool accepts(const json::value& text) { return isLookupResource(text); }
};

template <>
struct ResourceKind<docparser::RefItem> {
    static constexpr std::string_view itemKey = kReferenceKey;
    static bool accepts(const json::value& text) { return isReferenceResource(text); }
};

/// One JSON text for all documents: whichever can be the main one is, the others are packages.
template <typename T>
json::object writeResource(const docparser::ParsedResource<T>& resource) {
    const auto isPackage = [](const auto& entry) {
        return entry.second.header.getBaseCode() == entry.first;
    };
    const auto isMainOfOthers = [&](const auto& entry) {
        const auto others = std::count_if(resource.begin(), resource.end(), [&](const auto& other) {
            return &other == &entry || isPackage(other);
        });
        return entry.second.header.getHelpFolder() == entry.first &&
               static_cast<std::size_t>(others) == resource.size();
    };
    const auto main = std::find_if(resource.begin(), resource.end(), isMainOfOthers);
    require(main != resource.end(), "documents stand under their help folder or base code");
    json::object text = write(main->second);
    json::array packages;
    for (auto entry = resource.begin(); entry != resource.end(); ++entry)
        if (entry != main)
            packages.push_back(write(entry->second));
    text["supportPackages"] = std::move(packages);
    return text;
}

/// The documents of a text that count, by key: of several with one key the first.
inline std::map<std::string, json::value> documentsOf(const json::value& text) {
    std::map<std::string, json::value> documents;
    const auto textOfMember = [](const json::value& document, const char* name) {
        return std::string(document.at(name).as_string());
    };
    documents.emplace(textOfMember(text, "helpFolder"), text);
    if (const json::value* packages = text.as_object().if_contains("supportPackages"))
        for (const json::value& package : packages->as_array())
            documents.emplace(textOfMember(package, "baseCode"), package);
    return documents;
}

/// Requires that what was read of each document is what stands there, and is all of it.
template <typename T>
void requireFaithful(const docparser::ParsedResource<T>& resource, const json::value& text) {
    const std::map<std::string, json::value> documents = documentsOf(text);
    require(documents.size() == resource.size(), "each document is read");
    for (const auto& [key, document] : resource) {
        const auto original = documents.find(narrow(key));
        require(original != documents.end(), "each document was there");
        requireAgreement(write(document), original->second.as_object(), ResourceKind<T>::itemKey);
    }
}

template <typename T>
void requireSameAgain(const docparser::ParsedResource<T>& resource) {
    const json::object written = writeResource(resource);
    const Outcome<T> again = parse<T>(json::serialize(written));
    require(again.verdict == Verdict::Taken, "what was read can be written back and read again");
    require(writeResource(again.resource) == written, "what is read again is the same");
}

template <typename T>
void checkResource(const std::string& text) {
    const Outcome<T> outcome = parse<T>(text);
    boost::system::error_code failure;
    const json::value parsed = json::parse(text, failure);
    require(failure.failed() == (outcome.verdict == Verdict::NoJson), "JSON is told from no JSON");
    if (failure)
        return;
    require(ResourceKind<T>::accepts(parsed) == (outcome.verdict == Verdict::Taken),
            "a text is taken exactly when it keeps to the format");
    if (outcome.verdict != Verdict::Taken)
        return;
    requireFaithful(outcome.resource, parsed);
    requireSameAgain(outcome.resource);
}

} // namespace fuzz

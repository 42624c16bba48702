// What the client's check calls lost must be what the library loses, no more and no less.

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "refdoc/CheckFiles.hpp"
#include "refdoc/CheckRoot.hpp"
#include "refdoc/CheckText.hpp"
#include "refdoc/JsonPositions.hpp"
#include "support/JsonMutations.hpp"
#include "support/LookupFixture.hpp"
#include "support/ZipFile.hpp"

namespace {

namespace json = boost::json;
using namespace reference::docparser;
using fl::i18n::to_string;
using refdoc::Catalog;
using refdoc::Finding;
using refdoc::Loss;
using testsupport::ZipBytes;
using testsupport::ZipFile;

const json::value kLookup = json::parse(R"({
    "productName": "main", "baseCode": "B", "helpFolder": "m", "helpLocation": "h", "x": {"y": []},
    "refItems": [
        {"name": "a", "refpurpose": "p", "href": "h", "type": "class", "fcntype": "method"},
        {"name": "b", "refpurpose": "é", "href": "h", "deprecated": false}],
    "supportPackages": [
        {"productName": "one", "baseCode": "1", "helpFolder": "m", "helpLocation": "", "refItems": []},
        {"productName": "two", "baseCode": "2", "helpFolder": "m", "helpLocation": "",
         "refItems": [{"name": "c", "refpurpose": "p", "href": "h"}]}]})");

const json::value kReference = json::parse(R"({
    "productName": "main", "baseCode": "B", "helpFolder": "m", "helpLocation": "h",
    "refItems": [{
        "href": "h", "refpurpose": "p", "packagename": "k", "introduced": "1", "description": "d",
        "refentity": [{"name": "a", "type": "class", "fcntype": "method"}],
        "appthumbnail": {"fileref": "f", "alt": "a"}, "deprecationstatus": "none",
        "syntaxgroup": [{"title": "t", "syntax": ["s"], "syntaxtype": "plain"}],
        "inputgroup": [
            {"title": "t", "inputs": [{"name": "i", "purpose": "p", "value": ["v"], "htmlid": "i",
                                       "syntaxtype": "plain", "defaultvalue": "d"}]},
            {"title": 7, "inputs": {}, "namevaluepairs": [
                {"title": "t", "inputs": [{"name": "n", "purpose": "p"}], "namevaluepairs": 8}]}],
        "outputs": [{"name": "o", "purpose": "p", "value": [], "syntaxtype": "plain",
                     "defaultvalue": 9}],
        "classpropertygroup": [{"title": "t", "classproperty": [
            {"name": "c", "purpose": "p", "value": ["v"], "defaultvalue": "d", "htmlid": 1}]}],
        "seealso": [{"url": "u", "name": "n"}],
        "examples": [{"url": "u", "title": "t", "open_command": "o"}],
        "parameters": [{"name": "p", "purpose": "p", "defaultvalue": "d", "syntaxtype": {}}]}],
    "supportPackages": [
        {"productName": "one", "baseCode": "1", "helpFolder": "m", "helpLocation": "",
         "refItems": [{"href": "h", "refpurpose": "p"}], "supportPackages": 7},
        {"productName": "two", "baseCode": "2", "helpFolder": "m", "helpLocation": "",
         "refItems": []}]})");

using Random = std::mt19937;

std::string numbered(std::string prefix, std::size_t number) {
    return prefix.append(std::to_string(number));
}

std::size_t below(std::size_t count, Random& random) {
    return random() % count;
}

/// Takes a value away, or puts another one of the document or of any kind in its place.
json::value mutated(json::value document, Random& random) {
    static const json::array others =
        json::parse(R"([null, false, 7, 0.5, "", "1", "B", [], {}, [1], {"name": "n"}])")
            .as_array();
    const std::vector<std::string> pointers = testsupport::allPointers(document);
    if (pointers.empty())
        return document;
    const std::string& pointer = pointers[below(pointers.size(), random)];
    if (below(3, random) == 0 && !testsupport::isListElement(pointer))
        return testsupport::withoutMember(document, pointer);
    const json::value replacement =
        below(3, random) == 0 ? document.at_pointer(pointers[below(pointers.size(), random)])
                              : others[below(others.size(), random)];
    return testsupport::withValue(document, pointer, replacement);
}

/// Changes, takes away or adds bytes.
std::string damaged(std::string text, Random& random) {
    static constexpr std::string_view bytes("{}[]\",:\\u1\x80\xC3\0 \n", 16);
    const std::size_t at = below(text.size(), random);
    const char byte = bytes[below(bytes.size(), random)];
    switch (below(4, random)) {
    case 0:
        text[at] = byte;
        break;
    case 1:
        text.erase(at, 1 + below(3, random));
        break;
    case 2:
        text.insert(at, 1, byte);
        break;
    default:
        text.resize(at);
    }
    return text;
}

std::string mutatedText(const json::value& sound, Random& random) {
    json::value document = sound;
    for (std::size_t count = below(4, random); count > 0; --count)
        document = mutated(std::move(document), random);
    std::string text = json::serialize(document);
    if (below(4, random) == 0 && !text.empty())
        text = damaged(std::move(text), random);
    return text;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> keptInputs(const std::string& target) {
    std::vector<std::string> inputs;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(DOCPARSER_FUZZ_CORPUS) / target))
        inputs.push_back(contentOf(entry.path()));
    return inputs;
}

class RefdocCheckAgreement : public testsupport::LookupFixture {
protected:
    static std::vector<Finding> check() {
        return refdoc::checkRoot([](std::size_t, std::size_t) {}).findings;
    }

    static bool loses(const std::vector<Finding>& findings, Loss loss,
                      const std::string& leaf = {}) {
        return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
            return finding.loss == loss && finding.leaf == leaf;
        });
    }

    /// The keys and product names of what the library gives in the language in force.
    using Delivered = std::set<std::pair<std::string, std::string>>;

    template <typename Documents>
    static void addDelivered(const Documents& documents, Delivered& delivered) {
        for (const auto& [key, document] : documents)
            delivered.emplace(to_string(key), to_string(document.header.getProductName()));
    }

    static Delivered deliveredLookups() {
        Delivered delivered;
        const LookupResources resources = DocResourceParser::getResourceLookupFiles();
        addDelivered(resources.first, delivered);
        addDelivered(resources.second, delivered);
        return delivered;
    }

    static Delivered deliveredReferences() {
        Delivered delivered;
        addDelivered(DocResourceParser::getResourceFile(u"m"), delivered);
        return delivered;
    }

    /// The documents that are there after all that is told to be lost.
    static Delivered expected(const std::string& text, const std::vector<Finding>& findings) {
        Delivered expected;
        if (loses(findings, Loss::File))
            return expected;
        std::set<std::string> lost;
        for (const Finding& finding : findings)
            if (finding.loss == Loss::Document)
                lost.insert(finding.pointer);
        const auto add = [&](const json::value& document, const char* key,
                             const std::string& pointer) {
            if (!lost.contains(pointer))
                expected.emplace(asRead(document.at(key)),
                                 std::string(document.at("productName").as_string()));
        };
        const json::value resource = json::parse(text);
        add(resource, "helpFolder", "");
        if (const json::value* packages = resource.as_object().if_contains("supportPackages"))
            for (std::size_t i = 0; i < packages->as_array().size(); ++i)
                add(packages->at(i), "baseCode", numbered("/supportPackages/", i));
        return expected;
    }

    /// A key is read byte by byte.
    static std::string asRead(const json::value& key) {
        std::u16string text;
        for (const char byte : key.as_string())
            text += static_cast<char16_t>(static_cast<unsigned char>(byte));
        return to_string(text);
    }

    void expectAgreement(Catalog catalog, const std::string& text) const {
        root.remove("docCatalog");
        catalog == Catalog::Lookup ? root.lookupFile("m.json", text)
                                   : root.referenceFile("m.json", text);
        const std::vector<Finding> findings = check();
        const Delivered delivered =
            catalog == Catalog::Lookup ? deliveredLookups() : deliveredReferences();
        EXPECT_EQ(loses(findings, Loss::File), delivered.empty()) << text;
        EXPECT_EQ(expected(text, findings), delivered) << text;
    }
};

TEST_F(RefdocCheckAgreement, OnKeptInputs) {
    for (const std::string& text : keptInputs("lookup_document"))
        expectAgreement(Catalog::Lookup, text);
    for (const std::string& text : keptInputs("reference_document"))
        expectAgreement(Catalog::Reference, text);
}

TEST_F(RefdocCheckAgreement, OnEverySingleFaultOfAMember) {
    for (const auto& [catalog, sound] :
         {std::pair(Catalog::Lookup, kLookup), std::pair(Catalog::Reference, kReference)}) {
        for (const std::string& pointer : testsupport::allPointers(sound)) {
            if (!testsupport::isListElement(pointer))
                expectAgreement(catalog,
                                json::serialize(testsupport::withoutMember(sound, pointer)));
            for (const json::value& other :
                 testsupport::valuesOfOtherKinds(sound.at_pointer(pointer)))
                expectAgreement(catalog,
                                json::serialize(testsupport::withValue(sound, pointer, other)));
        }
    }
}

TEST_F(RefdocCheckAgreement, OnMutatedFiles) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        Random random(seed);
        for (int i = 0; i < 500; ++i) {
            expectAgreement(Catalog::Lookup, mutatedText(kLookup, random));
            expectAgreement(Catalog::Reference, mutatedText(kReference, random));
        }
    }
}

/// A package of one to four leaves, each with one key of its own, damaged here and there.
class MutatedPackage {
public:
    explicit MutatedPackage(Random& random) {
        static const std::vector<std::string> endings{".json", "_ja.json", "_de.json",
                                                      ".JSON", ".zip",     ".txt"};
        ZipFile file;
        const std::size_t count = 1 + below(4, random);
        for (std::size_t i = 0; i < count; ++i) {
            names_.push_back(numbered("l", i) + endings[below(endings.size(), random)]);
            json::value document = testsupport::withoutMember(kLookup, "/supportPackages");
            document = testsupport::withValue(document, "/helpFolder",
                                              json::value(json::string(keyOf(i))));
            if (below(4, random) == 0)
                document = testsupport::withoutMember(document, "/refItems/0/href");
            file.add(names_.back(), json::serialize(document));
        }
        ZipBytes bytes = file.build();
        damageLeaf(bytes, below(count, random), random);
        if (below(6, random) == 0)
            bytes.truncate(below(bytes.size(), random));
        bytes_ = bytes.bytes();
    }

    static std::string keyOf(std::size_t leaf) { return numbered("k", leaf); }
    const std::vector<std::string>& names() const { return names_; }
    const std::string& bytes() const { return bytes_; }

private:
    static void damageLeaf(ZipBytes& bytes, std::size_t leaf, Random& random) {
        switch (below(8, random)) {
        case 0:
            bytes.breakChecksum(leaf);
            break;
        case 1:
            bytes.markEncrypted(leaf);
            break;
        case 2:
            bytes.setMethod(leaf, 77);
            break;
        case 3:
            bytes.setDeclaredSize(leaf, 5);
            break;
        case 4:
            bytes.setContentByte(leaf, 0xFF);
            break;
        default:
            break;
        }
    }

    std::vector<std::string> names_;
    std::string bytes_;
};

class RefdocCheckPackageAgreement : public RefdocCheckAgreement {
protected:
    /// What readers of any language get.
    std::set<std::string> deliveredKeys() {
        std::set<std::string> keys;
        for (const char16_t* each : {u"en", u"ja", u"de"}) {
            language = each;
            for (const auto& [key, product] : deliveredLookups())
                keys.insert(key);
        }
        return keys;
    }

    /// Whether there is nothing to lose: a leaf that is no resource file by its name.
    static bool isOther(const std::string& name) { return name.ends_with(".txt"); }
};

TEST_F(RefdocCheckPackageAgreement, OnMutatedPackages) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        Random random(seed);
        for (int i = 0; i < 300; ++i) {
            const MutatedPackage package(random);
            const std::string name = below(2, random) == 0 ? "m.zip" : "m_ja.zip";
            root.remove("docCatalog");
            root.lookupFile(name, package.bytes());
            const std::vector<Finding> findings = check();
            const std::set<std::string> delivered = deliveredKeys();
            for (std::size_t leaf = 0; leaf < package.names().size(); ++leaf) {
                const std::string& leafName = package.names()[leaf];
                const bool isLost = loses(findings, Loss::File) ||
                                    loses(findings, Loss::Leaf, leafName) || isOther(leafName);
                EXPECT_NE(isLost, delivered.contains(MutatedPackage::keyOf(leaf)))
                    << "seed " << seed << ", package " << i << ", " << name << ": " << leafName;
            }
        }
    }
}

TEST_F(RefdocCheckPackageAgreement, OnKeptPackages) {
    for (const std::string& bytes : keptInputs("zip_package")) {
        root.remove("docCatalog");
        root.lookupFile("m.zip", bytes);
        std::size_t sound = 0;
        for (const refdoc::CatalogFile& file : refdoc::listCatalog(Catalog::Lookup).files)
            refdoc::readTexts(file, [&sound](const auto& text, refdoc::FindingList& findings) {
                const auto resource = refdoc::parseText(text, findings);
                if (resource)
                    refdoc::checkText(text, *resource, findings);
                sound += findings.losesText() ? 0 : 1;
            });
        EXPECT_EQ(sound == 0, deliveredKeys().empty());
    }
}

/// What is found lies where it is said to lie.
TEST_F(RefdocCheckAgreement, PositionsNameTheValues) {
    Random random(4);
    for (int i = 0; i < 500; ++i) {
        json::value document = kReference;
        for (int count = 0; count < 3; ++count)
            document = mutated(std::move(document), random);
        const std::string text = json::serialize(document);
        const std::vector<std::string> pointers = testsupport::allPointers(document);
        const auto places = refdoc::findInJson(text, pointers, 0);
        for (std::size_t at = 0; at < pointers.size(); ++at) {
            const std::string value = json::serialize(document.at_pointer(pointers[at]));
            EXPECT_EQ(text.substr(places.offsets[at], value.size()), value) << pointers[at];
        }
    }
}

} // namespace

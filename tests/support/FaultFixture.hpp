#pragma once

#include <algorithm>
#include <cstddef>
#include <set>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/FaultyCalls.hpp"
#include "support/LogCapture.hpp"
#include "support/LookupFixture.hpp"
#include "support/OpenDescriptors.hpp"
#include "support/ResourceNotation.hpp"

namespace testsupport {

/// The headers and lookups of a collection, each with its key: "+f:Ja n=1@Ja,2@En" has "f:Ja",
/// "f n=1@Ja" and "f n=2@En".
inline std::set<std::string> partsOf(const std::string& notation) {
    std::set<std::string> parts;
    std::istringstream words(notation);
    std::string key;
    for (std::string word; words >> word;) {
        const std::size_t equals = word.find('=');
        if (word[0] == '+' || word[0] == '-') {
            key = word.substr(1, word.find(':') - 1);
            parts.insert(word.substr(1));
        }
        if (equals == word.npos)
            continue;
        std::istringstream lookups(word.substr(equals + 1));
        for (std::string lookup; std::getline(lookups, lookup, ',');)
            parts.insert(key + ' ' + word.substr(0, equals + 1) + lookup);
    }
    return parts;
}

/// A documentation root that exercises all of the library: plain and zipped files, localized ones,
/// support packages, and broken files. It also has the lists of what is installed, for the built-in
/// services.
class FaultFixture : public LookupFixture {
protected:
    FaultFixture() {
        writeLookupFiles({});
        root.referenceFile("abc.json", kReferenceText);
        root.referenceFile("abc_ja.json", referenceText("f:Ja a=1 b=4 | p:Ja c=1"));
        root.writeFile("installedProducts.json", R"([{"shortName": "f"}, {"shortName": "g"}])");
        root.makeFolder("supportPackages/p");
        environment::setServices(builtInHost());
        reference::docparser::DocResourceParser::restoreDefaultSettings();
    }

    environment::Services builtInHost() {
        environment::Services services;
        services.docDataRoot = [this] { return root.path(); };
        services.docLanguage = [this] { return language; };
        return services;
    }

    /// Writes all lookup files and entries of packages but one. The entries are so far apart that
    /// no single read covers two of them.
    void writeLookupFiles(const std::string& leftOut) const {
        const std::string far(40'000, ' ');
        root.remove(root.lookupFolder());
        ZipFile package;
        for (const auto& [name, notation] : kLookupFiles) {
            if (name == leftOut)
                continue;
            const std::size_t slash = name.find('/');
            if (slash == name.npos)
                root.lookupFile(name, lookupText(notation));
            else
                package.add(name.substr(slash + 1), lookupText(notation))
                    .add("far_" + name.substr(slash + 1) + ".txt", far, ZipMethod::Stored);
        }
        if (leftOut != kPackage)
            package.write(root.lookupFolder() / kPackage);
        root.lookupFile("broken.json", "no JSON");
        root.lookupFile("broken.zip", "no zip");
    }

    LogCapture log;

    static inline const std::string kPackage = "b.zip";
    static inline const Files kLookupFiles = {
        {"a.json", "f:En n=1,2,3 m=1 | p:En m=1"},
        {"a_ja.json", "f:Ja n=1 | p:Ja k=1"},
        {"b.zip/x.json", "g:Zip n=1,2,3 m=1,2"},
        {"b.zip/x_ja.json", "g:ZipJa n=1 m=1 k=1"},
        {"b.zip/y.json", "q:Zip n=1"},
        {"c.json", "h:En n=1"},
    };
    static constexpr const char* kReferenceText = R"json({
        "productName": "En", "baseCode": "F", "helpFolder": "f", "helpLocation": "help/f",
        "refItems": [{
            "href": "a", "refpurpose": "English",
            "refentity": [{"type": "app", "name": "a", "fcntype": "function"}],
            "packagename": "P", "introduced": "1", "description": "D", "deprecationstatus": "removed",
            "appthumbnail": {"fileref": "a.png", "alt": "A"},
            "syntaxgroup": [{"title": "S", "syntaxtype": "function", "syntax": ["a()", "a(x)"]}],
            "inputgroup": [{"title": "I", "inputs": [
                               {"name": "x", "purpose": "X", "htmlid": "x", "value": ["1", "2"]}]},
                           {"namevaluepairs": [{"title": "N", "inputs": [
                               {"name": "ü", "purpose": "U", "defaultvalue": "0"}]}]}],
            "outputs": [{"name": "y", "purpose": "Y", "syntaxtype": "unknown to us"}],
            "classpropertygroup": [{"classproperty": [{"name": "Color", "purpose": "C"}]}],
            "seealso": [{"url": "b", "name": "B"}],
            "examples": [{"url": "e", "open_command": "open", "title": "E"}],
            "parameters": [{"name": "z", "purpose": "Z"}]
}],
        "supportPackages": [{"productName": "Pack", "baseCode": "p", "helpFolder": "",
                             "helpLocation": "",
                             "refItems": [{"href": "d", "refpurpose": "English"}]}]
})json";
};

/// Fails when the code in its scope leaves a file open, or closes one twice.
class DescriptorCheck {
public:
    DescriptorCheck() = default;
    DescriptorCheck(const DescriptorCheck&) = delete;
    DescriptorCheck& operator=(const DescriptorCheck&) = delete;
    ~DescriptorCheck() {
        EXPECT_EQ(openDescriptors(), open_);
        EXPECT_EQ(closesOfNothing(), closes_);
    }

private:
    std::ptrdiff_t open_ = openDescriptors();
    std::size_t closes_ = closesOfNothing();
};

} // namespace testsupport

#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ProductData.hpp"
#include "support/LookupFixture.hpp"
#include "support/OpenPackage.hpp"
#include "support/ResourceNotation.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ZipFile.hpp"

namespace testsupport {

/// One of two documentation roots that differ in every text.
class NumberedRoot {
public:
    explicit NumberedRoot(const std::string& number) : number_(number) {
        for (const auto& [suffix, name] : {std::pair("", "En"), {"_ja", "Ja"}, {"_de", "De"}}) {
            const std::string product = name + number;
            const std::string hrefs = *suffix == '\0' ? " n=1,2" : " n=1";
            files.lookupFile(std::string("a") + suffix + ".json",
                             lookupText("always:" + product + hrefs));
            zip_.add(std::string("b") + suffix + ".json", lookupText("never:" + product + hrefs));
            files.referenceFile(std::string("abc") + suffix + ".json",
                                referenceText("f:" + product + ' ' + name + '=' + number));
        }
        zip_.write(files.lookupFolder() / "b.zip");
        files.lookupFile("c.json", lookupText("first:En" + number + " n=1"));
        package_.open();
    }

    /// All possible collections in a language; with failures any document may be missing.
    std::set<std::string> collections(const std::string& language, bool withFailures) const {
        const std::string english = "En" + number_;
        const std::string localized = (language == "ja" ? "Ja" : "De") + number_;
        std::vector<std::string> states = {":" + english + " n=1@" + english + ",2@" + english};
        if (language != "en") {
            if (withFailures)
                states.push_back(':' + localized + " n=1@" + localized);
            else
                states.clear();
            states.push_back(':' + localized + " n=1@" + localized + ",2@" + english);
        }
        const std::string first = ":" + english + " n=1@" + english;
        std::set<std::string> results;
        for (const std::string& always : states)
            for (const std::string& never : states)
                results.insert("always" + always + " | first" + first + " | never" + never);
        if (!withFailures)
            return results;
        for (const auto& always : withNothing(states, "always"))
            for (const auto& middle : withNothing({first}, "first"))
                for (const auto& never : withNothing(states, "never"))
                    results.insert(joined({always, middle, never}));
        return results;
    }

    std::string resource(const std::string& language) const {
        if (language == "en")
            return "f:En" + number_ + " En=" + number_;
        const std::string name = language == "ja" ? "Ja" : "De";
        // They are in the order of the hrefs.
        return "f:" + name + number_ +
               (name < "En" ? ' ' + name + '=' + number_ + " En=" + number_
                            : " En=" + number_ + ' ' + name + '=' + number_);
    }

    std::u16string path() const { return files.path(); }

    void checkFiles() {
        using namespace reference::docparser;
        using DocResourceParser::openAndReadFile;
        const std::string text = lookupText("always:En" + number_ + " n=1,2");
        const std::u16string path = files.pathOf(files.lookupFolder() / "a.json");
        EXPECT_EQ(openAndReadFile(path), text);
        EXPECT_EQ(openAndReadFile(ProductPathData(u"a", false, path)), text);
        const auto leaves = package_.leaves();
        ASSERT_EQ(leaves.size(), 3U);
        EXPECT_EQ(openAndReadFile(ProductZipData(u"b", false, leaves.front(), &package_.manager())),
                  lookupText("never:En" + number_ + " n=1,2"));
        const ProductFiles found = DocResourceParser::getAllProducts(
            files.lookupFolder().u16string(), {u"_ja", u"_de"}, u"_ja");
        ASSERT_EQ(found.first.size(), 3U);
        EXPECT_EQ(found.first[1].getName(), u"a_ja");
        EXPECT_TRUE(found.first[1].isNonEnglishLocale());
        EXPECT_EQ(found.second.size(), 1U);
    }

    ScopedRoot files;

private:
    static std::vector<std::string> withNothing(std::vector<std::string> states,
                                                const std::string& key) {
        for (std::string& state : states)
            state.insert(0, key);
        states.emplace_back();
        return states;
    }

    static std::string joined(const std::vector<std::string>& parts) {
        std::string text;
        for (const std::string& part : parts)
            text += (text.empty() || part.empty() ? "" : " | ") + part;
        return text;
    }

    std::string number_;
    ZipFile zip_;
    OpenPackage package_{files.pathOf(files.lookupFolder() / "b.zip"), false};
};

} // namespace testsupport

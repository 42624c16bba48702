#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "environment/Diagnostics.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/LibraryFixture.hpp"
#include "support/LogCapture.hpp"
#include "support/ResourceNotation.hpp"
#include "support/ScopedRoot.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

using testsupport::notationOf;
using testsupport::referenceText;
using testsupport::withDocLanguage;

/// A documentation root and a documentation language of its own.
class ResourceFileTest : public testsupport::LibraryFixture {
protected:
    ResourceFileTest() {
        setReferenceRoot(root.path());
        environment::setServices(withDocLanguage([this] { return language; }));
    }

    // An empty notation stands for a missing file.
    void write(const std::string& fileName, const std::string& notation) const {
        if (!notation.empty())
            root.referenceFile(fileName, referenceText(notation));
    }

    testsupport::ScopedRoot root;
    std::u16string language = u"ja";
};

TEST_F(ResourceFileTest, LaysTheLocalizedFileOverTheEnglishOne) {
    struct Case {
        const char *english, *localized, *result;
    };
    int number = 0;
    for (const auto& [english, localized, result] : {
             Case{"", "", ""},
             Case{"f:En a=1 b=2", "", "f:En a=1 b=2"},
             Case{"", "f:Ja a=1 b=2", "f:Ja a=1 b=2"},
             Case{"f:En a=1", "f:Ja a=2", "f:Ja a=2"},
             Case{"f:En a=1 b=2 d=3", "f:Ja b=4 c=5", "f:Ja a=1 b=4 c=5 d=3"},
             Case{"f:En a=1 b=2", "f:Ja", "f:Ja a=1 b=2"},
             Case{"f:En", "f:Ja a=1", "f:Ja a=1"},
             // The localized file decides how many items a href has.
             Case{"f:En a=1 a=2 b=3", "f:Ja a=4", "f:Ja a=4 b=3"},
             Case{"f:En a=1 b=2 b=3", "f:Ja a=4 a=5 a=6", "f:Ja a=4 a=5 a=6 b=2 b=3"},
             // Only the key decides which documents are merged.
             Case{"f:En a=1", "g:Ja a=2", "f:En a=1 | g:Ja a=2"},
             Case{"f:En a=1 | p:En b=2", "f:Ja a=3", "f:Ja a=3 | p:En b=2"},
             Case{"f:En a=1", "f:Ja a=3 | p:Ja b=2", "f:Ja a=3 | p:Ja b=2"},
             Case{"f:En a=1 | p:En b=2 c=3 | q:En", "f:Ja | p:Ja c=4 | r:Ja d=5",
                  "f:Ja a=1 | p:Ja b=2 c=4 | q:En | r:Ja d=5"},
             Case{"f:En a=1 | p:En b=2", "p:Ja a=3", "f:En a=1 | p:Ja a=3 b=2"},
         }) {
        const std::string name = "resource" + std::to_string(++number);
        write(name + ".json", english);
        write(name + "_ja.json", localized);
        EXPECT_EQ(notationOf(getResourceFile(std::u16string(name.begin(), name.end()))), result)
            << english << " + " << localized;
    }
}

TEST_F(ResourceFileTest, NameAndLanguageMakeTheFileNames) {
    enableSeverities(foundation::log::kSeverityDetail);
    struct Case {
        std::u16string name, code;
        std::vector<std::string> fileNames;
    };
    for (const auto& [name, code, fileNames] : {
             Case{u"abc", u"en", {"abc.json"}},
             Case{u"ABC", u"ja", {"ABC.json", "ABC_ja.json"}},
             Case{u"abc", u"", {"abc.json", "abc_.json"}},
             Case{u"abc", u"EN", {"abc.json", "abc_EN.json"}},
             Case{u"abc", u"en_US", {"abc.json", "abc_en_US.json"}},
             Case{u"sub/é.json", u"zh_CN", {"sub/é.json.json", "sub/é.json_zh_CN.json"}},
             Case{u"", u"en", {".json"}},
         }) {
        std::vector<std::string> expected;
        for (const std::string& fileName : fileNames)
            expected.push_back("Reading file: " + (root.referenceFolder() / fileName).string());
        language = code;
        const testsupport::LogCapture log;
        EXPECT_TRUE(getResourceFile(name).empty());
        EXPECT_EQ(log.messages(), expected);
    }
}

TEST_F(ResourceFileTest, RootsAreTakenFirstAndTheLanguageIsAskedOnceAfterEnglishIsRead) {
    write("abc.json", "f:En a=1");
    write("abc_ja.json", "f:Ja b=2");
    enableSeverities(foundation::log::kSeverityDetail);
    const testsupport::LogCapture log;
    std::vector<std::size_t> recordsWhenAsked;
    environment::setServices(withDocLanguage([&] {
        recordsWhenAsked.push_back(log.records().size());
        setReferenceRoot(u"/nowhere");
        return std::u16string(u"ja");
    }));
    EXPECT_EQ(notationOf(getResourceFile(u"abc")), "f:Ja a=1 b=2");
    EXPECT_EQ(recordsWhenAsked, std::vector<std::size_t>{1});
    EXPECT_EQ(notationOf(getResourceFile(u"abc")), "");
}

TEST_F(ResourceFileTest, AFailingLanguageServicePassesThrough) {
    write("abc.json", "f:En a=1");
    environment::setServices(
        withDocLanguage([]() -> std::u16string { throw testsupport::ServiceFailure(); }));
    EXPECT_THROW(getResourceFile(u"abc"), testsupport::ServiceFailure);
}

} // namespace
} // namespace reference::docparser::DocResourceParser

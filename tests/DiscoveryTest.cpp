#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ProductData.hpp"
#include "support/ScopedRoot.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

namespace fs = std::filesystem;
using fl::i18n::to_string;
using testsupport::ScopedRoot;
using Suffixes = std::vector<std::u16string>;

// "name name_ja* | package": plain files, then packages; a star marks the localized ones.
std::string notationOf(const ProductFiles& files) {
    std::string notation;
    for (const ProductPathData& file : files.first)
        notation += to_string(file.getName()) + (file.isNonEnglishLocale() ? "* " : " ");
    notation += '|';
    for (const ProductPathData& file : files.second)
        notation += ' ' + to_string(file.getName()) + (file.isNonEnglishLocale() ? "*" : "");
    return notation;
}

const Suffixes kSuffixes = {u"_ja", u"_de"};

TEST(GetAllProductsTest, TheNameSaysLanguageAndKind) {
    struct Case {
        std::vector<std::string> fileNames;
        Suffixes suffixes;
        std::u16string language;
        std::string products;
    };
    for (const auto& [fileNames, suffixes, language, products] : {
             Case{{}, kSuffixes, u"_ja", "|"},
             Case{{"a.json", "a_ja.json", "a_de.json"}, kSuffixes, u"_ja", "a a_ja* |"},
             Case{{"a.json", "a_ja.json", "a_de.json"}, {u"_de", u"_ja"}, u"_ja", "a a_ja* |"},
             Case{{"a.json", "a_ja.json", "a_de.json"}, kSuffixes, u"_de", "a a_de* |"},
             Case{{"a.json", "a_ja.json", "a_en.json"}, kSuffixes, u"_en", "a a_en |"},
             Case{{"a.json", "a_ja.json", "a_fr.json"}, kSuffixes, u"_fr", "a a_fr |"},
             Case{{"a_xx.json", "a_JA.json", "a-ja.json", "ja.json", "a_ja.x.json"},
                  kSuffixes,
                  u"_ja",
                  "a-ja a_JA a_ja.x a_xx ja |"},
             Case{{"_ja.json", "_de.json", "a_de_ja.zip"}, kSuffixes, u"_ja", "_ja* | a_de_ja*"},
             Case{{"b.zip", "b_ja.zip", "b_de.zip"}, kSuffixes, u"_ja", "| b b_ja*"},
             Case{{"a.zip", "a.json", "b.zip", "a.tar.zip"}, kSuffixes, u"_ja", "a | a.tar a b"},
             Case{{"d.JSON", "d.Zip", "d.txt", "d", ".json", ".zip", "d.json.bak", "d.zip~"},
                  kSuffixes,
                  u"_ja",
                  "|"},
             // Suffixes that end one another, and suffixes that the library's callers do not use.
             Case{{"a_CN.json", "a_zh_CN.json"}, {u"_CN", u"_zh_CN"}, u"_zh_CN", "a_zh_CN* |"},
             Case{{"a_CN.json", "a_zh_CN.json"}, {u"_zh_CN"}, u"_CN", "a_CN a_zh_CN* |"},
             Case{{"a.json", "a_ja.json"}, {}, u"_ja", "a a_ja |"},
             Case{{"a.json", "a_ja.json", "a_de.zip"}, {u"", u"_de"}, u"_ja", "a_ja* |"},
             Case{{"a.json", "a_ja.json", "a_de.zip"}, kSuffixes, u"", "a a_ja* | a_de*"},
             Case{{"a.json", "a_ja.zip"}, {u""}, u"", "a* | a_ja*"},
         }) {
        const ScopedRoot root;
        for (const std::string& name : fileNames)
            root.writeFile(name, "");
        EXPECT_EQ(notationOf(getAllProducts(root.path(), suffixes, language)), products)
            << testing::PrintToString(fileNames) << " in " << to_string(language);
    }
}

TEST(GetAllProductsTest, FilesComeInTheOrderOfTheirUtf16NamesWithTheirPaths) {
    const ScopedRoot root;
    // In the order of bytes U+FF41 would come before U+1F600.
    const std::vector<std::u8string> ordered = {u8"A.json", u8"a b.json",        u8"a.json",
                                                u8"é.json", u8"\U0001F600.json", u8"\uFF41.json"};
    for (auto name = ordered.rbegin(); name != ordered.rend(); ++name)
        root.writeFile(fs::path(*name), "");
    for (const std::u16string& folder : {root.path(), root.path() + u'/'}) {
        std::vector<std::u16string> paths, expected;
        for (const std::u8string& name : ordered)
            expected.push_back(root.pathOf(fs::path(name)));
        for (const ProductPathData& file : getAllProducts(folder, {}, u"").first)
            paths.push_back(file.getFullPath());
        EXPECT_EQ(paths, expected);
    }
}

TEST(GetAllProductsTest, OnlyFilesWithReadableNamesCount) {
    const ScopedRoot root;
    const fs::path folder = root.nativePathOf("");
    root.writeFile("list/file.json", "");
    root.writeFile("list/not utf-8 \xFF.json", "");
    root.writeFile("list/not utf-8 \xED\xA0\x80.zip", "");
    root.writeFile("list/folder.json/inner.json", "");
    root.makeFolder("list/folder.zip");
    root.makePipe("list/pipe.json");
    root.writeFile("elsewhere.txt", "");
    for (const auto& [target, link] : {std::tuple("../elsewhere.txt", "list/link.json"),
                                       {"file.json", "list/link.zip"},
                                       {"nowhere", "list/dangling.json"},
                                       {"folder.json", "list/to_folder.json"},
                                       {"pipe.json", "list/to_pipe.json"},
                                       {"loop.json", "list/loop.json"}})
        fs::create_symlink(target, folder / link);
    fs::create_directory_symlink("list", folder / "list_link");
    for (const char* name : {"list", "list_link"})
        EXPECT_EQ(notationOf(getAllProducts(root.pathOf(name), kSuffixes, u"_ja")),
                  "file link | link")
            << name;
}

TEST(GetAllProductsTest, AFolderThatCannotBeListedHasNoFiles) {
    using namespace std::string_literals;
    const ScopedRoot root;
    root.writeFile("file.json", "");
    fs::create_symlink("loop", root.nativePathOf("loop"));
    for (const std::u16string& folder :
         {u""s, root.pathOf("missing"), root.pathOf("file.json"), root.pathOf("file.json/x"),
          root.pathOf("loop"), root.path() + u"/\0"s, root.path() + u"/\xD800"s,
          root.path() + u'/' + std::u16string(5000, u'x')})
        EXPECT_EQ(notationOf(getAllProducts(folder, kSuffixes, u"_ja")), "|") << to_string(folder);
}

} // namespace
} // namespace reference::docparser::DocResourceParser

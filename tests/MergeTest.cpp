#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/LookupFixture.hpp"

namespace reference::docparser {
namespace {

using MergeTest = testsupport::LookupFixture;

TEST_F(MergeTest, TheLocalizedDocumentWinsInWhicheverOrderTheyAreFound) {
    struct Case {
        const char *english, *localized, *result;
    };
    // English first and localized first: files, packages, entries of one package.
    const std::pair<const char*, const char*> places[] = {
        {"a.json", "a_ja.json"},
        {"b.json", "a_ja.json"},
        {"z.zip/x.json", "a_ja.json"},
        {"a.json", "z_ja.zip/x_ja.json"},
        {"a.zip/x.json", "b_ja.zip/_ja.json"},
        {"b.zip/x.json", "a_ja.zip/_ja.json"},
        {"a.zip/x.json", "a.zip/x_ja.json"},
    };
    for (const auto& [english, localized, result] : {
             Case{"f:En", "f:Ja", "+f:Ja"},
             Case{"f:En n=1", "f:Ja", "+f:Ja n=1@En"},
             Case{"f:En", "f:Ja n=1", "+f:Ja n=1@Ja"},
             Case{"f:En n=1", "f:Ja n=1", "+f:Ja n=1@Ja"},
             Case{"f:En n=1 o=2", "f:Ja m=3", "+f:Ja m=3@Ja n=1@En o=2@En"},
             // Only a longer English list completes the localized one, with the missing links.
             Case{"f:En n=1,2,3", "f:Ja n=1,2", "+f:Ja n=1@Ja,2@Ja,3@En"},
             Case{"f:En n=1,2,3", "f:Ja n=3", "+f:Ja n=3@Ja,1@En,2@En"},
             Case{"f:En n=3,2,1", "f:Ja n=8,9", "+f:Ja n=8@Ja,9@Ja,3@En,2@En,1@En"},
             Case{"f:En n=1,2", "f:Ja n=3,4", "+f:Ja n=3@Ja,4@Ja"},
             Case{"f:En n=1,2", "f:Ja n=7,8,9", "+f:Ja n=7@Ja,8@Ja,9@Ja"},
             Case{"f:En n=1,1,2,1", "f:Ja n=2", "+f:Ja n=2@Ja,1@En"},
             Case{"f:En n=1,2,4", "f:Ja n=4,4", "+f:Ja n=4@Ja,4@Ja,1@En,2@En"},
             Case{"f:En n=a,A,aa", "f:Ja n=a", "+f:Ja n=a@Ja,A@En,aa@En"},
             Case{"f:En n=1,2 N=3", "f:Ja n=1", "+f:Ja N=3@En n=1@Ja,2@En"},
             // Only the key decides which documents are merged, not their place in a file.
             Case{"f:En n=1", "g:Ja n=2", "+f:En n=1@En | +g:Ja n=2@Ja"},
             Case{"f:En n=1 | p:En n=1,2", "p:Ja n=2", "+f:En n=1@En | +p:Ja n=2@Ja,1@En"},
             Case{"f:En n=1 | p:En m=2 | q:En o=3", "f:Ja | r:Ja n=5 | q:Ja o=4",
                  "+f:Ja n=1@En | +p:En m=2@En | -q:Ja o=4@Ja | -r:Ja n=5@Ja"},
             Case{"x:En n=1 | p:En m=2", "x:Ja | g:Ja", "+g:Ja | +p:En m=2@En | -x:Ja n=1@En"},
         }) {
        for (const auto& [first, second] : places) {
            EXPECT_EQ(collect(Files{{first, english}, {second, localized}}), result)
                << first << ' ' << english << ", " << second << ' ' << localized;
        }
        EXPECT_EQ(collect(Files{{"a.zip/x_ja.json", localized}, {"a.zip/x.json", english}}), result)
            << english << ", " << localized;
    }
}

TEST_F(MergeTest, OfSeveralFilesTheFirstEnglishAndTheLastLocalizedOneWins) {
    for (const auto& [files, result] : {
             std::pair<Files, const char*>{
                 {{"a.json", "f:Plain n=2,3 m=4"}, {"z.zip/x.json", "f:Zip n=1"}},
                 "+f:Zip m=4@Plain n=1@Zip,2@Plain,3@Plain"},
             {{{"a.json", "f:1 n=1"}, {"b.json", "f:2 n=1,2"}, {"c.json", "f:3 n=3,2,4"}},
              "+f:1 n=1@1,2@2,3@3,4@3"},
             {{{"a.json", "f:1 n=1,2"}, {"b.json", "f:2 n=3,4"}, {"c.json", "f:3 n=5,6,7"}},
              "+f:1 n=1@1,2@1,5@3,6@3,7@3"},
             {{{"a_ja.json", "f:1 n=1,2"}, {"b_ja.json", "f:2 n=3 m=4"}},
              "+f:2 m=4@2 n=3@2,1@1,2@1"},
             {{{"z_ja.zip/x_ja.json", "f:Zip n=1"}, {"a_ja.json", "f:Plain n=2"}},
              "+f:Plain n=2@Plain"},
             {{{"b.zip/x.json", "f:2"}, {"a.zip/y.json", "f:1"}, {"a.zip/x.json", "f:0"}}, "+f:1"},
             {{{"b.zip/2_ja.json", "f:2"}, {"b.zip/1_ja.json", "f:1"}, {"b.zip/3.json", "f:0"}},
              "+f:1"},
             // Only the list that replaces another keeps repeated links.
             {{{"a.json", "f:1 n=1,1,2,3"}, {"b_ja.json", "f:2 n=5,5"}},
              "+f:2 n=5@2,5@2,1@1,2@1,3@1"},
             {{{"a.json", "f:1 n=1,1,2,3"},
               {"b_ja.json", "f:2 n=5,5"},
               {"c_ja.json", "f:3 n=1"},
               {"d.json", "f:4 n=6,5,7,6,8"}},
              "+f:3 n=1@3,5@2,2@1,3@1,6@4,7@4,8@4"},
             {{{"b.zip/x.json", "f:1 n=1 n=2"}, {"b.zip/x.json", "f:2 n=3,4,1"}},
              "+f:1 n=1@1,2@1,3@2,4@2"},
             {{{"a.json", "f:1 n=1 | f:2 n=2,3 | p:3 m=1 | p:4 m=2"}}, "+f:1 n=1@1 | +p:3 m=1@3"},
         })
        EXPECT_EQ(collect(files), result) << testing::PrintToString(files);
}

TEST_F(MergeTest, VeryLongListsAndDocumentsCostAsMuchAsTheyHold) {
    constexpr std::size_t kNames = 150'000;
    constexpr std::size_t kCount = 50'000;
    constexpr std::size_t kDocuments = 20'000;
    const std::string link = std::string(80, 'x') + '/';
    const auto add = [&link](std::string& text, std::size_t number, const char* end) {
        text += link + std::to_string(number) + end;
    };
    std::string english = "f:En";
    std::string longer = "f:Longer n=";
    std::string result = "+f:Ja";
    for (std::size_t number = kNames; number < 2 * kNames; ++number) {
        english += " a" + std::to_string(number) + "=1";
        result += " a" + std::to_string(number) + "=1@En";
    }
    english += " n=";
    result += " n=";
    for (std::size_t number = kDocuments; number-- > 0;)
        add(result, number, "@Ja,");
    for (std::size_t number = kCount; number-- > 0;) {
        add(english, number, ",");
        if (number >= kDocuments)
            add(result, number, "@En,");
    }
    for (std::size_t number = kCount / 2; number < 2 * kCount; ++number) {
        add(longer, number, ",");
        if (number >= kCount)
            add(result, number, "@Longer,");
    }
    result.pop_back();
    Files files{{"a.zip/x.json", english}, {"b.json", longer}};
    for (std::size_t number = 0; number < kDocuments; ++number) {
        files.emplace_back("a.zip/" + std::to_string(number) + "_ja.json", "f:Ja n=");
        add(files.back().second, number, "");
        files.emplace_back("a.zip/" + std::to_string(number) + ".json", "f:Short n=1");
    }
    EXPECT_TRUE(collect(files) == result);
}

} // namespace
} // namespace reference::docparser

#include "refdoc/text/TextLayout.hpp"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/object.hpp>
#include <gtest/gtest.h>

#include "refdoc/pages/Description.hpp"
#include "refdoc/pages/Page.hpp"
#include "refdoc/text/Json.hpp"
#include "refdoc/text/NearNames.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

using namespace std::string_literals;

std::string joinLines(std::u16string_view text, const std::vector<TextRange>& lines) {
    std::string joined;
    for (const TextRange line : lines)
        joined.append(joined.empty() ? "" : "|")
            .append(toUtf8(text.substr(line.begin, line.end - line.begin)));
    return joined;
}

std::string broken(std::u16string_view text, std::size_t width) {
    return joinLines(text, LineBreaker().breakLines(text, width, width));
}

TEST(DisplayWidth, CountsTerminalColumns) {
    const struct {
        std::u16string text;
        std::size_t width;
    } cases[] = {
        {u"", 0},
        {u"plain", 5},
        {u"日本語", 6},
        {u"ＡＢ", 4},           // fullwidth letters
        {u"ｱｲ", 2},             // halfwidth katakana
        {u"e\u0301", 1},        // combining acute accent
        {u"か\u3099", 2},       // combining voiced sound mark
        {u"a\u20DDb", 2},       // enclosing circle
        {u"a\u200Bb\u200D", 2}, // zero width space and joiner
        {u"a\x1B", 1},
        {u"한글", 4},
        {u"\u1112\u1161\u11AB", 2}, // one syllable in three conjoining jamo
        {u"\U00020000", 2},         // ideograph beyond the BMP
        {u"😀", 2},
        {u"\u00A0", 1},
    };
    for (const auto& [text, width] : cases)
        EXPECT_EQ(displayWidth(text), width) << toUtf8(text);
}

TEST(LineBreaking, FollowsTheScript) {
    const struct {
        std::u16string text;
        std::size_t width;
        std::string lines;
    } cases[] = {
        {u"", 10, ""},
        {u"   ", 10, ""},
        {u"one two three", 7, "one two|three"},
        {u"one two three", 8, "one two|three"},
        {u"one  two", 4, "one|two"},
        {u"exactly ten", 11, "exactly ten"},
        // Options, paths and compounds stay whole while they fit on a line of their own.
        {u"use --long-option now", 14, "use|--long-option|now"},
        {u"see /usr/share/doc", 16, "see|/usr/share/doc"},
        {u"see /usr/share/doc", 8, "see|/usr/|share/|doc"},
        {u"unbreakablelongword a", 5, "unbreakablelongword|a"},
        {u"a ./b 'c' (d", 4, "a|./b|'c'|(d"},
        {u"x (a ) b", 7, "x (a )|b"},
        // No closing punctuation or small kana at a line's start, no opening bracket at its end.
        {u"日本語。日本語", 6, "日本|語。日|本語"},
        {u"日本「語」です", 6, "日本|「語」|です"},
        {u"ああしょう", 6, "ああ|しょう"},
        {u"日本語text日本", 8, "日本語|text日本"},
        {u"中文，中文", 4, "中|文，|中文"},
        {u"e\u0301e\u0301 e\u0301", 2, "e\u0301e\u0301|e\u0301"s},
    };
    for (const auto& [text, width, lines] : cases)
        EXPECT_EQ(broken(text, width), lines) << toUtf8(text) << " at " << width;
}

TEST(LineBreaking, LosesNothingButBlanksAtLineEnds) {
    const std::u16string text = u"The --all option（すべて）は、/usr/share の 'ファイル' "
                                u"を「表示」します。 mixed\u00A0text, 中文。";
    for (std::size_t width = 2; width < 80; ++width) {
        std::size_t end = 0;
        for (const TextRange line : LineBreaker().breakLines(text, width, width)) {
            EXPECT_EQ(text.substr(end, line.begin - end).find_first_not_of(u' '), text.npos)
                << width;
            end = line.end;
        }
        EXPECT_EQ(end, text.size()) << width;
    }
}

TEST(LineBreaking, BreaksSyntaxBetweenArguments) {
    const struct {
        std::u16string text;
        std::size_t first;
        std::size_t other;
        std::string lines;
    } cases[] = {
        {u"int f(const char *a, void *b);", 24, 18, "int f(const char *a,|void *b);"},
        {u"int f(const char *a, void *b);", 14, 9, "int f(const|char *a,|void *b);"},
        {u"ls [OPTION]... [FILE]...", 15, 12, "ls [OPTION]...|[FILE]..."},
    };
    for (const auto& [text, first, other, lines] : cases)
        EXPECT_EQ(joinLines(text, LineBreaker().breakSyntax(text, first, other)), lines);

    EXPECT_EQ(syntaxHang(u"int f(int a);"), 6u);
    EXPECT_EQ(syntaxHang(u"ls [OPTION]"), 3u);
    EXPECT_EQ(syntaxHang(u"  ls [OPTION]"), 5u);
    EXPECT_EQ(syntaxHang(u"word"), 4u);
    EXPECT_EQ(syntaxHang(u"struct a_very_long_name *another_long_name(int a);"), 4u);
}

TEST(Text, IsMadePrintable) {
    const struct {
        std::u16string text;
        std::string printed;
    } cases[] = {
        {u"a\tb\r\nc\x0B\x0C", "a b  c  "},
        {u"\x1B[31m", "\uFFFD[31m"},
        {u"\x07\x7F\u009B"s + u'\0', "\uFFFD\uFFFD\uFFFD\uFFFD"},
        {u"\u0085\u2028\u2029", "   "},
        {{u'a', 0xD800, u'b', 0xDC00}, "a\uFFFDb\uFFFD"},
        {u"\u061C\u200E\u202E\u2066", "\uFFFD\uFFFD\uFFFD\uFFFD"},
        {u"日本 😀 e\u0301 \u200D", "日本 😀 e\u0301 \u200D"},
    };
    for (const auto& [text, printed] : cases)
        EXPECT_EQ(toUtf8(printable(text)), printed);
    EXPECT_EQ(printableUtf8("two\nlines\x1B\xC3"), "two lines\uFFFD\uFFFD");
    EXPECT_EQ(expandTabs(u"\ta\t日本\tb"), u"        a       日本    b");
}

TEST(Text, SplitsIntoLines) {
    const std::vector<std::u16string_view> expected{u"a", u"", u"b", u"c"};
    EXPECT_EQ(splitLines(u"a\n\nb\r\nc"), expected);
    EXPECT_EQ(splitLines(u"a\r\rb\nc\n"), expected);
    EXPECT_TRUE(splitLines(u"").empty());
}

TEST(Description, FollowsItsConventions) {
    const struct {
        std::u16string description;
        std::string page;
    } cases[] = {
        {u"one paragraph of text\n\nanother", "  one paragraph of\n  text\n\n  another\n"},
        {u"\n\n\na\n\n\n\nb\n\n", "  a\n\n  b\n"},
        {u"- an item that goes on\n- next", "  - an item that\n    goes on\n  - next\n"},
        {u"    never   wrapped, cut or reflowed\n    \tx",
         "      never   wrapped, cut or reflowed\n"
         "          x\n"},
        {u"a\n\n## Title\n\nb", "  a\n\n   Title\n  b\n"},
        {u"a\n## no title", "  a\n  ## no title\n"},
        {u"-no item\n\n-- nor this", "  -no item\n\n  -- nor this\n"},
        {u"a\x1B[0m\n\n    \x1B]0;x\x07", "  a\uFFFD[0m\n\n      \uFFFD]0;x\uFFFD\n"},
    };
    for (const auto& [description, expected] : cases) {
        Page page({20, false});
        addDescription(page, description, 2);
        EXPECT_EQ(page.take(), expected) << toUtf8(description);
    }
}

TEST(Page, HangsTextOnTags) {
    Page page({30, true});
    page.tag({{u"-a", Style::Bold}}, 2, 6);
    page.paragraph(u"begins on the line of its tag", 8);
    page.tag({{u"--long", Style::Underline}}, 2, 6);
    page.paragraph(u"begins below", 8);
    page.tag({{u"-b", Style::Bold}}, 2, 6);
    page.section(u"NEXT");
    EXPECT_EQ(page.take(), "  \x1b[1m-a\x1b[0m    begins on the line of\n"
                           "        its tag\n"
                           "  \x1b[4m--long\x1b[0m\n"
                           "        begins below\n"
                           "  \x1b[1m-b\x1b[0m\n"
                           "\n"
                           "\x1b[1mNEXT\x1b[0m\n");
}

TEST(Page, KeepsStylesAcrossLines) {
    Page page({18, true});
    page.paragraph({{u"one", Style::Bold},
                    {u", ", Style::Plain},
                    {u"two three", Style::Underline},
                    {u", ", Style::Plain},
                    {u"four", Style::Bold}},
                   2);
    EXPECT_EQ(page.take(), "  \x1b[1mone\x1b[0m, \x1b[4mtwo three\x1b[0m,\n"
                           "  \x1b[1mfour\x1b[0m\n");
    page.paragraph({{u"one two three four", Style::Underline}}, 2, 1);
    EXPECT_EQ(page.take(), "  \x1b[4mone two three\x1b[0m\n"
                           "   \x1b[4mfour\x1b[0m\n");
}

TEST(LineBreaking, TakesLinearTime) {
    for (const std::u16string_view unit : {u"%-", u"a-", u"- ", u"日", u"(", u"\u0301"}) {
        std::u16string text;
        while (text.size() < 1'000'000)
            text += unit;
        EXPECT_FALSE(LineBreaker().breakLines(text, 40, 40).empty()) << toUtf8(unit);
    }
}

TEST(Page, StacksMarginsThatDoNotFit) {
    const struct {
        std::size_t width;
        std::string line;
    } cases[] = {
        {20, "name   日本語   name\n"}, {18, "name  日本語  name\n"}, {17, "name\n日本語\n"}};
    for (const auto& [width, line] : cases) {
        Page page({width, false});
        page.marginLine(u"name", u"日本語", u"name");
        EXPECT_EQ(page.take(), line) << width;
    }
}

TEST(NearNames, SuggestsMisspellings) {
    const std::set<std::u16string> known{u"printf", u"fprintf", u"Exit", u"ls", u"cat", u"größe"};
    const struct {
        std::u16string wanted;
        std::vector<std::u16string> names;
    } cases[] = {
        {u"prinft", {u"printf", u"fprintf"}},
        {u"PRINTF", {u"printf", u"fprintf"}},
        {u"exti", {u"Exit"}},
        {u"sl", {u"ls"}},
        {u"dog", {}},
        {u"grösse", {u"größe"}},
        {u"", {}},
    };
    for (const auto& [wanted, names] : cases)
        EXPECT_EQ(nearNames(wanted, known), names) << toUtf8(wanted);
}

TEST(PrettyJson, IndentsAndEscapesControls) {
    const boost::json::object value{{"text", "\x1B\x7F\u009B\u00E9\u202E\n"},
                                    {"none", boost::json::array{}},
                                    {"list", boost::json::array{"a", true}}};
    EXPECT_EQ(prettyJson(value), "{\n"
                                 "  \"text\": \"\\u001b\\u007f\\u009b\u00E9\\u202e\\n\",\n"
                                 "  \"none\": [],\n"
                                 "  \"list\": [\n"
                                 "    \"a\",\n"
                                 "    true\n"
                                 "  ]\n"
                                 "}\n");
}

} // namespace

} // namespace refdoc

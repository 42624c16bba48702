#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "reference/docparser/DocResourceParser.hpp"
#include "support/HostileFixture.hpp"
#include "support/LookupFixture.hpp"
#include "support/ResourceNotation.hpp"
#include "support/ZipFile.hpp"

namespace reference::docparser {
namespace {

using namespace std::string_literals;
using DocResourceParser::getResourceFile;
using testsupport::lookupText;
using testsupport::referenceText;
using testsupport::ZipFile;

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (; count > 0; --count)
        result += text;
    return result;
}

/// The object with one more member behind the others.
std::string withMember(const std::string& object, const std::string& member) {
    return object.substr(0, object.size() - 1) + ',' + member + '}';
}

/// The UTF-16 bytes of an ASCII text, behind a byte order mark.
std::string utf16(const std::string& text, bool isLittleEndian) {
    std::string units = isLittleEndian ? "\xFF\xFE" : "\xFE\xFF";
    for (const char character : text)
        units += isLittleEndian ? std::string{character, '\0'} : std::string{'\0', character};
    return units;
}

/// Compares without printing, because the texts may be very long.
void expectSame(const std::string& actual, const std::string& expected) {
    EXPECT_TRUE(actual == expected) << actual.substr(0, 300);
}

class HostileJsonTest : public testsupport::HostileFixture {
protected:
    struct Expected {
        bool isRead = true;
        std::string product = "Odd";
    };

    /// Puts `change(document)` wherever documents are read. It must be lost everywhere or read
    /// everywhere, and the sound documents must stay the same.
    template <typename Change>
    void check(Change change, const Expected& expected) const {
        root.lookupFile("m.json", change(lookupText("m:Odd n=1")));
        ZipFile()
            .add("a.json", lookupText("l:Zip n=1"))
            .add("m.json", change(lookupText("n:Odd n=1")))
            .add("z.json", lookupText("o:Zip n=1"))
            .write(root.lookupFolder() / "m.zip");
        const auto odd = [&expected](const std::string& key) {
            return expected.isRead ? '-' + key + ':' + expected.product + " n=1@Odd | " : "";
        };
        expectSame(collect(),
                   soundAnd("-l:Zip n=1@Zip | " + odd("m") + odd("n") + "-o:Zip n=1@Zip | "));

        root.referenceFile("odd.json", change(referenceText("f:Odd b=2")));
        root.referenceFile("odd_ja.json", referenceText("f:Ja c=3"));
        root.referenceFile("sound_ja.json", change(referenceText("f:Odd b=2")));
        const bool isRead = expected.isRead;
        EXPECT_EQ(testsupport::notationOf(getResourceFile(u"odd")),
                  isRead ? "f:Ja b=2 c=3" : "f:Ja c=3");
        expectSame(readSoundResource(),
                   isRead ? "f:" + expected.product + " a=1 b=2" : "f:En a=1 b=1");
    }

    void checkMember(const std::string& member, const Expected& expected) const {
        check([&member](const std::string& document) { return withMember(document, member); },
              expected);
    }
};

TEST_F(HostileJsonTest, TextThatIsNotUtf8IsLost) {
    struct Case {
        const char* what;
        std::string text;
        bool isRead = false;
    };
    for (const auto& [what, text, isRead] : {
             Case{"U+10000, U+10FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", true},
             Case{"overlong, 2 bytes", "\xC0\x80"},
             Case{"high surrogate", "\xED\xA0\x80"},
             Case{"beyond U+10FFFF", "\xF4\x90\x80\x80"},
             Case{"stray continuation", "\x80"},
             Case{"2 of 3 bytes", "\xE2\x82"},
             Case{"escaped pair", R"(\ud83d\ude00)", true},
             Case{"escaped high surrogate alone", R"(\ud800)"},
             Case{"NUL", "\0"s},
         }) {
        SCOPED_TRACE(what);
        checkMember("\"x\":\"" + text + '"', {isRead});
        checkMember('"' + text + "\":1", {isRead});
    }
}

TEST_F(HostileJsonTest, OneValueInUtf8IsADocument) {
    struct Case {
        const char* what;
        std::string before;
        std::string behind;
        bool isRead = false;
    };
    for (const auto& [what, before, behind, isRead] : {
             Case{"blanks", " \r\n\t", "\r\n\t ", true},
             Case{"byte-order mark", "\xEF\xBB\xBF", ""},
             Case{"NUL behind", "", "\0"s},
             Case{"another document", "", "{}"},
             Case{"one of a list", "[", "]"},
         }) {
        SCOPED_TRACE(what);
        const auto change = [&before = before, &behind = behind](const std::string& document) {
            return before + document + behind;
        };
        check(change, {isRead});
    }
    for (const bool isLittleEndian : {false, true})
        check([&](const std::string& document) { return utf16(document, isLittleEndian); },
              {false});
}

TEST_F(HostileJsonTest, NumbersAndWordsNeedOnlyBeJson) {
    struct Case {
        std::string value;
        bool isRead = false;
    };
    for (const auto& [value, isRead] : {
             Case{"18446744073709551616", true},
             Case{"0." + repeated("1", 100'000), true},
             Case{"1e999", true},
             Case{"1e99999999999999999999"},
             Case{"NaN"},
             Case{"[1,]"},
         }) {
        SCOPED_TRACE(value.substr(0, 30));
        // No parser reads the first one, nor the second one here, which only items have.
        checkMember("\"x\":" + value, {isRead});
        checkMember("\"deprecated\":" + value, {isRead});
    }
}

TEST_F(HostileJsonTest, DocumentsMayBe32LevelsDeep) {
    const std::string read = R"({"name":)";
    const std::string unread = R"({"y":)";
    struct Case {
        const char* what;
        std::string value; // its own depth is one less than the document's
        bool isRead = false;
    };
    for (const auto& [what, value, isRead] : {
             Case{"lists", repeated("[", 31) + repeated("]", 31), true},
             Case{"objects", repeated(read, 30) + "{}" + repeated("}", 30), true},
             Case{"unread objects", repeated(unread, 30) + "{}" + repeated("}", 30), true},
             Case{"lists, 1 too deep", repeated("[", 32) + repeated("]", 32)},
             Case{"objects, 1 too deep", repeated(read, 31) + "{}" + repeated("}", 31)},
             Case{"unread objects, 1 too deep", repeated(unread, 31) + "{}" + repeated("}", 31)},
             Case{"lists, far too deep", repeated("[", 100'000) + repeated("]", 100'000)},
             Case{"objects, far too deep", repeated(read, 100'000) + "1" + repeated("}", 100'000)},
             Case{"lists that do not end", repeated("[", 1'000'000)},
             Case{"both in turn", repeated("[" + read, 100'000)},
         }) {
        SCOPED_TRACE(what);
        checkMember("\"deprecated\":" + value, {isRead});
    }
}

TEST_F(HostileJsonTest, OfMembersWithOneNameTheLastCounts) {
    checkMember(R"("productName":"Last")", {true, "Last"});
    checkMember(R"("productName":1,"productName":"Last")", {true, "Last"});
    checkMember(R"("productName":"Last","productName":1)", {false});
    checkMember(R"("refItems":1)", {false});
    checkMember(R"("supportPackages":1,"supportPackages":[])", {true});
    checkMember(repeated(R"("x":1,)", 100'000) + R"("x":2)", {true});
    // Names that differ only behind a NUL are different names.
    checkMember(R"("productName\u0000":"Last")", {true});
}

TEST_F(HostileJsonTest, LargeValuesAreReadOrLostWhole) {
    constexpr std::size_t kMany = 1'000'000;
    const auto empties = [](const char* empty) {
        return '[' + repeated(std::string(empty) + ',', kMany - 1) + empty + ']';
    };
    checkMember("\"x\":" + empties("{}"), {true});
    checkMember("\"x\":" + empties("[]"), {true});
    checkMember("\"supportPackages\":" + empties("{}"), {false});
    checkMember("\"refItems\":" + empties("{}"), {false});
    const std::string longKey(kMany, 'k');
    checkMember('"' + longKey + "\":1,\"" + longKey + "2\":2", {true});
    std::string members;
    for (std::size_t member = 0; member < kMany / 10; ++member)
        members += '"' + std::to_string(member) + "\":0,";
    checkMember(members + "\"x\":0", {true});
}

TEST_F(HostileJsonTest, AHugeTextIsReadWhole) {
    constexpr std::size_t kSize = 64 << 20;
    const std::string member = "\"productName\":\"" + std::string(kSize, 'x') + '"';
    root.lookupFile("m.json", withMember(lookupText("m:Odd n=1"), member));
    root.referenceFile("sound_ja.json", withMember(referenceText("f:Odd b=2"), member));
    const std::u16string expected(kSize, u'x');
    const auto lookups = DocResourceParser::getResourceLookupFiles().second;
    EXPECT_TRUE(lookups.at(u"m").header.getProductName() == expected);
    const auto resource = getResourceFile(u"sound");
    EXPECT_TRUE(resource.at(u"f").header.getProductName() == expected);
    EXPECT_EQ(resource.at(u"f").items.size(), 2U);
}

} // namespace
} // namespace reference::docparser

#include "environment/PathAndText.hpp"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace {

using fl::i18n::codecvt_string_to_ustring;

std::u16string decodeLeniently(std::string_view text) {
    return codecvt_string_to_ustring("utf8", true).convert(text.data(), text.size());
}

std::u16string decodeStrictly(std::string_view text) {
    return codecvt_string_to_ustring("utf8", false).convert(text.data(), text.size());
}

struct Decoding {
    std::string utf8;
    std::u16string utf16;
    bool wellFormed;
};

using namespace std::string_literals;

// Malformed rows: one U+FFFD per maximal subpart, after the tables of the Unicode Standard.
const Decoding kDecodings[] = {
    {"", u"", true},
    {"plain", u"plain", true},
    {"a\0b\0"s, u"a\0b\0"s, true},
    {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", u"\u00E9\u20AC\U0001F600", true},
    {"\xEF\xBB\xBFx", u"\uFEFFx", true},
    {"\xF4\x8F\xBF\xBF", u"\U0010FFFF", true},
    {"\x80", u"\uFFFD", false},
    {"\xC0\xAF", u"\uFFFD\uFFFD", false},
    {"\xE0\x9F\x80", u"\uFFFD\uFFFD\uFFFD", false},
    {"\xED\xA0\x80\xED\xB0\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD", false},
    {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", false},
    {"\xF8\x88\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD", false},
    {"\xE2\x82"
     "A",
     u"\uFFFDA", false},
    {"\xF0\x9F\x98"
     "A",
     u"\uFFFDA", false},
    {"a\xF0\x9F", u"a\uFFFD", false},
    {"\xC3", u"\uFFFD", false},
    {"a\xF1\x80\x80\xE1\x80\xC2"
     "b\x80"
     "c\x80\xBF"
     "d",
     u"a\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd", false},
};

// Below, at and above the length up to which text is decoded on the stack.
const std::size_t kPaddings[] = {0, 1, 1000, 1023, 1024, 1025, 70000};

TEST(Utf8Converter, ReplacesMaximalSubpartsOrThrows) {
    for (const Decoding& row : kDecodings) {
        SCOPED_TRACE(testing::PrintToString(row.utf8));
        for (const std::size_t padding : kPaddings)
            for (const auto& convert : {decodeLeniently, fl::i18n::from_utf8})
                EXPECT_EQ(convert(std::string(padding, 'p') + row.utf8),
                          std::u16string(padding, u'p') + row.utf16)
                    << "after " << padding;
        if (row.wellFormed)
            EXPECT_EQ(decodeStrictly(row.utf8), row.utf16);
        else
            EXPECT_THROW(decodeStrictly(row.utf8), std::range_error);
    }
}

TEST(Utf8Converter, RefusesWhatItCannotConvert) {
    EXPECT_THROW(codecvt_string_to_ustring("utf16", true), std::invalid_argument);
    const auto tooLong = std::size_t{std::numeric_limits<std::int32_t>::max()} + 1;
    EXPECT_THROW(codecvt_string_to_ustring("utf8", true).convert("x", tooLong), std::length_error);
    EXPECT_THROW(fl::i18n::from_utf8({"x", tooLong}), std::length_error);
}

TEST(ToString, EncodesPairsWholeAndReplacesLoneSurrogates) {
    const std::pair<std::u16string, std::string> rows[] = {
        {u"", ""},
        {u"a\0\u00E9\u20AC\U0001F600"s, "a\0\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"s},
        {{0xD800}, "\xEF\xBF\xBD"},
        {{0xDC00, u'x'}, "\xEF\xBF\xBDx"},
        {{0xDC00, 0xD800}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
        {{0xD800, 0xD83D, 0xDE00}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
    };
    for (const auto& [utf16, utf8] : rows)
        for (std::size_t padding = 0; padding < 1600; padding += padding < 505 ? 101 : 1)
            ASSERT_EQ(fl::i18n::to_string(std::u16string(padding, u'p') + utf16),
                      std::string(padding, 'p') + utf8)
                << "after " << padding;
}

TEST(NativeForm, ReplacesLoneSurrogatesOnly) {
    using fl::filesystem::detail::make_native_access_form_with_cleanup_i18n;
    using fl::filesystem::detail::make_native_form;
    EXPECT_EQ(make_native_form(u"/a//./b/\U0001F600", true), u"/a//./b/\U0001F600");
    EXPECT_EQ(make_native_form({u'a', 0xD83D, u'/', 0xDE00, 0xD83D}, true),
              u"a\uFFFD/\uFFFD\uFFFD");
    EXPECT_EQ(make_native_access_form_with_cleanup_i18n({u'\u00E9', 0xD83D}),
              "\xC3\xA9\xEF\xBF\xBD");
}

TEST(PathParts, StemAndExtensionOfTheLastComponent) {
    const struct {
        std::u16string path, stem, extension;
    } rows[] = {
        {u"", u"", u""},
        {u"name", u"name", u""},
        {u"name.json", u"name", u"json"},
        {u"a.b.zip", u"a.b", u"zip"},
        {u".json", u".json", u""},
        {u"..json", u".", u"json"},
        {u"name.", u"name", u""},
        {u".", u".", u""},
        {u"..", u"..", u""},
        {u"/d.x/name", u"name", u""},
        {u"/d.x/n.y", u"n", u"y"},
        {u"/d.x/", u"", u""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(fl::filesystem::detail::extract_stem(row.path), row.stem);
        EXPECT_EQ(fl::filesystem::detail::extract_extension(row.path), row.extension);
    }
}

TEST(PathParts, JoiningInsertsOneSeparatorWhereThereIsNone) {
    const struct {
        std::u16string path, name, joined;
    } rows[] = {
        {u"", u"f", u"f"},       {u"/", u"f", u"/f"},  {u"/d", u"f", u"/d/f"},
        {u"/d/", u"f", u"/d/f"}, {u"/d", u"", u"/d/"},
    };
    for (const auto& row : rows) {
        std::u16string path = row.path;
        fl::filesystem::detail::concatenate_pathname(path, row.name, true);
        EXPECT_EQ(path, row.joined);
    }
}

} // namespace

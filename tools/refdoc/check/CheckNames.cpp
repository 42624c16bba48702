#include "refdoc/check/CheckNames.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>

#include <fmt/format.h>
#include <unicode/uloc.h>

#include "environment/PathAndText.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace parsing = reference::docparser::DocResourceParser::ParsingTools;

/// Codes are compared whatever their letter case and whichever of "-" and "_" is in them.
std::string normalizedCode(std::string_view code) {
    std::string normalized = toUtf8(foldCase(fromUtf8(code)));
    std::replace(normalized.begin(), normalized.end(), '-', '_');
    return normalized;
}

bool consistsOfLetters(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return (byte >= 'a' && byte <= 'z'); });
}

/// "xx", "xxx" or either with a region, "xx_xx".
bool looksLikeCode(std::string_view code) {
    const std::size_t end = std::min(code.find('_'), code.size());
    const std::string_view region = code.substr(std::min(end + 1, code.size()));
    return (end == 2 || end == 3) && consistsOfLetters(code.substr(0, end)) &&
           (end == code.size() || (region.size() == 2 && consistsOfLetters(region)));
}

/// Whether there is such a language, or a country, which is often taken for its language.
bool isLanguageOrCountry(const std::string& code) {
    const std::string language = code.substr(0, code.find('_'));
    return *uloc_getISO3Language(language.c_str()) != '\0' ||
           *uloc_getISO3Country(("und_" + language).c_str()) != '\0';
}

struct MeantLanguage {
    std::string message;
    Level level;
};

/// What the end of a stem seems to be meant as: a sign, usually an underscore, and a code.
std::optional<MeantLanguage> meantWith(const std::string& end, bool hasResource) {
    const std::string suffix = end.substr(1);
    const std::string code = normalizedCode(suffix);
    for (const std::u16string& supported : parsing::getSupportedDocLocales())
        if (normalizedCode(toUtf8(supported.substr(1))) == code)
            return MeantLanguage{fmt::format("{} is not the suffix {}", end, toUtf8(supported)),
                                 Level::Warning};
    if (!end.starts_with('_') || !looksLikeCode(code) ||
        !(isLanguageOrCountry(code) || (hasResource && code.size() == 2)))
        return std::nullopt;
    const Level level = hasResource ? Level::Warning : Level::Note;
    if (code == kEnglish)
        return MeantLanguage{"names of English files have no language", level};
    return MeantLanguage{suffix + " is no supported language", level};
}

} // namespace

NameLanguage languageOfStem(const std::string& stem) {
    const std::u16string wide = fromUtf8(stem);
    for (const std::u16string& suffix : parsing::getSupportedDocLocales())
        if (wide.ends_with(suffix))
            return {toUtf8(std::u16string_view(wide).substr(0, wide.size() - suffix.size())),
                    toUtf8(suffix.substr(1))};
    return {stem, std::string(kEnglish)};
}

void checkMeantLanguage(const std::string& stem, const std::set<std::string>& stems,
                        FindingList& findings) {
    constexpr std::size_t mostBytes = 12; // of a code
    constexpr std::string_view signs = "_-.";
    const std::size_t first = std::max<std::size_t>(stem.size(), mostBytes + 1) - mostBytes;
    for (std::size_t at = stem.find_first_of(signs, first); at != stem.npos;
         at = stem.find_first_of(signs, at + 1)) {
        const bool hasResource = stems.contains(stem.substr(0, at));
        if (stem[at] != '_' && !hasResource)
            continue;
        const auto meant = meantWith(stem.substr(at), hasResource);
        if (!meant)
            continue;
        findings.addAt(
            meant->level, Fault::UnknownLanguage, Loss::Nothing,
            fmt::format("{}: read as English, of a resource {}", meant->message, inQuotes(stem)));
        return;
    }
}

bool isResourceNameButForCase(const std::u16string& name) {
    const std::u16string extension = foldCase(fl::filesystem::detail::extract_extension(name));
    return extension == parsing::kJsonExt || extension == parsing::kZipExt;
}

} // namespace refdoc

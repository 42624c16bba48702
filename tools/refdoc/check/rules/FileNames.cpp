#include "refdoc/check/rules/FileNames.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include <fmt/format.h>
#include <unicode/uloc.h>

#include "refdoc/text/Text.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace parsing = reference::docparser::DocResourceParser::ParsingTools;

/// Codes are compared without regard to letter case and to "-" or "_" as the separator.
std::string normalizedCode(std::string_view code) {
    std::string normalized = toUtf8(foldCase(fromUtf8(code)));
    std::replace(normalized.begin(), normalized.end(), '-', '_');
    return normalized;
}

bool consistsOfLetters(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return (byte >= 'a' && byte <= 'z'); });
}

/// Whether the text looks like a language code: "xx" or "xxx", with or without a region as in
/// "xx_xx".
bool looksLikeCode(std::string_view code) {
    const std::size_t end = std::min(code.find('_'), code.size());
    const std::string_view region = code.substr(std::min(end + 1, code.size()));
    return (end == 2 || end == 3) && consistsOfLetters(code.substr(0, end)) &&
           (end == code.size() || (region.size() == 2 && consistsOfLetters(region)));
}

/// Whether the code is that of a language, or of a country, which authors often take for it.
bool isLanguageOrCountry(const std::string& code) {
    const std::string language = code.substr(0, code.find('_'));
    return *uloc_getISO3Language(language.c_str()) != '\0' ||
           *uloc_getISO3Country(("und_" + language).c_str()) != '\0';
}

struct MeantLanguage {
    std::string message;
    Level level;
};

/// The language that the end of a stem seems to mean: a separator, usually an underscore, and a
/// code.
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
        return MeantLanguage{"names of English files have no language suffix", level};
    return MeantLanguage{suffix + " is not a supported language", level};
}

/// The language that a stem which is read as English seems to mean, given the other stems of its
/// folder or package.
void checkMeantLanguage(const std::string& stem, const std::set<std::string>& stems,
                        Violations& violations) {
    constexpr std::size_t mostBytes = 12; // of a code
    constexpr std::string_view signs = "_-.";
    const std::size_t first = std::max<std::size_t>(stem.size(), mostBytes + 1) - mostBytes;
    for (std::size_t at = stem.find_first_of(signs, first); at != stem.npos;
         at = stem.find_first_of(signs, at + 1)) {
        const bool hasResource = stems.contains(stem.substr(0, at));
        if (stem[at] != '_' && !hasResource)
            continue;
        if (const auto meant = meantWith(stem.substr(at), hasResource))
            return violations.add({.fault = Fault::UnknownLanguage,
                                   .message = fmt::format("{}: read as English, as the resource {}",
                                                          meant->message, inQuotes(stem)),
                                   .level = meant->level});
    }
}

constexpr const char* kWrongCase = "the extension is not in lower case";
constexpr const char* kNoResource = "not a resource file: ignored";

/// The name of a package with a single entry gives the language.
void checkOnlyEntry(const CatalogFile& file, const CatalogText& text, Violations& violations) {
    if (text.state == CatalogText::State::OtherLanguage)
        violations.add(
            {.fault = Fault::UnreadName,
             .message = fmt::format("the only entry of a package for {0} must end with _{0} itself",
                                    file.language),
             .loss = Loss::Entry});
    else if (file.language == kEnglish && text.ownLanguage != kEnglish)
        violations.add(
            {.fault = Fault::UnknownLanguage,
             .message = fmt::format("the package's only entry: read as English, not as {}, since "
                                    "the package's name has no language",
                                    text.ownLanguage)});
}

/// In any other package the names of the entries do, if the package itself is read.
void checkOneOfSeveral(const CatalogFile& file, const CatalogText& text,
                       const std::set<std::string>& stems, Violations& violations) {
    if (text.language == kEnglish)
        checkMeantLanguage(text.stem, stems, violations);
    if (text.state == CatalogText::State::OtherLanguage)
        violations.add({.fault = Fault::UnreadName,
                        .message = fmt::format("is for {}, but the package is only read for {}",
                                               text.language, file.language),
                        .loss = Loss::Entry});
    else if (text.language != text.readers)
        violations.add(
            {.fault = Fault::UnknownLanguage,
             .message = fmt::format("read as English, and only by readers of {}: of a package "
                                    "with several entries the entries' names say the language",
                                    file.language)});
}

void checkLanguage(const CatalogFile& file, const CatalogText& text,
                   const std::set<std::string>& stems, Violations& violations) {
    if (text.entry.empty())
        return;
    if (text.isOnlyEntry)
        checkOnlyEntry(file, text, violations);
    else
        checkOneOfSeveral(file, text, stems, violations);
}

Violation unreadable(const CatalogFile& file, const CatalogText& text) {
    const bool isEntry = !text.entry.empty();
    const char* const what = isEntry ? "entry" : file.isPackage ? "package" : "file";
    return {.fault = Fault::Unreadable,
            .message = fmt::format("the {} cannot be read: {}", what, text.cause),
            .loss = isEntry ? Loss::Entry : Loss::File};
}

/// The violation for something in a catalog folder that is not read.
struct OtherEntryRule {
    OtherEntry::Kind kind;
    Fault fault;
    Loss loss;
    std::string_view message; ///< a format of the cause, a count and its plural ending
};

const OtherEntryRule& ruleFor(OtherEntry::Kind kind) {
    using Kind = OtherEntry::Kind;
    static constexpr std::array<OtherEntryRule, 9> rules{{
        {Kind::BrokenLink, Fault::Unreadable, Loss::File, "the file cannot be read: a broken link"},
        {Kind::Unreachable, Fault::Unreadable, Loss::File, "the file cannot be read: {0}"},
        {Kind::Folder, Fault::OtherFile, Loss::Nothing, "a folder: ignored"},
        {Kind::FolderOfResources, Fault::UnreadName, Loss::Folder,
         "folders are not searched, and this one holds {1} resource file{2}"},
        {Kind::NotAFile, Fault::OtherFile, Loss::Nothing, "not a file: ignored"},
        {Kind::NotUtf8, Fault::UnreadName, Loss::File, "the name is not UTF-8"},
        {Kind::PackagedReference, Fault::UnreadName, Loss::File,
         "full reference files are not read from packages"},
        {Kind::LetterCase, Fault::UnreadName, Loss::File, kWrongCase},
        {Kind::OtherFile, Fault::OtherFile, Loss::Nothing, kNoResource},
    }};
    return *std::find_if(rules.begin(), rules.end(),
                         [kind](const OtherEntryRule& rule) { return rule.kind == kind; });
}

std::string metadataMessage(const CatalogText& text) {
    return std::string("metadata of macOS, not documentation") +
           (text.entry.empty() ? "" : ": it still counts as an entry of the package");
}

} // namespace

void checkFileName(const CatalogFile& file, const std::set<std::string>& stems,
                   Violations& violations) {
    if (file.language == kEnglish && !file.stem.starts_with("._"))
        checkMeantLanguage(file.stem, stems, violations);
}

void checkOtherEntry(const OtherEntry& entry, Violations& violations) {
    const OtherEntryRule& rule = ruleFor(entry.kind);
    violations.add(
        {.fault = rule.fault,
         .message = fmt::format(fmt::runtime(rule.message), entry.cause, entry.resourceCount,
                                entry.resourceCount == 1 ? "" : "s"),
         .loss = rule.loss});
}

void checkAccess(const CatalogFile& file, const CatalogText& text,
                 const std::set<std::string>& stems, Violations& violations) {
    using State = CatalogText::State;
    switch (text.state) {
    case State::Read:
    case State::OtherLanguage:
        return checkLanguage(file, text, stems, violations);
    case State::Unreadable:
        checkLanguage(file, text, stems, violations);
        return violations.add(unreadable(file, text));
    case State::NoEntries:
        return violations.add({.fault = Fault::OtherFile,
                               .message = "the package has no entries",
                               .level = Level::Warning});
    case State::MacMetadata:
        return violations.add({.fault = Fault::OtherFile, .message = metadataMessage(text)});
    case State::LetterCase:
        return violations.add(
            {.fault = Fault::UnreadName, .message = kWrongCase, .loss = Loss::Entry});
    case State::OtherFile:
        return violations.add({.fault = Fault::OtherFile, .message = kNoResource});
    }
}

} // namespace refdoc

#include "refdoc/ResourceNames.hpp"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "environment/PathAndText.hpp"
#include "refdoc/Text.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace parsing = reference::docparser::DocResourceParser::ParsingTools;

bool isLower(char character) {
    return character >= 'a' && character <= 'z';
}

bool isLetter(char character) {
    return isLower(character) || (character >= 'A' && character <= 'Z');
}

/// "xx", "xxx" or either with a region, "xx_XX" or "xx-XX".
bool looksLikeLanguage(std::string_view code) {
    const std::size_t end = std::min(code.find_first_of("_-"), code.size());
    const std::string_view region = code.substr(std::min(end + 1, code.size()));
    return (end == 2 || end == 3) &&
           std::all_of(code.begin(), code.begin() + std::ptrdiff_t(end), isLower) &&
           (end == code.size() ||
            (region.size() == 2 && std::all_of(region.begin(), region.end(), isLetter)));
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

std::optional<NameLanguage> unknownLanguage(const std::string& stem) {
    for (std::size_t at = stem.find('_'); at != stem.npos; at = stem.find('_', at + 1))
        if (at > 0 && looksLikeLanguage(std::string_view(stem).substr(at + 1)))
            return NameLanguage{stem.substr(0, at), stem.substr(at + 1)};
    return std::nullopt;
}

bool isResourceNameButForCase(const std::u16string& name) {
    const std::u16string extension = foldCase(fl::filesystem::detail::extract_extension(name));
    return extension == parsing::kJsonExt || extension == parsing::kZipExt;
}

} // namespace refdoc

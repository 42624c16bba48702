#include "reference/docparser/DocResourceParser.hpp"

#include <map>
#include <string>
#include <utility>

#include "environment/PathAndText.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "resources/ReferenceResource.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

std::u16string makePath(const std::u16string& folder, const std::u16string& fileName) {
    std::u16string path;
    if (!folder.empty())
        path = fl::filesystem::detail::make_native_form(folder, true);
    fl::filesystem::detail::concatenate_pathname(path, fileName, true);
    return path;
}

// A file that cannot be read or parsed counts as empty.
ParsedResource<RefItem> readResource(const std::u16string& path) {
    try {
        return parseReferenceResource<RefItem>(openAndReadFile(path));
    } catch (...) {
        return {};
    }
}

// The localized header and, per href, the localized items win; what only English has stays.
void overlayDocument(DocResource<RefItem>& english, DocResource<RefItem>& localized) {
    localized.items.merge(english.items);
    english.header = std::move(localized.header);
    english.items = std::move(localized.items);
}

void overlayResource(ParsedResource<RefItem>& english, ParsedResource<RefItem>& localized) {
    while (!localized.empty()) {
        auto moved = english.insert(localized.extract(localized.begin()));
        if (!moved.inserted)
            overlayDocument(moved.position->second, moved.node.mapped());
    }
}

} // namespace

std::map<std::u16string, DocResource<RefItem>> getResourceFile(const std::u16string& name) {
    const auto roots = getReferenceRoots();
    const std::u16string& folder = roots->referenceApiFolder;
    auto english = readResource(makePath(folder, name + ParsingTools::kDotJsonExt));

    const std::u16string locale = ParsingTools::getCurrentLocale();
    if (locale == ParsingTools::kEnglishLocale)
        return english;
    auto localized = readResource(makePath(folder, name + ParsingTools::kLocaleSeparator + locale +
                                                       ParsingTools::kDotJsonExt));
    if (english.empty())
        return localized;
    overlayResource(english, localized);
    return english;
}

} // namespace reference::docparser::DocResourceParser

#include "reference/docparser/DocResourceParser.hpp"

#include <map>
#include <string>
#include <utility>

#include "environment/PathAndText.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "resources/DocResourceMerge.hpp"
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
ParsedResource<RefItem> readDocumentsOrNone(const std::u16string& path) {
    try {
        return parseReferenceResource<RefItem>(openAndReadFile(path));
    } catch (...) {
        return {};
    }
}

} // namespace

std::map<std::u16string, DocResource<RefItem>> getResourceFile(const std::u16string& name) {
    const auto roots = getReferenceRoots();
    const std::u16string& folder = roots->referenceApiFolder;
    auto english = readDocumentsOrNone(makePath(folder, name + ParsingTools::kDotJsonExt));

    const std::u16string locale = ParsingTools::getCurrentLocale();
    if (locale == ParsingTools::kEnglishLocale)
        return english;
    auto localized = readDocumentsOrNone(makePath(folder, name + ParsingTools::kLocaleSeparator +
                                                              locale + ParsingTools::kDotJsonExt));
    if (english.empty())
        return localized;
    overlayLocalized(english, localized);
    return english;
}

} // namespace reference::docparser::DocResourceParser

#include "refdoc/catalog/LookupFolder.hpp"

#include <algorithm>
#include <exception>
#include <utility>

#include "environment/PathAndText.hpp"
#include "refdoc/catalog/OpenedPackage.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
namespace parsing = DocResourceParser::ParsingTools;

/// English unless the stem ends with the suffix of another supported language.
LookupFile fileOf(const ProductPathData& record, const std::vector<std::u16string>& suffixes,
                  bool isPackage) {
    LookupFile file{record.getFullPath(), record.getName(), record.getName(),
                    parsing::kEnglishLocale, isPackage};
    for (const std::u16string& suffix : suffixes) {
        if (!file.stem.ends_with(suffix))
            continue;
        file.resource.resize(file.stem.size() - suffix.size());
        file.language = suffix.substr(1);
        break;
    }
    return file;
}

/// The stems of the leaves that a package has; none when it cannot be read.
std::vector<std::u16string> leafStems(const std::u16string& path) {
    std::vector<std::u16string> stems;
    try {
        OpenedPackage package(path);
        for (const opc::zqservices::FileSystemEntry& leaf : package.manager.getAllLeafs())
            stems.push_back(fl::filesystem::detail::extract_stem(leaf.getBaseName()));
    } catch (const std::exception&) {
        return {};
    }
    return stems;
}

} // namespace

std::u16string LookupFile::fileName() const {
    return path.substr(path.rfind(u'/') + 1);
}

std::vector<LookupFile> findLookupFiles() {
    const auto roots = DocResourceParser::getReferenceRoots();
    const std::vector<std::u16string> suffixes = parsing::getSupportedDocLocales();
    const ProductFiles found = // of no language, so that all are listed at once
        DocResourceParser::getAllProducts(roots->referenceApiLookupFolder, {}, {});
    std::vector<LookupFile> files;
    for (const ProductPathData& record : found.second)
        files.push_back(fileOf(record, suffixes, true));
    for (const ProductPathData& record : found.first)
        files.push_back(fileOf(record, suffixes, false));
    std::sort(files.begin(), files.end(), [](const LookupFile& left, const LookupFile& right) {
        return left.path < right.path;
    });
    return files;
}

std::vector<std::u16string> possibleLanguages(const std::vector<LookupFile>& files) {
    std::vector<std::u16string> stems;
    for (const LookupFile& file : files)
        if (file.isPackage && file.language == parsing::kEnglishLocale)
            for (std::u16string& stem : leafStems(file.path))
                stems.push_back(std::move(stem));
    std::vector<std::u16string> languages;
    for (const std::u16string& suffix : parsing::getSupportedDocLocales()) {
        const std::u16string language = suffix.substr(1);
        const bool inName = std::any_of(files.begin(), files.end(), [&](const LookupFile& file) {
            return file.language == language;
        });
        const bool inPackage =
            std::any_of(stems.begin(), stems.end(),
                        [&suffix](const std::u16string& stem) { return stem.ends_with(suffix); });
        if (inName || inPackage)
            languages.push_back(language);
    }
    return languages;
}

} // namespace refdoc

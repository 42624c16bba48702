#include "refdoc/LookupFolder.hpp"

#include <algorithm>
#include <exception>
#include <iterator>
#include <map>
#include <utility>

#include "environment/PathAndText.hpp"
#include "refdoc/OpenedPackage.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
namespace parsing = DocResourceParser::ParsingTools;

using FilesByPath = std::map<std::u16string, LookupFile>;

void addFiles(const std::vector<ProductPathData>& records, const std::u16string& suffix,
              bool isPackage, FilesByPath& files) {
    for (const ProductPathData& record : records) {
        LookupFile file{record.getFullPath(), record.getName(), parsing::kEnglishLocale, isPackage};
        if (record.isNonEnglishLocale()) {
            file.resource.resize(file.resource.size() - suffix.size());
            file.language = suffix.substr(1);
        }
        files.insert_or_assign(file.path, std::move(file));
    }
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
    FilesByPath files;
    for (const std::u16string& suffix : suffixes) {
        const ProductFiles found =
            DocResourceParser::getAllProducts(roots->referenceApiLookupFolder, suffixes, suffix);
        addFiles(found.first, suffix, false, files);
        addFiles(found.second, suffix, true, files);
    }
    std::vector<LookupFile> result;
    for (auto& [path, file] : files)
        result.push_back(std::move(file));
    return result;
}

std::vector<std::u16string> possibleLanguages(const std::vector<LookupFile>& files) {
    std::vector<std::u16string> stems;
    for (const LookupFile& file : files)
        if (file.isPackage && file.language == parsing::kEnglishLocale)
            std::ranges::move(leafStems(file.path), std::back_inserter(stems));
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

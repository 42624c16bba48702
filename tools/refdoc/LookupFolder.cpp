#include "refdoc/LookupFolder.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <string_view>
#include <utility>

#include "refdoc/Text.hpp"
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

bool contains(const std::string& bytes, const std::string& part) {
    const std::boyer_moore_horspool_searcher searcher(part.begin(), part.end());
    return std::search(bytes.begin(), bytes.end(), searcher) != bytes.end();
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
    std::string packages;
    for (const LookupFile& file : files)
        if (file.isPackage && file.language == parsing::kEnglishLocale)
            packages += DocResourceParser::openAndReadFile(file.path);
    std::vector<std::u16string> languages;
    for (const std::u16string& suffix : parsing::getSupportedDocLocales()) {
        const std::u16string language = suffix.substr(1);
        const bool inName = std::any_of(files.begin(), files.end(), [&](const LookupFile& file) {
            return file.language == language;
        });
        if (inName || contains(packages, toUtf8(suffix) + '.'))
            languages.push_back(language);
    }
    return languages;
}

} // namespace refdoc

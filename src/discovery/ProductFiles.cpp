#include "reference/docparser/DocResourceParser.hpp"

#include <string>
#include <utility>
#include <vector>

#include "discovery/FileNameRules.hpp"
#include "environment/PathAndText.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

namespace paths = fl::filesystem::detail;

paths::upath_directory_iterator_impl openFolder(const std::u16string& folder) {
    const auto everyName = paths::generate_pattern_from_filename(
        u"*", fl::filesystem::korvel_pattern_string_generator());
    return {paths::make_native_form(folder, true), everyName, true,
            paths::initialization_mode::first_entry, false};
}

void addFile(const fl::filesystem::upath_directory_entry& entry,
             const std::vector<std::u16string>& localeSuffixes,
             const std::u16string& languageSuffix, ProductFiles& files) {
    const fl::filesystem::upath path(paths::make_native_form(entry.filename(), true));
    if (!isValidFilename(path))
        return;
    std::u16string stem = paths::extract_stem(path.ustring());
    const FileLanguage language = getFileLanguage(stem, localeSuffixes, languageSuffix);
    if (language == FileLanguage::Other)
        return;
    const bool isZip = paths::extract_extension(path.ustring()) == ParsingTools::kZipExt;
    (isZip ? files.second : files.first)
        .emplace_back(std::move(stem), language == FileLanguage::Current, entry.full_pathname());
}

} // namespace

ProductFiles getAllProducts(const std::u16string& folder,
                            const std::vector<std::u16string>& localeSuffixes,
                            const std::u16string& languageSuffix) {
    ProductFiles files;
    if (folder.empty())
        return files;
    try {
        for (auto entries = openFolder(folder); entries.is_open(); entries.increment())
            addFile(entries.entry(), localeSuffixes, languageSuffix, files);
    } catch (...) {
        // The files that were found before the failure count.
    }
    return files;
}

} // namespace reference::docparser::DocResourceParser

#include "discovery/FileNameRules.hpp"

#include <algorithm>

#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace reference::docparser {

FileLanguage getFileLanguage(const std::u16string& stem,
                             const std::vector<std::u16string>& localeSuffixes,
                             const std::u16string& languageSuffix) {
    const auto endsStem = [&stem](const std::u16string& suffix) { return stem.ends_with(suffix); };
    if (std::none_of(localeSuffixes.begin(), localeSuffixes.end(), endsStem))
        return FileLanguage::Base;
    return endsStem(languageSuffix) ? FileLanguage::Current : FileLanguage::Other;
}

namespace DocResourceParser {

bool isValidFilename(const fl::filesystem::upath& path) {
    const std::u16string extension = fl::filesystem::detail::extract_extension(path.ustring());
    return extension == ParsingTools::kZipExt || extension == ParsingTools::kJsonExt;
}

} // namespace DocResourceParser
} // namespace reference::docparser

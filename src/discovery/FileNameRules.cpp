#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace reference::docparser::DocResourceParser {

bool isValidFilename(const fl::filesystem::upath& path) {
    const std::u16string extension = fl::filesystem::detail::extract_extension(path.ustring());
    return extension == ParsingTools::kZipExt || extension == ParsingTools::kJsonExt;
}

} // namespace reference::docparser::DocResourceParser

#include "refdoc/catalog/ResourceFiles.hpp"

#include <filesystem>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace parser = reference::docparser::DocResourceParser;
namespace parsing = parser::ParsingTools;

} // namespace

bool isResourceName(std::u16string_view name) {
    using namespace std::string_view_literals;
    return !name.empty() && name != u"." && name != u".." &&
           name.find_first_of(u"/\\\0"sv) == name.npos;
}

Lines triedFiles(const std::u16string& resource, std::string_view outcome) {
    const std::u16string stem = parser::getReferenceRoots()->referenceApiFolder + u'/' + resource;
    std::vector<std::u16string> paths{stem + parsing::kDotJsonExt};
    if (const std::u16string language = parsing::getCurrentLocale();
        language != parsing::kEnglishLocale)
        paths.push_back(stem + parsing::kLocaleSeparator + language + parsing::kDotJsonExt);
    Lines lines;
    for (const std::u16string& path : paths) {
        std::error_code ignored;
        const bool exists = std::filesystem::exists(toUtf8(path), ignored);
        lines.push_back(
            fmt::format("tried {}: {}", toUtf8(path), exists ? outcome : "no such file"));
    }
    return lines;
}

} // namespace refdoc

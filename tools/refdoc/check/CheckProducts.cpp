#include "refdoc/check/CheckProducts.hpp"

#include <stdexcept>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "refdoc/check/CheckFiles.hpp"
#include "refdoc/check/CheckJson.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/ResourceText.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;

/// Nothing for a list that can be had.
std::string productsFailure() {
    try {
        DocResourceParser::getTopLevelProducts();
        return {};
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
}

} // namespace

std::vector<Finding> checkProducts() {
    std::string failure = productsFailure();
    if (failure.empty())
        return {};
    const std::string name = "installedProducts.json";
    const std::u16string path =
        DocResourceParser::getReferenceRoots()->referenceRoot + u'/' + fromUtf8(name);
    const CatalogFile file{Catalog::Lookup, path, name, {}, {}, std::string(kEnglish), false};
    const ResourceText text{
        file, {}, 0, file.language, file.language, DocResourceParser::openAndReadFile(path)};
    FindingList findings(name, {});
    const std::string cause = text.content.empty() ? readFailure(path) : std::string();
    if (!cause.empty()) {
        findings.add(Fault::Unreadable, Loss::File,
                     fmt::format("the file cannot be read: {}", cause));
    } else if (parseText(text, findings)) {
        const std::string place = toUtf8(path) + ": ";
        if (failure.starts_with(place))
            failure.erase(0, place.size());
        findings.add(Fault::WrongKind, Loss::File, std::move(failure));
    }
    for (Finding& finding : findings.kept())
        finding.loss = Loss::Lookups;
    return findings.take();
}

} // namespace refdoc

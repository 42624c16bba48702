#include "refdoc/check/rules/InstalledProducts.hpp"

#include <stdexcept>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "refdoc/catalog/TextReader.hpp"
#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/check/rules/JsonSyntax.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

namespace parser = reference::docparser::DocResourceParser;

constexpr const char* kFileName = "installedProducts.json";

/// Why the list cannot be read; empty if it can.
std::string productsFailure() {
    try {
        parser::getTopLevelProducts();
        return {};
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
}

/// The message without the path that it begins with.
std::string withoutPath(std::string failure, const std::u16string& path) {
    const std::string place = toUtf8(path) + ": ";
    if (failure.starts_with(place))
        failure.erase(0, place.size());
    return failure;
}

} // namespace

std::vector<Finding> checkInstalledProducts() {
    const std::string failure = productsFailure();
    if (failure.empty())
        return {};
    const std::u16string path =
        parser::getReferenceRoots()->referenceRoot + u'/' + fromUtf8(kFileName);
    const std::string content = parser::openAndReadFile(path);
    const std::string cause = content.empty() ? readFailure(path) : std::string();
    Violations violations(kFileName, Loss::Lookups);
    if (!cause.empty())
        violations.add({.fault = Fault::Unreadable,
                        .message = fmt::format("the file cannot be read: {}", cause),
                        .loss = violations.wholeText()});
    else if (parseText(content, lookupFormat(), violations))
        violations.add({.fault = Fault::WrongKind,
                        .message = withoutPath(failure, path),
                        .loss = violations.wholeText()});
    return violations.findings({content, nullptr});
}

} // namespace refdoc

#include "refdoc/check/RootCheck.hpp"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>

#include "refdoc/check/index/ParsedText.hpp"
#include "refdoc/check/rules/DeadLinks.hpp"
#include "refdoc/check/rules/DocumentFormat.hpp"
#include "refdoc/check/rules/EnglishCounterparts.hpp"
#include "refdoc/check/rules/FileNames.hpp"
#include "refdoc/check/rules/InstalledProducts.hpp"
#include "refdoc/check/rules/JsonSyntax.hpp"
#include "refdoc/check/rules/LostLookups.hpp"
#include "refdoc/format/Format.hpp"

namespace refdoc {

namespace {

const Format& formatOf(const CatalogFile& file) {
    return file.catalog == Catalog::Lookup ? lookupFormat() : referenceFormat();
}

std::vector<Finding> listingFailure(const CatalogFolder& folder) {
    Violations violations(folder.name);
    if (folder.failure)
        violations.add({.fault = Fault::Unreadable,
                        .message = "the folder cannot be listed: " + folder.failure.message(),
                        .loss = Loss::Folder});
    return violations.findings();
}

} // namespace

RootCheck::RootCheck() {
    for (const Catalog catalog : {Catalog::Lookup, Catalog::Reference}) {
        CatalogFolder folder = listCatalog(catalog);
        checkNames(folder);
        std::move(folder.files.begin(), folder.files.end(), std::back_inserter(files_));
    }
    // The library reads packages first, which decides between documents of the same key.
    std::stable_partition(files_.begin(), files_.end(),
                          [](const CatalogFile& file) { return file.isPackage; });
}

void RootCheck::checkNames(const CatalogFolder& folder) {
    findings_.add(listingFailure(folder));
    for (const OtherEntry& entry : folder.others) {
        Violations violations(entry.name);
        checkOtherEntry(entry, violations);
        findings_.add(violations.findings());
    }
    std::set<std::string> stems;
    for (const CatalogFile& file : folder.files)
        stems.insert(file.stem);
    for (const CatalogFile& file : folder.files) {
        Violations violations(file.name);
        checkFileName(file, stems, violations);
        findings_.add(violations.findings());
    }
}

void RootCheck::step() {
    const std::size_t number = done_++;
    if (number < files_.size())
        checkAlone(files_[number]);
    else
        checkBesideOthers(files_[number - files_.size()]);
    if (done_ == files_.size()) {
        index_.finish();
        fates_.emplace(index_.lookups());
    }
}

void RootCheck::checkAlone(const CatalogFile& file) {
    index_.addFile(file);
    bool isParsed = false;
    TextReader reader(file);
    while (const std::optional<CatalogText> text = reader.next()) {
        Violations violations(file.name, text->entry);
        checkAccess(file, *text, reader.entryStems(), violations);
        if (text->state == CatalogText::State::Read)
            isParsed = checkText(file, *text, violations);
        else
            findings_.add(violations.findings());
    }
    if (file.catalog == Catalog::Reference && file.language == kEnglish && !isParsed)
        index_.addUnreadable(file);
}

/// Returns whether the text is JSON.
bool RootCheck::checkText(const CatalogFile& file, const CatalogText& text,
                          Violations& violations) {
    const std::optional<JsonTree> tree = parseText(text.content, formatOf(file), violations);
    const TextAndTree both{text.content, tree ? &tree->value : nullptr};
    if (tree) {
        checkFormat(both, formatOf(file), violations);
        if (file.catalog == Catalog::Reference)
            index_.addPages(file, tree->value);
        if (!violations.losesText())
            index_.addSoundText({file, text, tree->value});
    }
    findings_.add(violations.findings(both));
    return tree.has_value();
}

void RootCheck::checkBesideOthers(const CatalogFile& file) {
    TextReader reader(file);
    while (const std::optional<CatalogText> text = reader.next())
        if (text->state == CatalogText::State::Read)
            checkTextBesideOthers(file, *text);
}

void RootCheck::checkTextBesideOthers(const CatalogFile& file, const CatalogText& text) {
    Violations violations(file.name, text.entry);
    Violations reportedAlready(file.name, text.entry);
    const std::optional<JsonTree> tree = parseText(text.content, formatOf(file), reportedAlready);
    if (!tree || !isReadable(tree->value, formatOf(file)))
        return;
    const ParsedText parsed{file, text, tree->value};
    if (file.catalog == Catalog::Lookup)
        checkLookups(parsed, index_, *fates_, violations);
    checkCounterparts(parsed, index_, violations);
    checkLinks(parsed, index_, violations);
    findings_.add(violations.findings({text.content, &tree->value}));
}

CheckResult RootCheck::finish() {
    CheckResult result{files_.size(), findings_.take()};
    const std::vector<Finding> products = checkInstalledProducts();
    result.findings.insert(result.findings.end(), products.begin(), products.end());
    return result;
}

} // namespace refdoc

#include "refdoc/check/rules/DeadLinks.hpp"

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <system_error>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/check/index/LinkPaths.hpp"
#include "refdoc/format/ResourceDocuments.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
namespace fs = std::filesystem;

/// The files of the root that links may lead to. Answers are cached: dead links repeat, and asking
/// the system is slow.
class LinkedFiles {
public:
    /// Whether the file exists, relative to the root or to `folder` in it.
    bool contains(const std::string& folder, const std::string& page) {
        constexpr std::size_t mostKnown = 10000;
        if (folder != folder_)
            known_.clear();
        folder_ = folder;
        const auto known = known_.find(page);
        if (known != known_.end())
            return known->second;
        const bool found = isFile({}, page) || isFile(folder, page);
        if (known_.size() < mostKnown)
            known_.emplace(page, found);
        return found;
    }

private:
    /// Files outside the root do not count, nor do paths that no file can have.
    bool isFile(const std::string& folder, const std::string& page) const {
        if (!mayBePath(folder) || !mayBePath(page))
            return false;
        const std::string path = (fs::path(folder) / page).lexically_normal().generic_string();
        const bool leavesRoot = path == ".." || path.starts_with("../") || path.starts_with('/');
        std::error_code ignored;
        return !leavesRoot && fs::is_regular_file(root_ / path, ignored);
    }

    fs::path root_{
        toUtf8(reference::docparser::DocResourceParser::getReferenceRoots()->referenceRoot)};
    std::string folder_;
    RootIndex::TextMap<bool> known_; ///< by page, from this folder
};

class LinkCheck {
public:
    LinkCheck(const ParsedText& parsed, const RootIndex& index, Violations& violations)
        : isLookup_(parsed.file.catalog == Catalog::Lookup), resource_(parsed.file.resource),
          index_(index), violations_(violations) {}

    void check(const ResourceDocument& document) {
        if (isLookup_)
            resource_ = textMember(*document.value, "helpFolder");
        help_ = normalisedPath(textMember(*document.value, "helpLocation"));
        for (std::size_t i = 0; i < itemsOf(document).size(); ++i)
            checkItem(itemsOf(document)[i], itemPointer(document, i));
    }

    void addUnknownLinks() {
        for (const auto& [resource, count] : unknownLinks_)
            violations_.add(
                {.fault = Fault::DeadLink,
                 .message = fmt::format("links that cannot be checked, because the full reference "
                                        "file {}.json cannot be read: {}",
                                        shortened(resource), count),
                 .pointer = "",
                 .level = Level::Note});
    }

private:
    void checkItem(const json::value& item, const std::string& pointer) {
        if (isLookup_)
            return checkLink(item, "href", pointer);
        for (const std::string_view list : {"seealso", "examples"})
            if (const json::value* links = item.as_object().if_contains(list))
                checkList(links->as_array(), fmt::format("{}/{}", pointer, list));
    }

    void checkList(const json::array& links, const std::string& pointer) {
        for (std::size_t i = 0; i < links.size(); ++i)
            checkLink(links[i], "url", fmt::format("{}/{}", pointer, i));
    }

    void checkLink(const json::value& holder, std::string_view member, const std::string& pointer) {
        const std::string link = textMember(holder, member);
        const std::string page = pageOf(link);
        if (page.empty() || isDocumented(page) || files_.contains(help_, page) ||
            countsAsUnknown(page))
            return;
        const std::string why =
            index_.hasPage(page)
                ? fmt::format("the page of the {} {} is documented, but {}, and readers look for "
                              "it in the full reference file that the help folder names",
                              member, inQuotes(link), whyElsewhere())
                : fmt::format("the {} {} leads nowhere: no full reference file documents the "
                              "page, and there is no such file",
                              member, inQuotes(link));
        violations_.add({.fault = Fault::DeadLink,
                         .message = why,
                         .pointer = fmt::format("{}/{}", pointer, member)});
    }

    /// Counts links into files whose pages are unknown.
    bool countsAsUnknown(const std::string& page) {
        const std::string pageResource = page.substr(0, page.find('/'));
        const bool isUnreadable = index_.isUnreadable(resource_);
        if (!isUnreadable && !index_.isUnreadable(pageResource))
            return false;
        ++unknownLinks_[isUnreadable ? resource_ : pageResource];
        return true;
    }

    std::string whyElsewhere() const {
        if (resource_.empty())
            return "helpFolder is empty";
        return index_.hasReferenceFile(resource_)
                   ? fmt::format("not in {}.json", shortened(resource_))
                   : fmt::format("there is no {}.json", shortened(resource_));
    }

    /// Links of lookups lead to the full reference file that their document's help folder names,
    /// other links to any reference file.
    bool isDocumented(const std::string& page) const {
        return isLookup_ ? index_.hasPage(resource_, page) : index_.hasPage(page);
    }

    bool isLookup_;
    std::string resource_; ///< where readers look for pages of the current document
    std::string help_;     ///< its help location
    const RootIndex& index_;
    Violations& violations_;
    LinkedFiles files_;
    std::map<std::string, std::size_t> unknownLinks_; ///< by resource
};

} // namespace

void checkLinks(const ParsedText& parsed, const RootIndex& index, Violations& violations) {
    LinkCheck check(parsed, index, violations);
    for (const ResourceDocument& document : documentsOf(parsed.tree))
        check.check(document);
    check.addUnknownLinks();
}

} // namespace refdoc

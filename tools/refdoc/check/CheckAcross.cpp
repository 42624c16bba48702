#include "refdoc/check/CheckAcross.hpp"

#include <array>
#include <climits>
#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/check/CheckLinks.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/ResourceDocument.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
namespace fs = std::filesystem;

class AcrossCheck {
public:
    AcrossCheck(const ResourceText& text, const CheckIndex& index, FindingList& findings)
        : text_(text), index_(index), findings_(findings),
          root_(
              toUtf8(reference::docparser::DocResourceParser::getReferenceRoots()->referenceRoot)),
          isLookup_(text.file.catalog == Catalog::Lookup) {}

    void check(const std::vector<ResourceDocument>& documents) {
        const bool lacksEnglish = text_.language != kEnglish && !checkEnglishFile();
        for (const ResourceDocument& document : documents) {
            if (text_.language != kEnglish && !lacksEnglish)
                isLookup_ ? checkEnglishNames(document) : checkEnglishItems(document);
            checkLinks(document);
        }
        for (const auto& [resource, count] : unknownLinks_)
            findings_.addAt(Level::Note, Fault::DeadLink, Loss::Nothing,
                            fmt::format("links that cannot be looked for, since the full "
                                        "reference file {}.json cannot be read: {}",
                                        shortened(resource), count));
    }

private:
    /// Whether the text can be compared with English at all. Lookup documents belong together by
    /// their keys, whatever their files are called.
    bool checkEnglishFile() {
        if (isLookup_)
            return true;
        if (!index_.hasReferenceFile(text_.file.resource)) {
            findings_.add(Fault::NoEnglish, Loss::Nothing,
                          fmt::format("there is no English file {}.json: readers of other "
                                      "languages get nothing",
                                      text_.file.resource));
            return false;
        }
        return index_.hasEnglish(text_);
    }

    void checkEnglishNames(const ResourceDocument& document) {
        const CheckIndex::LookupHolders* english = index_.holdersOf(kEnglishForAll, document.key);
        if (english == nullptr)
            return addNoEnglishDocument(document);
        const json::array& items = document.value->at("refItems").as_array();
        for (std::size_t i = 0; i < items.size(); ++i) {
            const std::string name(items[i].at("name").as_string());
            if (!english->names.contains(name))
                addNoEnglishItem("name", name, document, i);
        }
    }

    /// The items of an href replace all English ones of it.
    void checkEnglishItems(const ResourceDocument& document) {
        const CheckIndex::HrefCounts* english = index_.englishItems(text_, document.key);
        if (english == nullptr)
            return addNoEnglishDocument(document);
        const json::array& items = document.value->at("refItems").as_array();
        CheckIndex::HrefCounts localized;
        for (const json::value& item : items)
            ++localized[std::string(item.at("href").as_string())];
        for (std::size_t i = 0; i < items.size(); ++i) {
            const std::string href(items[i].at("href").as_string());
            const auto counterpart = english->find(href);
            const std::size_t count = std::exchange(localized[href], 0); // once for each href
            if (counterpart == english->end())
                addNoEnglishItem("href", href, document, i);
            else if (count > 0 && count < counterpart->second)
                findings_.add(Fault::ReplacedItem, Loss::Nothing,
                              fmt::format("English has {} items of this href: readers of {} only "
                                          "get what is here, {} of them",
                                          counterpart->second, text_.language, count),
                              fmt::format("{}/refItems/{}", document.pointer, i));
        }
    }

    void addNoEnglishDocument(const ResourceDocument& document) {
        findings_.add(
            Fault::NoEnglish, Loss::Nothing,
            fmt::format("there is no sound English document {}: readers of other languages get "
                        "nothing",
                        inQuotes(document.key)),
            document.pointer);
    }

    void addNoEnglishItem(std::string_view member, const std::string& text,
                          const ResourceDocument& document, std::size_t item) {
        findings_.add(
            Fault::NoEnglish, Loss::Nothing,
            fmt::format("the {} {} is not in the English document", member, inQuotes(text)),
            fmt::format("{}/refItems/{}/{}", document.pointer, item, member));
    }

    void checkLinks(const ResourceDocument& document) {
        const json::array& items = document.value->at("refItems").as_array();
        resource_ = isLookup_ ? textMember(*document.value, "helpFolder") : text_.file.resource;
        const std::string help = normalisedPath(textMember(*document.value, "helpLocation"));
        knownFiles_.clear();
        for (std::size_t i = 0; i < items.size(); ++i) {
            const json::object& item = items[i].as_object();
            const std::string pointer = fmt::format("{}/refItems/{}", document.pointer, i);
            if (isLookup_)
                checkLink(item, "href", help, pointer);
            else
                for (const std::string_view list : {"seealso", "examples"})
                    checkLinksOf(item, list, help, pointer);
        }
    }

    void checkLinksOf(const json::object& item, std::string_view list, const std::string& help,
                      const std::string& pointer) {
        const json::value* links = item.if_contains(list);
        if (links == nullptr)
            return;
        for (std::size_t i = 0; i < links->as_array().size(); ++i)
            checkLink(links->as_array()[i].as_object(), "url", help,
                      fmt::format("{}/{}/{}", pointer, list, i));
    }

    void checkLink(const json::object& holder, std::string_view member, const std::string& help,
                   const std::string& pointer) {
        const std::string_view link = holder.at(member).as_string();
        const std::string page = pageOf(link);
        if (page.empty() || isDocumented(page) || isFileFrom(help, page))
            return;
        const std::string pageResource = page.substr(0, page.find('/'));
        for (const std::string* resource : std::array{&std::as_const(resource_), &pageResource})
            if (index_.isUnreadable(*resource)) {
                ++unknownLinks_[*resource];
                return;
            }
        if (index_.hasPage(page))
            return findings_.add(
                Fault::DeadLink, Loss::Nothing,
                fmt::format("the page of the {} {} is documented, but {}, and readers look for it "
                            "in the full reference file that the help folder names",
                            member, inQuotes(link), whyElsewhere()),
                fmt::format("{}/{}", pointer, member));
        findings_.add(Fault::DeadLink, Loss::Nothing,
                      fmt::format("the {} {} leads nowhere: no full reference file documents the "
                                  "page, and there is no such file",
                                  member, inQuotes(link)),
                      fmt::format("{}/{}", pointer, member));
    }

    std::string whyElsewhere() const {
        if (resource_.empty())
            return "helpFolder is empty";
        return index_.hasReferenceFile(resource_)
                   ? fmt::format("not in {}.json", shortened(resource_))
                   : fmt::format("there is no {}.json", shortened(resource_));
    }

    /// Lookups lead to the full reference file that their document's help folder names, other links
    /// to any.
    bool isDocumented(const std::string& page) const {
        return isLookup_ ? index_.hasPage(resource_, page) : index_.hasPage(page);
    }

    /// Whether there is a file of the name, seen from the root or from a folder. Dead links are
    /// often the same ones, and asking the system takes its time.
    bool isFileFrom(const std::string& folder, const std::string& page) {
        constexpr std::size_t mostKnown = 10000;
        const auto known = knownFiles_.find(page);
        if (known != knownFiles_.end())
            return known->second;
        const bool found = isFile({}, page) || isFile(folder, page);
        if (knownFiles_.size() < mostKnown)
            knownFiles_.emplace(page, found);
        return found;
    }

    /// Nothing outside the root counts, nor what no file can be called.
    bool isFile(const std::string& folder, const std::string& page) const {
        if (!mayBePath(folder) || !mayBePath(page))
            return false;
        const std::string path = (fs::path(folder) / page).lexically_normal().generic_string();
        const bool leavesRoot = path == ".." || path.starts_with("../") || path.starts_with('/');
        std::error_code ignored;
        return !leavesRoot && fs::is_regular_file(root_ / path, ignored);
    }

    const ResourceText& text_;
    const CheckIndex& index_;
    FindingList& findings_;
    fs::path root_;
    bool isLookup_;
    std::string resource_; ///< in which readers look for the pages of the document at hand
    std::map<std::string, std::size_t> unknownLinks_; ///< by resource
    CheckIndex::TextMap<bool> knownFiles_;            ///< by page, for the document at hand
};

} // namespace

void checkAcross(const ResourceText& text, const json::value& resource, const CheckIndex& index,
                 FindingList& findings) {
    AcrossCheck(text, index, findings).check(documentsOf(resource));
}

} // namespace refdoc

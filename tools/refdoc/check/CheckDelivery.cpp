#include "refdoc/check/CheckDelivery.hpp"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/ResourceDocument.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
using reference::property::HeaderInfo;
namespace parsing = reference::docparser::DocResourceParser::ParsingTools;

bool isSameHeader(const HeaderInfo& left, const HeaderInfo& right) {
    const auto textsOf = [](const HeaderInfo& header) {
        return std::tie(header.getProductName(), header.getBaseCode(), header.getHelpFolder(),
                        header.getHelpLocation());
    };
    return textsOf(left) == textsOf(right);
}

class DeliveryCheck {
public:
    DeliveryCheck(const ResourceText& text, std::uint32_t number, const CheckIndex& index,
                  const LookupFates& fates, FindingList& findings)
        : text_(text), number_(number), index_(index), fates_(fates), findings_(findings) {}

    void check(const ResourceDocument& document) {
        const HeaderInfo header = parsing::getHeaderInfo(*document.value);
        const auto& indexed = index_.lookups().documents().at(
            document.pointer.empty() ? header.getHelpFolder() : header.getBaseCode());
        key_ = &document.key;
        holders_.clear();
        checkHeader(document, indexed, header);
        const json::array& items = document.value->at("refItems").as_array();
        for (std::size_t i = 0; i < items.size(); ++i)
            if (const LookupFate* fate =
                    fates_.find(number_, indexed.key, static_cast<std::uint32_t>(i)))
                checkItem(*fate, items[i].as_object(),
                          fmt::format("{}/refItems/{}", document.pointer, i));
    }

private:
    /// English texts in a package of one language only fill in for its readers.
    bool fillsIn() const { return text_.language != text_.readers; }

    LookupKind localizedKind() const { return {text_.readers, text_.readers}; }

    /// Those of the document at hand. Keys may be long ones, and items many.
    const CheckIndex::LookupHolders* holdersOf(const LookupKind& kind) {
        const auto [known, isNew] = holders_.try_emplace(kind, nullptr);
        if (isNew)
            known->second = index_.holdersOf(kind, *key_);
        return known->second;
    }

    /// Where the document is found, or a name in it. Null when it is not.
    const std::string* holderOf(const LookupKind& kind, const std::string* name) {
        const CheckIndex::LookupHolders* holders = holdersOf(kind);
        if (holders == nullptr)
            return nullptr;
        if (name == nullptr)
            return &index_.shownName(holders->document);
        const auto found = holders->names.find(*name);
        return found == holders->names.end() ? nullptr : &index_.shownName(found->second);
    }

    /// Of English texts the first counts, of localized ones the last.
    std::string countsInstead(std::string_view what, const std::string* name) {
        const std::string* holder = holderOf({text_.language, text_.readers}, name);
        if (fillsIn() && (holder == nullptr || *holder == text_.shownName()))
            holder = holderOf(kEnglishForAll, name);
        const bool isKnown = holder != nullptr && *holder != text_.shownName();
        return fmt::format("{} has {} too and is read {}",
                           isKnown ? shortenedPath(*holder) : "another entry", what,
                           text_.language == kEnglish ? "before" : "after");
    }

    /// The end of a path that is too long to be read.
    static std::string shortenedPath(const std::string& path) {
        constexpr std::size_t mostBytes = 300;
        return path.size() <= mostBytes ? path : "..." + path.substr(path.size() - mostBytes);
    }

    void checkHeader(const ResourceDocument& document, const LookupIndex::Document& indexed,
                     const HeaderInfo& header) {
        const HeaderInfo* delivered = index_.lookups().headerFor(indexed, text_.readers);
        const bool isLocalized = fillsIn() && holdersOf(localizedKind()) != nullptr;
        if (!isLocalized && delivered != nullptr && !isSameHeader(*delivered, header))
            findings_.add(
                Fault::SharedKey, Loss::Nothing,
                countsInstead(fmt::format("the document {}", inQuotes(document.key)), nullptr) +
                    ": its header counts",
                document.pointer);
    }

    void checkItem(const LookupFate& fate, const json::object& item, const std::string& pointer) {
        const std::string name(item.at("name").as_string());
        const std::string href =
            toUtf8(parsing::getFluString(item, "href", parsing::StringParsingType::Ascii));
        if (fate.isLost) {
            const std::string* localized = fillsIn() ? holderOf(localizedKind(), &name) : nullptr;
            if (localized == nullptr)
                findings_.add(Fault::LostItem, Loss::Item,
                              countsInstead("the name", &name) + ": its lookups count", pointer);
            else if (fate.isLinkLost)
                addReplaced(Fault::LostItem, Loss::Item, text_.readers, localized, href, pointer);
            return;
        }
        for (std::size_t i = 0; i < fates_.languages().size(); ++i) {
            const std::string& readers = fates_.languages()[i];
            if ((fate.linkLostFor >> i & 1) != 0)
                addReplaced(Fault::ReplacedItem, Loss::Nothing, readers,
                            holderOf({readers, readers}, &name), href, pointer);
        }
    }

    /// What a localized text has under a name takes the place of what English has.
    void addReplaced(Fault fault, Loss loss, const std::string& readers, const std::string* holder,
                     const std::string& href, const std::string& pointer) {
        findings_.add(
            fault, loss,
            fmt::format("readers of {} do not get it: {} has the name, but not the href {}",
                        readers, holder == nullptr ? "another entry" : shortenedPath(*holder),
                        inQuotes(href)),
            pointer);
    }

    const ResourceText& text_;
    std::uint32_t number_;
    const CheckIndex& index_;
    const LookupFates& fates_;
    FindingList& findings_;
    const std::string* key_ = nullptr; ///< of the document at hand
    std::map<LookupKind, const CheckIndex::LookupHolders*> holders_;
};

} // namespace

void checkDelivery(const ResourceText& text, std::uint32_t number, const json::value& resource,
                   const CheckIndex& index, const LookupFates& fates, FindingList& findings) {
    DeliveryCheck check(text, number, index, fates, findings);
    for (const ResourceDocument& document : documentsOf(resource))
        check.check(document);
}

} // namespace refdoc

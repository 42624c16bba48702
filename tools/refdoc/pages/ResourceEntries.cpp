#include "refdoc/pages/ResourceEntries.hpp"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/pages/ItemJson.hpp"
#include "refdoc/pages/NameList.hpp"
#include "refdoc/pages/Page.hpp"
#include "refdoc/pages/ReferencePage.hpp"
#include "refdoc/terminal/Pager.hpp"
#include "refdoc/terminal/Terminal.hpp"
#include "refdoc/text/PrettyJson.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
namespace parsing = DocResourceParser::ParsingTools;

std::vector<ListedName> listedNames(const Selection& selection) {
    std::vector<ListedName> names;
    for (const RefItem* item : selection.items) {
        const std::u16string_view status = statusText(item->deprecationStatus);
        std::u16string purpose = item->refPurpose;
        if (!status.empty())
            purpose.append(u" (").append(status).append(u")");
        for (const RefEntity& entity : item->refEntities)
            names.push_back({entity.name, purpose});
        if (item->refEntities.empty())
            names.push_back({item->href, purpose});
    }
    return names;
}

std::string asJson(const std::vector<Selection>& selections, const std::u16string& resource) {
    boost::json::array documents;
    for (const Selection& selection : selections) {
        boost::json::array items;
        for (const RefItem* item : selection.items)
            items.emplace_back(toJson(*item));
        boost::json::object document{{"key", toJson(*selection.key)}};
        for (auto& member : toJson(*selection.header))
            document.emplace(member.key(), std::move(member.value()));
        document.emplace("items", std::move(items));
        documents.emplace_back(std::move(document));
    }
    return prettyJson(boost::json::object{{"resource", toJson(resource)},
                                          {"language", toJson(parsing::getCurrentLocale())},
                                          {"documents", std::move(documents)}});
}

std::string asPages(const std::vector<Selection>& selections, const Terminal& terminal) {
    std::string text;
    for (const Selection& selection : selections) {
        for (const RefItem* item : selection.items) {
            Page page({terminal.width, terminal.styled});
            addReferencePage(page, *selection.header, *item);
            text += (text.empty() ? "" : "\n\n") + page.take();
        }
    }
    return text;
}

/// A list for another program has one line per name, whatever its length.
std::string asLists(const std::vector<Selection>& selections, const Terminal& terminal) {
    const std::size_t width = terminal.interactive ? terminal.width : kUnlimitedWidth;
    Page page({width, terminal.styled});
    for (const Selection& selection : selections) {
        const std::u16string& product = selection.header->getProductName();
        addNameList(page, product.empty() ? *selection.key : product, listedNames(selection),
                    width);
    }
    return page.take();
}

} // namespace

bool isCalled(const RefItem& item, const std::u16string& name) {
    return item.href == name ||
           std::any_of(item.refEntities.begin(), item.refEntities.end(),
                       [&](const RefEntity& entity) { return entity.name == name; });
}

std::vector<Selection> select(const ResourceDocuments& documents, const ItemFilter& isWanted) {
    std::vector<Selection> selections;
    for (const auto& [key, document] : documents) {
        Selection selection{&key, &document.header, {}};
        for (const auto& [href, items] : document.items)
            for (const RefItem& item : items)
                if (isWanted(key, item))
                    selection.items.push_back(&item);
        if (!selection.items.empty())
            selections.push_back(std::move(selection));
    }
    std::stable_partition(selections.begin(), selections.end(), [](const Selection& selection) {
        return *selection.key == selection.header->getHelpFolder();
    });
    return selections;
}

ExitCode showEntries(const std::vector<Selection>& selections, const std::u16string& resource,
                     EntryFormat format) {
    const Terminal terminal = standardOutputTerminal();
    if (format == EntryFormat::Json)
        writeOutput(asJson(selections, resource));
    else if (!selections.empty())
        showText(format == EntryFormat::Pages ? asPages(selections, terminal)
                                              : asLists(selections, terminal),
                 terminal);
    return selections.empty() ? ExitCode::NothingFound : ExitCode::Found;
}

Lines triedFiles(const std::u16string& resource, std::string_view outcome) {
    const std::u16string stem =
        DocResourceParser::getReferenceRoots()->referenceApiFolder + u'/' + resource;
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

bool isResourceName(std::u16string_view name) {
    using namespace std::string_view_literals;
    return !name.empty() && name != u"." && name != u".." &&
           name.find_first_of(u"/\\\0"sv) == name.npos;
}

} // namespace refdoc

#include "refdoc/check/CheckText.hpp"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "refdoc/check/CheckMembers.hpp"
#include "refdoc/check/CheckSchema.hpp"
#include "refdoc/check/CheckSevenBit.hpp"
#include "refdoc/check/ResourceDocument.hpp"
#include "refdoc/format/JsonPositions.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

void checkKeys(const json::value& resource, FindingList& findings) {
    std::map<std::string, std::string> pointers;
    forEachDocument(resource, [&](const ResourceDocument& document) {
        const auto [first, isNew] = pointers.try_emplace(document.key, document.pointer);
        if (!isNew)
            findings.add(Fault::RepeatedKey, Loss::Document,
                         fmt::format("the key {} is that of {} already", inQuotes(document.key),
                                     first->second.empty() ? "the main document's help folder"
                                                           : first->second),
                         document.pointer);
    });
}

/// The item, else the document, that a pointer leads into.
std::string itemName(const json::value& resource, std::string_view pointer) {
    const std::size_t items = pointer.find("/refItems/");
    if (items == pointer.npos)
        return {};
    const std::size_t end = pointer.find('/', items + std::string_view("/refItems/").size());
    const std::string_view path = pointer.substr(0, end);
    json::error_code failure;
    const json::value* item = resource.find_pointer({path.data(), path.size()}, failure);
    if (item == nullptr)
        return {};
    const std::string name = textMember(*item, "name");
    return shortened(name.empty() ? textMember(*item, "href") : name);
}

bool liesInText(const Finding& finding) {
    switch (finding.fault) {
    case Fault::Unreadable:
    case Fault::UnreadName:
    case Fault::UnknownLanguage:
    case Fault::OtherFile:
        return false;
    default:
        return finding.position.line == 0;
    }
}

void addRepeatedMembers(const ResourceText& text, const json::value& resource,
                        const JsonPlaces& places, FindingList& findings) {
    std::vector<std::size_t> offsets;
    for (const RepeatedMember& member : places.repeated)
        offsets.push_back(member.offset);
    const auto positions = positionsOf(text.content, offsets);
    for (std::size_t i = 0; i < places.repeated.size(); ++i) {
        const std::string& pointer = places.repeated[i].pointer;
        Finding* finding =
            findings.addAt(Level::Warning, Fault::RepeatedMember, Loss::Nothing,
                           fmt::format("{} is there already: what was said before is "
                                       "lost",
                                       inQuotes(pointerSteps(pointer).back())),
                           pointer);
        if (finding == nullptr)
            continue;
        finding->position = positions[i];
        finding->item = itemName(resource, pointer);
    }
    findings.addFurther(Fault::RepeatedMember, places.repeatedCount - places.repeated.size());
}

} // namespace

void checkText(const ResourceText& text, const json::value& resource, FindingList& findings) {
    const CheckSchema& schema =
        text.file.catalog == Catalog::Lookup ? lookupSchema() : referenceSchema();
    schema.check(resource, findings);
    if (findings.losesText())
        return;
    checkMembers(schema.schema(), resource, findings);
    checkKeys(resource, findings);
    for (const ResourceDocument& document : documentsOf(resource))
        checkSevenBit(text.file.catalog, document, findings);
}

void locateFindings(const ResourceText& text, const json::value& resource, bool tellRepeatedMembers,
                    FindingList& findings) {
    std::vector<Finding*> wanted;
    std::vector<std::string> pointers;
    for (Finding& finding : findings.kept()) {
        if (!liesInText(finding))
            continue;
        finding.item = itemName(resource, finding.pointer);
        wanted.push_back(&finding);
        pointers.push_back(finding.pointer);
    }
    if (wanted.empty() && !tellRepeatedMembers)
        return;
    const JsonPlaces places = findInJson(text.content, pointers, FindingList::kMostOfOneKind);
    const auto positions = positionsOf(text.content, places.offsets);
    for (std::size_t i = 0; i < wanted.size(); ++i)
        wanted[i]->position = positions[i];
    if (tellRepeatedMembers)
        addRepeatedMembers(text, resource, places, findings);
}

} // namespace refdoc

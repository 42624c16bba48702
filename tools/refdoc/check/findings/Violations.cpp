#include "refdoc/check/findings/Violations.hpp"

#include "refdoc/format/JsonPositions.hpp"
#include "refdoc/format/ResourceDocuments.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

/// The name, or else the href, of the item that a pointer leads into.
std::string itemName(const json::value& resource, std::string_view pointer) {
    constexpr std::string_view list = "/refItems/";
    const std::size_t items = pointer.find(list);
    if (items == pointer.npos)
        return {};
    const std::string_view path = pointer.substr(0, pointer.find('/', items + list.size()));
    json::error_code failure;
    const json::value* item = resource.find_pointer({path.data(), path.size()}, failure);
    if (item == nullptr)
        return {};
    const std::string name = textMember(*item, "name");
    return shortened(name.empty() ? textMember(*item, "href") : name);
}

} // namespace

void Violations::add(Violation violation) {
    losesText_ = losesText_ || violation.loss == wholeText_;
    Count& count = counts_[{violation.fault, violation.level}];
    const std::size_t bytes = file_.size() + entry_.size() + violation.message.size() +
                              (violation.pointer ? violation.pointer->size() : 0);
    const bool hasRoom = bytes_ == 0 || bytes_ + bytes <= kMostBytes;
    if (count.kept == kMostOfOneKind || !hasRoom) {
        ++count.further;
        return;
    }
    ++count.kept;
    bytes_ += bytes;
    violations_.push_back(std::move(violation));
}

bool Violations::hasRoomFor(Fault fault) const {
    const auto count = counts_.find({fault, ruleOf(fault).level});
    return count == counts_.end() || (count->second.kept < kMostOfOneKind && bytes_ < kMostBytes);
}

void Violations::addFurther(Fault fault, std::size_t count) {
    counts_[{fault, ruleOf(fault).level}].further += count;
}

void Violations::add(Violations&& others) {
    for (Violation& violation : others.violations_)
        add(std::move(violation));
    for (const auto& [kind, count] : others.counts_)
        counts_[kind].further += count.further;
}

/// The pointers of those violations that have a place in the text, in their order.
std::vector<std::size_t> Violations::offsetsIn(std::string_view text) const {
    std::vector<std::string> wanted;
    for (const Violation& violation : violations_)
        if (violation.pointer && !violation.offset)
            wanted.push_back(*violation.pointer);
    const std::vector<std::size_t> found =
        wanted.empty() ? std::vector<std::size_t>() : findInJson(text, wanted);
    std::vector<std::size_t> offsets;
    auto next = found.begin();
    for (const Violation& violation : violations_)
        if (violation.offset || violation.pointer)
            offsets.push_back(violation.offset ? *violation.offset : *next++);
    return offsets;
}

std::vector<Finding> Violations::findings(const TextAndTree& text) const {
    const std::vector<TextPosition> positions = positionsOf(text.text, offsetsIn(text.text));
    auto next = positions.begin();
    std::vector<Finding> findings;
    for (const Violation& violation : violations_) {
        const bool hasPlace = violation.pointer || violation.offset;
        findings.push_back(findingOf(violation, text.tree, hasPlace ? *next++ : TextPosition()));
    }
    addFurtherTo(findings);
    return findings;
}

Finding Violations::findingOf(const Violation& violation, const json::value* tree,
                              TextPosition position) const {
    const std::string pointer = violation.pointer.value_or("");
    return {.fault = violation.fault,
            .level = violation.level,
            .loss = violation.loss,
            .file = file_,
            .entry = entry_,
            .pointer = pointer,
            .item = tree == nullptr ? std::string() : itemName(*tree, pointer),
            .message = violation.message,
            .position = position};
}

void Violations::addFurtherTo(std::vector<Finding>& findings) const {
    for (const auto& [kind, count] : counts_) {
        if (count.further == 0)
            continue;
        findings.push_back(refdoc::findingOf({.fault = kind.first,
                                              .level = kind.second,
                                              .count = count.further,
                                              .file = file_,
                                              .entry = entry_}));
    }
}

} // namespace refdoc

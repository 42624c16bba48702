#include "refdoc/check/CheckFinding.hpp"

#include <fmt/format.h>

namespace refdoc {

std::string_view levelName(Level level) {
    constexpr std::array<std::string_view, 3> names{"note", "warning", "error"};
    return names[static_cast<std::size_t>(level)];
}

std::string_view lossText(Loss loss) {
    constexpr std::array<std::string_view, 5> texts{"", "the item is lost", "the document is lost",
                                                    "the whole leaf is lost",
                                                    "the whole file is lost"};
    return texts[static_cast<std::size_t>(loss)];
}

std::string shortened(std::string_view text) {
    constexpr std::size_t mostBytes = 80;
    if (text.size() <= mostBytes)
        return std::string(text);
    std::size_t end = mostBytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return std::string(text.substr(0, end)) + "...";
}

std::string inQuotes(std::string_view text) {
    return fmt::format("\"{}\"", shortened(text));
}

std::string furtherText(Fault fault, std::size_t count) {
    return fmt::format("{} more of {}", count, ruleOf(fault).id);
}

void FindingList::add(Fault fault, Loss loss, std::string message, std::string pointer) {
    addAt(ruleOf(fault).level, fault, loss, std::move(message), std::move(pointer));
}

Finding* FindingList::addAt(Level level, Fault fault, Loss loss, std::string message,
                            std::string pointer) {
    losesText_ = losesText_ || loss == Loss::File || loss == Loss::Leaf;
    Count& count = counts_[{fault, level}];
    const std::size_t bytes = file_.size() + leaf_.size() + message.size() + pointer.size();
    const bool hasRoom = bytes_ == 0 || bytes_ + bytes <= kMostBytes;
    if (count.kept == kMostOfOneKind || !hasRoom) {
        ++count.further;
        return nullptr;
    }
    ++count.kept;
    bytes_ += bytes;
    findings_.push_back(
        {fault, level, loss, file_, leaf_, std::move(pointer), {}, std::move(message)});
    return &findings_.back();
}

void FindingList::addFurther(Fault fault, std::size_t count) {
    counts_[{fault, ruleOf(fault).level}].further += count;
}

std::vector<Finding> FindingList::take() {
    for (const auto& [kind, count] : counts_) {
        const auto [fault, level] = kind;
        if (count.further > 0)
            findings_.push_back({fault,
                                 level,
                                 Loss::Nothing,
                                 file_,
                                 leaf_,
                                 {},
                                 {},
                                 furtherText(fault, count.further),
                                 {},
                                 count.further});
    }
    counts_.clear();
    return std::move(findings_);
}

} // namespace refdoc

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

std::string inQuotes(std::string_view text) {
    constexpr std::size_t mostBytes = 80;
    if (text.size() <= mostBytes)
        return fmt::format("\"{}\"", text);
    std::size_t end = mostBytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return fmt::format("\"{}...\"", text.substr(0, end));
}

void FindingList::add(Fault fault, Loss loss, std::string message, std::string pointer,
                      std::optional<Level> level) {
    losesText_ = losesText_ || loss == Loss::File || loss == Loss::Leaf;
    if (++counts_[fault] > kMostOfOneKind)
        return;
    findings_.push_back({fault,
                         level.value_or(ruleOf(fault).level),
                         loss,
                         file_,
                         leaf_,
                         std::move(pointer),
                         {},
                         std::move(message)});
}

void FindingList::addAt(TextPosition position, Fault fault, Loss loss, std::string message,
                        std::string pointer) {
    add(fault, loss, std::move(message), std::move(pointer));
    if (counts_[fault] <= kMostOfOneKind)
        findings_.back().position = position;
}

std::vector<Finding> FindingList::take() {
    for (const auto& [fault, count] : counts_) {
        if (count <= kMostOfOneKind)
            continue;
        const std::size_t further = count - kMostOfOneKind;
        findings_.push_back({fault,
                             ruleOf(fault).level,
                             Loss::Nothing,
                             file_,
                             leaf_,
                             {},
                             {},
                             fmt::format("{} more of this kind", further),
                             {},
                             further});
    }
    counts_.clear();
    return std::move(findings_);
}

} // namespace refdoc

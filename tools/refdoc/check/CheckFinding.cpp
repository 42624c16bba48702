#include "refdoc/check/CheckFinding.hpp"

#include <algorithm>
#include <tuple>

#include <fmt/format.h>

#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

Finding furtherFinding(std::pair<Fault, Level> kind, std::size_t count, const std::string& file,
                       const std::string& leaf) {
    const auto [fault, level] = kind;
    return {fault, level, Loss::Nothing, file, leaf, {}, {}, furtherText(fault, count), {}, count};
}

} // namespace

std::string_view lossText(Loss loss) {
    constexpr std::array<std::string_view, 7> texts{"",
                                                    "the item is lost",
                                                    "the document is lost",
                                                    "the whole entry is lost",
                                                    "the whole file is lost",
                                                    "all files of the folder are lost",
                                                    "all lookup files are lost"};
    return texts[static_cast<std::size_t>(loss)];
}

std::string shortened(std::string_view text) {
    constexpr std::size_t mostBytes = 80;
    if (text.size() <= mostBytes)
        return std::string(text);
    std::size_t end = mostBytes;
    while (end > 0 && continuesCharacter(text[end]))
        --end;
    return std::string(text.substr(0, end)) + "...";
}

std::string inQuotes(std::string_view text) {
    return fmt::format("\"{}\"", shortened(text));
}

std::string sentenceOf(const Finding& finding) {
    std::string sentence = finding.item.empty()
                               ? finding.message
                               : fmt::format("{}: {}", finding.item, finding.message);
    if (finding.loss != Loss::Nothing)
        sentence += fmt::format("; {}", lossText(finding.loss));
    return sentence;
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
    for (const auto& [kind, count] : counts_)
        if (count.further > 0)
            findings_.push_back(furtherFinding(kind, count.further, file_, leaf_));
    counts_.clear();
    return std::move(findings_);
}

void RootFindings::add(std::vector<Finding> findings) {
    for (Finding& finding : findings) {
        const std::size_t bytes = sizeof(Finding) + finding.file.size() + finding.leaf.size() +
                                  finding.pointer.size() + finding.item.size() +
                                  finding.message.size();
        if (bytes <= kMostBytes - bytes_) {
            bytes_ += bytes;
            findings_.push_back(std::move(finding));
        } else {
            further_[{finding.fault, finding.level}] += std::max<std::size_t>(finding.further, 1);
        }
    }
}

std::vector<Finding> RootFindings::take() {
    const auto order = [](const Finding& finding) {
        return std::tuple(std::string_view(finding.file), std::string_view(finding.leaf),
                          finding.further > 0, finding.position.line, finding.position.column);
    };
    std::stable_sort(
        findings_.begin(), findings_.end(),
        [order](const Finding& left, const Finding& right) { return order(left) < order(right); });
    for (const auto& [kind, count] : further_)
        findings_.push_back(furtherFinding(kind, count, {}, {}));
    return std::move(findings_);
}

} // namespace refdoc

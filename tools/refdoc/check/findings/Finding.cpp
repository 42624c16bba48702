#include "refdoc/check/findings/Finding.hpp"

#include <algorithm>
#include <tuple>

#include <fmt/format.h>

#include "refdoc/text/Text.hpp"

namespace refdoc {

bool CheckResult::hasErrors() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.level == Level::Error; });
}

std::string sentenceOf(const Finding& finding) {
    std::string sentence = finding.item.empty()
                               ? finding.message
                               : fmt::format("{}: {}", finding.item, finding.message);
    if (finding.loss != Loss::Nothing)
        sentence += fmt::format("; {}", lossText(finding.loss));
    return sentence;
}

Finding findingOf(const FurtherFindings& further) {
    return {.fault = further.fault,
            .level = further.level,
            .file = further.file,
            .entry = further.entry,
            .message = fmt::format("{} more of {}", further.count, ruleOf(further.fault).id),
            .further = further.count};
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

void RootFindings::add(std::vector<Finding> findings) {
    for (Finding& finding : findings) {
        const std::size_t bytes = sizeof(Finding) + finding.file.size() + finding.entry.size() +
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
        return std::tuple(std::string_view(finding.file), std::string_view(finding.entry),
                          finding.further > 0, finding.position.line, finding.position.column);
    };
    std::stable_sort(
        findings_.begin(), findings_.end(),
        [order](const Finding& left, const Finding& right) { return order(left) < order(right); });
    for (const auto& [kind, count] : further_)
        findings_.push_back(findingOf({.fault = kind.first, .level = kind.second, .count = count}));
    return std::move(findings_);
}

} // namespace refdoc

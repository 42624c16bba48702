#include "refdoc/text/NearNames.hpp"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

constexpr std::size_t kMostSuggestions = 5;
/// Comparing long texts takes long, and nobody types them.
constexpr std::size_t kLongestMisspelt = 1000;
/// Folding the case of a code unit gives at most three units.
constexpr std::size_t kMostFolding = 3;

std::size_t lengthDifference(std::u16string_view left, std::u16string_view right) {
    return std::max(left.size(), right.size()) - std::min(left.size(), right.size());
}

/// The number of code units to insert, remove, replace or swap with the next to turn one text into
/// the other.
std::size_t editDistance(std::u16string_view left, std::u16string_view right) {
    std::vector<std::size_t> beforePrevious;
    std::vector<std::size_t> previous;
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        beforePrevious = std::exchange(previous, row);
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = previous[j] + (left[i] == right[j] ? 0 : 1);
            row[j + 1] = std::min({replaced, previous[j + 1] + 1, row[j] + 1});
            if (i > 0 && j > 0 && left[i] == right[j - 1] && left[i - 1] == right[j])
                row[j + 1] = std::min(row[j + 1], beforePrevious[j - 1] + 1);
        }
    }
    return row.back();
}

} // namespace

std::vector<std::u16string> nearNames(std::u16string_view wanted,
                                      const std::set<std::u16string>& known,
                                      std::size_t mostWrong) {
    const auto isLonger = [&](const std::u16string& name) {
        return wanted.size() > kMostFolding * (name.size() + mostWrong);
    };
    if (std::all_of(known.begin(), known.end(), isLonger))
        return {};
    if (wanted.size() > kLongestMisspelt)
        return {};
    const std::u16string folded = foldCase(wanted);
    const std::size_t limit = std::min(mostWrong, (folded.size() + 1) / 3);
    std::vector<std::pair<std::size_t, std::u16string>> near;
    for (const std::u16string& name : known) {
        const std::u16string candidate = foldCase(name);
        if (lengthDifference(folded, candidate) > limit)
            continue;
        const std::size_t distance = editDistance(folded, candidate);
        if (distance <= limit)
            near.emplace_back(distance, name);
    }
    std::sort(near.begin(), near.end());
    near.resize(std::min(near.size(), kMostSuggestions));
    std::vector<std::u16string> names;
    names.reserve(near.size());
    for (auto& [distance, name] : near)
        names.push_back(std::move(name));
    return names;
}

Lines similarNames(std::u16string_view wanted, const std::set<std::u16string>& known) {
    std::string line;
    for (const std::u16string& name : nearNames(wanted, known))
        line += (line.empty() ? "similar names: " : ", ") + toUtf8(name);
    return line.empty() ? Lines() : Lines{std::move(line)};
}

} // namespace refdoc

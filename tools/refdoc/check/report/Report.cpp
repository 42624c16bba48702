#include "refdoc/check/report/Report.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/text/Json.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

std::string pathIn(const std::string& root, const std::string& file) {
    return file.empty() || root.ends_with('/') ? root + file : root + '/' + file;
}

std::string placeOf(const Finding& finding, const std::string& root) {
    std::string place = pathIn(root, finding.file);
    if (!finding.entry.empty())
        place += ':' + finding.entry;
    if (finding.position.line > 0)
        place += fmt::format(":{}:{}", finding.position.line, finding.position.column);
    return place;
}

std::string styledLevel(Level level, bool styled) {
    return styled ? fmt::format("\x1b[1m{}\x1b[m", levelName(level))
                  : std::string(levelName(level));
}

std::string lineOf(const Finding& finding, const ReportOptions& options) {
    std::string message = sentenceOf(finding);
    if (!finding.pointer.empty())
        message += fmt::format(" ({})", finding.pointer);
    return fmt::format("{}: {}: {}\n", printableUtf8(placeOf(finding, options.root)),
                       styledLevel(finding.level, options.styled), printableUtf8(message));
}

std::string counted(std::size_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

/// Counts what was left out as well.
std::string summary(const CheckResult& result) {
    std::array<std::size_t, 3> counts{};
    for (const Finding& finding : result.findings)
        counts[static_cast<std::size_t>(finding.level)] +=
            finding.further > 0 ? finding.further : 1;
    return fmt::format("{}, {} and {} in {}\n", counted(counts[2], "error"),
                       counted(counts[1], "warning"), counted(counts[0], "note"),
                       counted(result.fileCount, "file"));
}

/// The findings of one file or entry in order, with only the first few of each kind.
class TextOfPlace {
public:
    TextOfPlace(const Finding& first, const ReportOptions& options)
        : first_(first), options_(options) {}

    void add(const Finding& finding) {
        Count& count = counts_[{finding.fault, finding.level}];
        if (finding.further == 0 && ++count.shown <= kMostShown)
            text_ += lineOf(finding, options_);
        else
            count.further += std::max<std::size_t>(finding.further, 1);
    }

    std::string finish() {
        for (const auto& [kind, count] : counts_) {
            if (count.further == 0)
                continue;
            text_ += lineOf(findingOf({.fault = kind.first,
                                       .level = kind.second,
                                       .count = count.further,
                                       .file = first_.file,
                                       .entry = first_.entry}),
                            options_);
        }
        return std::move(text_);
    }

private:
    static constexpr std::size_t kMostShown = 20;

    struct Count {
        std::size_t shown = 0;
        std::size_t further = 0;
    };

    const Finding& first_;
    const ReportOptions& options_;
    std::string text_;
    std::map<std::pair<Fault, Level>, Count> counts_;
};

std::string asText(const std::vector<const Finding*>& findings, const CheckResult& result,
                   const ReportOptions& options) {
    std::string text;
    const Finding* previous = nullptr;
    for (auto at = findings.begin(); at != findings.end();) {
        const Finding& first = **at;
        TextOfPlace place(first, options);
        for (; at != findings.end() && (*at)->file == first.file && (*at)->entry == first.entry;
             ++at)
            place.add(**at);
        if (previous != nullptr && previous->file != first.file)
            text += '\n';
        text += place.finish();
        previous = &first;
    }
    return text + (text.empty() ? "" : "\n") + summary(result);
}

std::string asJsonLine(const Finding& finding, const ReportOptions& options) {
    json::object object{{"level", levelName(finding.level)},
                        {"rule", ruleOf(finding.fault).id},
                        {"file", toJson(pathIn(options.root, finding.file))}};
    if (!finding.entry.empty())
        object["entry"] = toJson(finding.entry);
    if (finding.position.line > 0) {
        object["line"] = finding.position.line;
        object["column"] = finding.position.column;
        object["pointer"] = toJson(finding.pointer);
    }
    if (!finding.item.empty())
        object["item"] = toJson(finding.item);
    object["message"] = toJson(finding.message);
    if (finding.loss != Loss::Nothing)
        object["cost"] = lossText(finding.loss);
    if (finding.further > 0)
        object["further"] = finding.further;
    return compactJson(object) + '\n';
}

} // namespace

std::string reportOn(const CheckResult& result, const ReportOptions& options) {
    std::vector<const Finding*> findings;
    for (const Finding& finding : result.findings)
        if (finding.level >= options.least)
            findings.push_back(&finding);
    if (options.format == ReportFormat::Text)
        return asText(findings, result, options);
    if (options.format == ReportFormat::Sarif)
        return sarifLog(findings, options.root);
    std::string text;
    for (const Finding* finding : findings)
        text += asJsonLine(*finding, options);
    return text;
}

} // namespace refdoc

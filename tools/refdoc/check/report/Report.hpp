#pragma once

#include <string>
#include <vector>

#include "refdoc/check/findings/Finding.hpp"

namespace refdoc {

enum class ReportFormat { Text, JsonLines, Sarif };

struct ReportOptions {
    std::string root; ///< the beginning of all file names
    Level least = Level::Note;
    ReportFormat format = ReportFormat::Text;
    bool styled = false;
};

/// The findings of the least level and above, in the requested format.
std::string reportOn(const CheckResult& result, const ReportOptions& options);

/// The findings as a SARIF 2.1.0 log; `root` is the absolute path that file names are relative to.
std::string sarifLog(const std::vector<const Finding*>& findings, const std::string& root);

} // namespace refdoc

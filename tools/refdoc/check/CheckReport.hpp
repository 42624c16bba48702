#pragma once

#include <string>
#include <vector>

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/CheckRoot.hpp"

namespace refdoc {

enum class CheckFormat { Text, JsonLines, Sarif };

struct CheckReportOptions {
    std::string root; ///< as file names are to begin
    Level least = Level::Note;
    CheckFormat format = CheckFormat::Text;
    bool styled = false;
};

/// The findings of the least level and above, for people or programs.
std::string checkReport(const CheckResult& result, const CheckReportOptions& options);

/// The findings as a SARIF 2.1.0 log; `root` is the absolute path that file names are relative to.
std::string sarifLog(const std::vector<const Finding*>& findings, const std::string& root);

} // namespace refdoc

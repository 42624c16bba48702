#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace refdoc {

std::string progressLine(std::size_t done, std::size_t all);

/// Shows on stderr how far a job is, if stderr is a terminal and the job takes longer than a
/// second; erases the line at the end.
class Progress {
public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void show(std::size_t done, std::size_t all);

private:
    std::chrono::steady_clock::time_point next_;
    bool isTerminal_;
    bool isShown_ = false;
};

} // namespace refdoc

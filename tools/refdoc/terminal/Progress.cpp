#include "refdoc/terminal/Progress.hpp"

#include <algorithm>
#include <iostream>

#include <fmt/format.h>
#include <unistd.h>

namespace refdoc {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kPatience{1};
constexpr std::chrono::milliseconds kBetweenLines{100};

} // namespace

std::string progressLine(std::size_t done, std::size_t all) {
    constexpr std::size_t width = 40;
    const std::size_t full = all == 0 ? width : width * std::min(done, all) / all;
    const std::size_t percent = all == 0 ? 100 : 100 * std::min(done, all) / all;
    return fmt::format("[{}{}] {:3}%", std::string(full, '#'), std::string(width - full, ' '),
                       percent);
}

Progress::Progress() : next_(Clock::now() + kPatience), isTerminal_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    if (isShown_)
        std::cerr << "\r\x1b[K" << std::flush;
}

void Progress::show(std::size_t done, std::size_t all) {
    const Clock::time_point now = Clock::now();
    if (!isTerminal_ || now < next_)
        return;
    next_ = now + kBetweenLines;
    isShown_ = true;
    std::cerr << '\r' + progressLine(done, all) << std::flush;
}

} // namespace refdoc

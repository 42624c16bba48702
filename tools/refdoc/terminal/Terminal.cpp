#include "refdoc/terminal/Terminal.hpp"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>

#include <sys/ioctl.h>
#include <unistd.h>

namespace refdoc {

namespace {

constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kComfortableWidth = 100;
constexpr std::size_t kGreatestWidth = 10000;

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::optional<std::size_t> columnCount(std::string_view text) {
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    const bool whole = error == std::errc{} && end == text.data() + text.size();
    return whole && count > 0 && count <= kGreatestWidth ? std::optional(count) : std::nullopt;
}

std::optional<std::size_t> windowWidth() {
    winsize window{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) != 0 || window.ws_col == 0)
        return std::nullopt;
    return window.ws_col;
}

std::size_t screenWidth(bool interactive) {
    if (const auto asked = columnCount(variable("MANWIDTH")))
        return *asked;
    if (!interactive)
        return kUsualWidth;
    const auto columns = columnCount(variable("COLUMNS"));
    return columns ? *columns : windowWidth().value_or(kUsualWidth);
}

std::size_t textWidth(bool interactive) {
    const bool asked = columnCount(variable("MANWIDTH")).has_value();
    return asked ? screenWidth(interactive) : std::min(screenWidth(interactive), kComfortableWidth);
}

} // namespace

Terminal standardOutputTerminal() {
    const bool interactive = isatty(STDOUT_FILENO) == 1;
    const bool styled = interactive && variable("NO_COLOR").empty() && variable("TERM") != "dumb";
    return {interactive, styled, textWidth(interactive), screenWidth(interactive)};
}

} // namespace refdoc

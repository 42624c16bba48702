#include "refdoc/pages/Choice.hpp"

#include <charconv>
#include <iostream>
#include <string_view>
#include <system_error>

#include <fmt/format.h>
#include <unistd.h>

#include "refdoc/pages/Page.hpp"
#include "refdoc/terminal/Output.hpp"
#include "refdoc/terminal/Terminal.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

std::string numberedList(const std::string& question, const std::vector<std::u16string>& choices) {
    const Terminal terminal = standardOutputTerminal();
    constexpr std::size_t indent = 2;
    const std::size_t hang = std::to_string(choices.size()).size() + 2;
    Page page({terminal.width, terminal.styled});
    page.paragraph(fromUtf8(question), 0);
    for (std::size_t index = 0; index < choices.size(); ++index) {
        page.tag({{fromUtf8(std::to_string(index + 1)), Style::Bold}}, indent, hang);
        page.paragraph(choices[index], indent + hang);
    }
    return page.take();
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == text.npos ? std::string_view()
                              : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/// 0 when the answer is not a number.
std::size_t numberIn(std::string_view answer) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(answer.data(), answer.data() + answer.size(), number);
    return error == std::errc{} && end == answer.data() + answer.size() ? number : 0;
}

} // namespace

bool canAskUser() {
    return isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1;
}

std::optional<std::size_t> askUser(const std::string& question,
                                   const std::vector<std::u16string>& choices) {
    writeOutput(numberedList(question, choices));
    const std::string prompt = fmt::format("Which one (1-{}, q for none)? ", choices.size());
    std::string line;
    for (writeOutput(prompt); std::getline(std::cin, line); writeOutput(prompt)) {
        const std::string_view answer = trimmed(line);
        if (answer.empty() || answer == "q")
            return std::nullopt;
        const std::size_t number = numberIn(answer);
        if (number >= 1 && number <= choices.size())
            return number - 1;
    }
    writeOutput("\n");
    return std::nullopt;
}

} // namespace refdoc

#include "refdoc/pages/Description.hpp"

#include <cstddef>
#include <string>
#include <vector>

#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

constexpr std::u16string_view kVerbatimMark = u"    ";
constexpr std::u16string_view kItemMark = u"- ";
constexpr std::u16string_view kHeadingMark = u"## ";
constexpr std::u16string_view kBlanks = u" \t";

bool isBlank(std::u16string_view line) {
    return line.find_first_not_of(kBlanks) == line.npos;
}

std::u16string_view withoutOuterBlanks(std::u16string_view line) {
    line.remove_prefix(line.find_first_not_of(kBlanks));
    return line.substr(0, line.find_last_not_of(kBlanks) + 1);
}

/// Lays out the line at `index`, which is not blank; its neighbours show whether it is a heading.
void addLine(Page& page, const std::vector<std::u16string_view>& lines, std::size_t index,
             std::size_t indent) {
    const std::u16string_view line = lines[index];
    if (line.starts_with(kVerbatimMark))
        return page.verbatim(line, indent);

    const bool standsAlone = (index == 0 || isBlank(lines[index - 1])) &&
                             (index + 1 == lines.size() || isBlank(lines[index + 1]));
    const std::u16string_view text = withoutOuterBlanks(line);
    if (text.starts_with(kHeadingMark) && standsAlone)
        return page.subsection(text.substr(kHeadingMark.size()));
    if (text.starts_with(kItemMark)) {
        page.tag({{u"-", Style::Plain}}, indent, kItemMark.size());
        return page.paragraph(text.substr(kItemMark.size()), indent + kItemMark.size());
    }
    page.paragraph(text, indent);
}

} // namespace

void addDescription(Page& page, std::u16string_view description, std::size_t indent) {
    const std::vector<std::u16string_view> lines = splitLines(description);
    bool separated = false;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (isBlank(lines[index])) {
            separated = true;
            continue;
        }
        if (separated)
            page.separate();
        separated = false;
        addLine(page, lines, index, indent);
    }
}

} // namespace refdoc

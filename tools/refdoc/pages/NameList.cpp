#include "refdoc/pages/NameList.hpp"

#include <algorithm>

#include "refdoc/text/Text.hpp"
#include "refdoc/text/TextLayout.hpp"

namespace refdoc {

namespace {

constexpr std::size_t kNameIndent = 2;
constexpr std::size_t kNameGap = 2;
constexpr std::size_t kWidestNameColumn = 32;

/// Wide enough for most names, so that a few long ones do not push all purposes to the right.
std::size_t nameColumnWidth(const std::vector<ListedName>& names, std::size_t pageWidth) {
    const std::size_t widest = std::min(pageWidth / 3, kWidestNameColumn);
    std::size_t width = 0;
    for (const ListedName& entry : names)
        width = std::max(width, std::min(displayWidth(printable(entry.name)), widest));
    return width + kNameGap;
}

} // namespace

void addNameList(Page& page, std::u16string_view title, std::vector<ListedName> names,
                 std::size_t pageWidth) {
    std::stable_sort(names.begin(), names.end(),
                     [](const ListedName& left, const ListedName& right) {
                         return precedesInList(left.name, right.name);
                     });
    page.separate();
    page.paragraph({{std::u16string(title), Style::Bold}}, 0);
    const std::size_t hang = nameColumnWidth(names, pageWidth);
    for (const ListedName& entry : names) {
        if (pageWidth == kUnlimitedWidth && displayWidth(printable(entry.name)) + kNameGap > hang) {
            page.paragraph({{entry.name + u"  " + entry.purpose, Style::Plain}}, kNameIndent);
            continue;
        }
        page.tag({{entry.name, Style::Bold}}, kNameIndent, hang);
        page.paragraph(entry.purpose, kNameIndent + hang);
    }
}

} // namespace refdoc

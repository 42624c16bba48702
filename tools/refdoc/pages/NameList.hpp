#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "refdoc/pages/Page.hpp"

namespace refdoc {

struct ListedName {
    std::u16string name;
    std::u16string purpose;
};

/// Lays out names and purposes in two columns under a title, sorted without regard to case. Long
/// purposes continue below their own column; on a page of unlimited width each name has one line.
void addNameList(Page& page, std::u16string_view title, std::vector<ListedName> names,
                 std::size_t pageWidth);

} // namespace refdoc

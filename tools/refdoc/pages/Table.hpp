#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "refdoc/terminal/Terminal.hpp"

namespace refdoc {

/// A column of a table.
struct TableColumn {
    std::u16string title; ///< for terminals; a table whose titles are all empty has none
    /// It takes at most the page's width divided by this; 0 means whatever the others leave.
    std::size_t widthDivisor;
};

/// Rows of cells. On a terminal the first cell of a row is shown in bold and stays whole, the
/// others are broken to the width of their columns; where the page is too narrow for all of them,
/// the one that takes what is left has lines of its own. Anything but a terminal gets one line per
/// row, with tabs between the cells, nothing broken and no titles. One column has the divisor 0.
class Table {
public:
    using Row = std::vector<std::u16string>;

    explicit Table(std::vector<TableColumn> columns) : columns_(std::move(columns)) {}

    void add(Row cells);
    std::string text(const Terminal& terminal) const;

private:
    std::vector<TableColumn> columns_;
    std::vector<Row> rows_;
};

} // namespace refdoc

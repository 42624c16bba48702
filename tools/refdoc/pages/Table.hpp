#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "refdoc/terminal/Terminal.hpp"

namespace refdoc {

struct TableColumn {
    std::u16string title; ///< shown on terminals, unless all titles are empty
    /// The column takes at most the page's width divided by this; 0 means what the others leave.
    std::size_t widthDivisor;
};

/// A table of text, in which exactly one column has the divisor 0. On a terminal the first cell of
/// a row is bold and never broken, and the others are broken to the widths of their columns; on a
/// page too narrow for all columns, the flexible one goes below the others. Elsewhere each row is
/// one line with tabs between the cells, nothing is broken, and there are no titles.
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

#include "refdoc/pages/Table.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>

#include "refdoc/pages/Page.hpp"
#include "refdoc/text/Text.hpp"
#include "refdoc/text/TextLayout.hpp"

namespace refdoc {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrowestFlexibleColumn = 20;
constexpr std::size_t kStackedIndent = 4;

using Widths = std::vector<std::size_t>;
using Rows = std::vector<Table::Row>;

std::string tabSeparated(const Rows& rows) {
    std::string text;
    for (const Table::Row& row : rows) {
        for (std::size_t cell = 0; cell < row.size(); ++cell)
            text.append(cell == 0 ? "" : "\t").append(toUtf8(row[cell]));
        text += '\n';
    }
    return text;
}

std::size_t flexibleColumn(const std::vector<TableColumn>& columns) {
    const auto found = std::find_if(columns.begin(), columns.end(), [](const TableColumn& column) {
        return column.widthDivisor == 0;
    });
    return static_cast<std::size_t>(found - columns.begin());
}

/// The widths of all columns; 0 for the flexible one if the page is too narrow for it.
Widths columnWidths(const std::vector<TableColumn>& columns, const Rows& rows,
                    std::size_t pageWidth) {
    Widths widths;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const std::size_t divisor = columns[column].widthDivisor;
        std::size_t width = 0;
        for (const Table::Row& row : rows)
            width = std::max(width, divisor == 0 ? 0 : displayWidth(row[column]));
        widths.push_back(std::min(width, divisor == 0 ? 0 : pageWidth / divisor));
    }
    const std::size_t taken =
        std::accumulate(widths.begin(), widths.end(), kGap * (columns.size() - 1));
    if (taken + kNarrowestFlexibleColumn <= pageWidth)
        widths[flexibleColumn(columns)] = pageWidth - taken;
    return widths;
}

/// Lays out rows with their cells side by side.
class RowPrinter {
public:
    RowPrinter(Page& page, Widths widths) : page_(page), widths_(std::move(widths)) {}

    void print(const Table::Row& row) {
        std::vector<std::vector<std::u16string>> cells;
        std::size_t height = 1;
        for (std::size_t column = 0; column < row.size(); ++column) {
            cells.push_back(column == 0 ? std::vector{row[0]}
                                        : brokenCell(row[column], widths_[column]));
            height = std::max(height, cells.back().size());
        }
        if (displayWidth(row[0]) > widths_[0]) {
            page_.verbatim({{row[0], Style::Bold}}, 0);
            cells[0].clear();
        }
        for (std::size_t line = 0; line < height; ++line)
            printLine(cells, line);
    }

private:
    std::vector<std::u16string> brokenCell(const std::u16string& cell, std::size_t width) {
        std::vector<std::u16string> lines;
        for (const TextRange range : lineBreaker_.breakLines(cell, width, width))
            lines.push_back(cell.substr(range.begin, range.end - range.begin));
        return lines;
    }

    void printLine(const std::vector<std::vector<std::u16string>>& cells, std::size_t line) {
        StyledText text;
        std::size_t blanks = 0;
        for (std::size_t column = 0; column < cells.size(); ++column) {
            if (line < cells[column].size()) {
                const std::u16string& cell = cells[column][line];
                text.push_back({std::u16string(blanks, u' '), Style::Plain});
                text.push_back({cell, column == 0 ? Style::Bold : Style::Plain});
                blanks = kGap + std::max(widths_[column], displayWidth(cell)) - displayWidth(cell);
            } else {
                blanks += kGap + widths_[column];
            }
        }
        page_.verbatim(text, 0);
    }

    Page& page_;
    Widths widths_;
    LineBreaker lineBreaker_;
};

/// Lays out rows on a page too narrow for all columns: the flexible cell goes below the others.
class StackedRowPrinter {
public:
    StackedRowPrinter(Page& page, Widths widths, std::size_t flexible)
        : page_(page), flexible_(flexible), others_(page, without(std::move(widths), flexible)) {}

    void print(const Table::Row& row) {
        others_.print(without(row, flexible_));
        page_.paragraph(row[flexible_], kStackedIndent);
    }

private:
    template <typename Cells>
    static Cells without(Cells cells, std::size_t index) {
        cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(index));
        return cells;
    }

    Page& page_;
    std::size_t flexible_;
    RowPrinter others_;
};

} // namespace

void Table::add(Row cells) {
    for (std::u16string& cell : cells)
        cell = printable(cell);
    rows_.push_back(std::move(cells));
}

std::string Table::text(const Terminal& terminal) const {
    if (!terminal.interactive)
        return tabSeparated(rows_);
    Row titles;
    std::transform(columns_.begin(), columns_.end(), std::back_inserter(titles),
                   [](const TableColumn& column) { return column.title; });
    Rows rows = rows_;
    if (std::any_of(titles.begin(), titles.end(), [](const auto& title) { return !title.empty(); }))
        rows.insert(rows.begin(), titles);
    const Widths widths = columnWidths(columns_, rows, terminal.screenWidth);
    const std::size_t flexible = flexibleColumn(columns_);
    Page page({terminal.screenWidth, terminal.styled});
    const auto printAll = [&rows](auto printer) {
        for (const Row& row : rows)
            printer.print(row);
    };
    if (widths[flexible] > 0)
        printAll(RowPrinter(page, widths));
    else
        printAll(StackedRowPrinter(page, widths, flexible));
    return page.take();
}

} // namespace refdoc

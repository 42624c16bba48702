#pragma once

#include <cstddef>

namespace refdoc {

/// What standard output can show.
struct Terminal {
    bool interactive;        ///< whether it is a terminal at all
    bool styled;             ///< whether bold and underlined text is wanted and possible
    std::size_t width;       ///< for text
    std::size_t screenWidth; ///< for tables
};

/// The width for text is MANWIDTH if it is set; otherwise that of the terminal (COLUMNS, or what it
/// reports), but at most 100 columns, since longer lines read badly; otherwise 80. Tables may be as
/// wide as the terminal.
Terminal standardOutputTerminal();

} // namespace refdoc

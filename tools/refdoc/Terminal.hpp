#pragma once

#include <cstddef>

namespace refdoc {

/// What standard output can show.
struct Terminal {
    bool interactive; ///< whether it is a terminal at all
    bool styled;      ///< whether bold and underlined text is wanted and possible
    std::size_t width;
};

/// The width is what MANWIDTH says; else the terminal's (COLUMNS, or what it answers), but at most
/// 100 columns, since longer lines read badly; else 80.
Terminal standardOutputTerminal();

} // namespace refdoc

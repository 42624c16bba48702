#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace refdoc {

enum class ExitCode : int {
    Found = 0,
    NothingFound = 1, ///< or, for the check, errors found
    Failure = 2,      ///< wrong usage, or output that cannot be written
};

/// The options that all commands share, as typed on the command line, in UTF-8.
struct GlobalOptions {
    std::optional<std::string> root;
    std::optional<std::string> language;
    bool json = false;
    bool verbose = false;
};

/// An impossible request on the command line; the message is for the user.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace refdoc

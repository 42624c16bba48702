#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace refdoc {

enum class ExitCode : int {
    Found = 0,
    NothingFound = 1, ///< or errors, when these are looked for
    Failure = 2,      ///< wrong use, or output that cannot be written
};

/// What every command understands. Texts are as the command line has them, in UTF-8.
struct GlobalOptions {
    std::optional<std::string> root;
    std::optional<std::string> language;
    bool json = false;
    bool verbose = false;
};

/// The command line asks for something that cannot be; the message is for the user.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace refdoc

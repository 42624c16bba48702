#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace testsupport {

/// A program to run, with the arguments after its name.
struct ProcessCall {
    std::string program;
    std::vector<std::string> arguments;
    /// Changes to this process's environment; a variable without a value is taken away.
    std::map<std::string, std::optional<std::string>> environment{};
    /// Where standard output goes instead of into the result: a file, or nowhere at all ("").
    std::optional<std::string> standardOutput{};
    /// What the user types, for a program on a terminal.
    std::string typed{};
};

struct ProcessResult {
    int exitCode; ///< 128 and the signal's number for a process that a signal ended
    std::string output;
    std::string errors;
};

/// Runs a program with an empty standard input and waits for its end.
ProcessResult run(const ProcessCall& call);

/// Runs a program with a terminal of `columns` columns as its standard streams. The result's output
/// is what the terminal was sent, with the plain line feeds that the program wrote; what is typed
/// is not echoed.
ProcessResult runOnTerminal(const ProcessCall& call, unsigned short columns);

} // namespace testsupport

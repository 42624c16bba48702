#pragma once

namespace refdoc {

/// Parses the command line and runs the command that it names.
///
/// @return the exit code of the process.
int runCommandLine(int argc, char** argv);

} // namespace refdoc

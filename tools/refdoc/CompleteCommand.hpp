#pragma once

#include "refdoc/Command.hpp"

namespace refdoc {

/// `refdoc complete INDEX -- WORDS`: for shells, what the word at INDEX of a command line may
/// become. The command is hidden from users. One completion a line, with a tab and what it means
/// after it.
Command addCompleteCommand(CLI::App& application);

} // namespace refdoc

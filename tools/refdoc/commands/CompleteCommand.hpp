#pragma once

#include "refdoc/commands/Command.hpp"

namespace refdoc {

/// `refdoc complete [--bash] -- LINE [BREAKS]`: for shells, what the last word of an unfinished
/// command line may become. The command is hidden from users. One completion a line, with a tab and
/// what it means after it; a line without a tab where the name of a folder belongs. For bash each
/// stands as it must be inserted, given the characters at which bash breaks words.
Command addCompleteCommand(CLI::App& application);

} // namespace refdoc

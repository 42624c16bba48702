#pragma once

#include "refdoc/commands/Command.hpp"

namespace refdoc {

/// `refdoc complete [--bash] -- LINE [BREAKS]`: prints for shells how the last word of an
/// unfinished command line can be completed. The command is hidden from users. Each completion has
/// a line of its own, with its meaning after a tab; a line without a tab asks the shell to complete
/// the name of a folder. With `--bash`, completions are quoted as bash must insert them, given the
/// characters at which it breaks words.
Command addCompleteCommand(CLI::App& application);

} // namespace refdoc

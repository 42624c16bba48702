#pragma once

#include "refdoc/commands/Command.hpp"

namespace refdoc {

/// `refdoc lookup [PATTERN]`: lists the documented names that match.
Command addLookupCommand(CLI::App& application);

} // namespace refdoc

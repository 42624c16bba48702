#pragma once

#include "refdoc/commands/Command.hpp"

namespace refdoc {

/// `refdoc show [RESOURCE] [NAME]`: shows full reference entries.
Command addShowCommand(CLI::App& application);

} // namespace refdoc

#pragma once

#include "refdoc/commands/Command.hpp"

namespace refdoc {

/// `refdoc check [ROOT]`: reports what the library would silently lose, and where.
Command addCheckCommand(CLI::App& application);

} // namespace refdoc

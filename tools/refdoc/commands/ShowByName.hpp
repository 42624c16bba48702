#pragma once

#include <string>

#include "refdoc/host/Options.hpp"

namespace refdoc {

/// Shows the full entries of `name`, which is exactly one of the names in the lookup records. Where
/// several resources have it, the user chooses.
ExitCode showByName(const std::string& name, const GlobalOptions& options);

} // namespace refdoc

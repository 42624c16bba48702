#pragma once

#include "refdoc/Options.hpp"

namespace refdoc {

/// Makes this process the host of the library that `options` ask for: where the documentation is,
/// in which language, and what of the log is told on stderr.
///
/// @throws UsageError when there is no such folder or language.
void setUpHost(const GlobalOptions& options);

} // namespace refdoc

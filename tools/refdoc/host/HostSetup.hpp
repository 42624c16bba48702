#pragma once

#include <string>
#include <vector>

#include "environment/Services.hpp"
#include "refdoc/host/Options.hpp"

namespace refdoc {

/// The codes of the documentation languages, "en" first.
std::vector<std::string> supportedLanguages();

/// What the library asks of its host, as `options` want it: where the documentation is, and in
/// which language.
///
/// @throws UsageError when there is no such folder or language.
environment::Services hostServices(const GlobalOptions& options);

/// Makes this process the host of the library that `options` ask for, and tells the log, as much of
/// it as they want, on stderr.
///
/// @throws UsageError as above.
void setUpHost(const GlobalOptions& options);

} // namespace refdoc

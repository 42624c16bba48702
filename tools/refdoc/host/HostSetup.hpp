#pragma once

#include <string>
#include <vector>

#include "refdoc/host/Options.hpp"

namespace refdoc {

/// The codes of the documentation languages, "en" first.
std::vector<std::string> supportedLanguages();

/// Makes this process the library's host as `options` ask: where the documentation is, in which
/// language, and how much of the log goes to stderr. Each command calls this once, before it calls
/// the library.
///
/// @throws UsageError if the folder or language does not exist.
void setUpHost(const GlobalOptions& options);

} // namespace refdoc

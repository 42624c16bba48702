#pragma once

#include <string>
#include <vector>

#include "refdoc/host/Options.hpp"

namespace refdoc {

/// The codes of the documentation languages, "en" first.
std::vector<std::string> supportedLanguages();

/// Makes this process the host of the library that `options` ask for: where the documentation is,
/// in which language, and how much of the log goes to stderr. Each command does so once, before it
/// calls the library.
///
/// @throws UsageError when there is no such folder or language.
void setUpHost(const GlobalOptions& options);

} // namespace refdoc

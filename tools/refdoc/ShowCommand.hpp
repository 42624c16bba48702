#pragma once

#include "refdoc/Command.hpp"

namespace refdoc {

/// `refdoc show RESOURCE [NAME]`: the full reference entries of a resource.
Command addShowCommand(CLI::App& application);

} // namespace refdoc

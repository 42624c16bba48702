#pragma once

#include "refdoc/commands/Command.hpp"

namespace refdoc {

/// `refdoc products`: lists what is installed and what is documented.
Command addProductsCommand(CLI::App& application);

} // namespace refdoc

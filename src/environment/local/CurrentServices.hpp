#pragma once

#include <memory>

#include "environment/Services.hpp"

namespace environment::local {

/// The services in force, none of them empty. A snapshot: it stays whole when others are set.
std::shared_ptr<const Services> currentServices();

} // namespace environment::local

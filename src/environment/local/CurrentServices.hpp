#pragma once

#include <memory>

#include "environment/Services.hpp"

namespace environment::local {

/// The current services, none of them empty. A snapshot: it stays valid when others are set.
std::shared_ptr<const Services> currentServices();

} // namespace environment::local

#pragma once

#include <utility>

#include "environment/Services.hpp"

namespace testsupport {

/// Puts services in force for as long as it lives; afterwards the built-in ones are back.
class ScopedServices {
public:
    explicit ScopedServices(environment::Services services) {
        environment::setServices(std::move(services));
    }
    ScopedServices(const ScopedServices&) = delete;
    ScopedServices& operator=(const ScopedServices&) = delete;
    ~ScopedServices() { environment::resetServices(); }
};

} // namespace testsupport

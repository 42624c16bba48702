#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "environment/Diagnostics.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace testsupport {

inline constexpr const char* kChannel = "referenceApi::docparser";

/// What a test's own service throws.
struct ServiceFailure {};

inline environment::Services withDocDataRoot(std::function<std::u16string()> service) {
    environment::Services services;
    services.docDataRoot = std::move(service);
    return services;
}

inline environment::Services withDocLanguage(std::function<std::u16string()> service) {
    environment::Services services;
    services.docLanguage = std::move(service);
    return services;
}

/// Undoes all that a test changed in the process's state.
class LibraryFixture : public testing::Test {
protected:
    ~LibraryFixture() override {
        enableSeverities(foundation::log::kDefaultEnabledSeverities);
        environment::resetServices();
        reference::docparser::DocResourceParser::restoreDefaultSettings();
    }

    static void enableSeverities(std::uint32_t mask) {
        foundation::log::setEnabledSeverities(kChannel, mask);
    }
};

} // namespace testsupport

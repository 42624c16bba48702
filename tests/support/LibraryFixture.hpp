#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "environment/Diagnostics.hpp"
#include "environment/DocProducts.hpp"
#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace testsupport {

inline constexpr const char* kChannel = "referenceApi::docparser";

/// The exception of a test's own service.
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

/// The short names of the installed products, in order, each followed by a blank.
inline std::string namesOfProducts() {
    std::string names;
    const auto products = reference::docparser::DocResourceParser::getTopLevelProducts();
    for (const auto& product : *products)
        names += product->getShortName() + ' ';
    return names;
}

/// The names of the installed support packages, sorted, each followed by a blank.
inline std::string namesOfPackages() {
    std::string names;
    const auto packages = reference::docparser::DocResourceParser::getHardwareSupportPackages();
    for (const std::u16string& name : std::set(packages->begin(), packages->end()))
        names += fl::i18n::to_string(name) + ' ';
    return names;
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

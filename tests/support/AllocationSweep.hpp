#pragma once

#include <cstddef>
#include <functional>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/FaultFixture.hpp"
#include "support/HeapMonitor.hpp"

extern "C" [[gnu::weak]] int __lsan_do_recoverable_leak_check();

namespace testsupport {

/// Whether a function may return this, or leave it behind, after a failed allocation.
using Rule = std::function<bool(const std::string&)>;

inline Rule oneOf(std::set<std::string> texts) {
    return [texts = std::move(texts)](const std::string& text) { return texts.contains(text); };
}

inline std::string settings() {
    const auto roots = reference::docparser::DocResourceParser::getReferenceRoots();
    return fl::i18n::to_string(roots->referenceApiFolder) + ' ' + namesOfProducts() + "and " +
           namesOfPackages();
}

class AllocationSweep : public FaultFixture {
protected:
    using Use = std::function<std::string()>;

    void prepare() {
        // The size differs each time, so that the list of products is read again.
        root.writeFile("installedProducts.json", R"([{"shortName": "f"}, {"shortName": "g"}])" +
                                                     std::string(++round_ % 2, ' '));
        reference::docparser::DocResourceParser::restoreDefaultSettings();
        log.clear();
    }

    /// Makes the 1st, 2nd, 3rd ... allocation of `use` fail until a run completes. Each failure
    /// must lead to `std::bad_alloc` or to a result that `result` allows, and to settings that
    /// `state` allows. It must leave nothing else behind: the same call then returns what it did at
    /// first.
    void sweep(const char* name, const Use& use, const Rule& result, const Rule& state) {
        SCOPED_TRACE(name);
        prepare();
        const std::string whole = use();
        std::size_t failures = 0;
        for (const Failing failing : {Failing::Once, Failing::FromThereOn})
            for (std::size_t succeeding = 0; failOnce(use, result, succeeding, failing);
                 ++succeeding) {
                ++failures;
                ASSERT_TRUE(state(settings())) << settings() << ", allocation " << succeeding;
                reference::docparser::DocResourceParser::clearSupportPackageCache();
                ASSERT_EQ(use(), whole) << "allocation " << succeeding;
            }
        EXPECT_GT(failures, 0U);
        EXPECT_TRUE(__lsan_do_recoverable_leak_check == nullptr ||
                    __lsan_do_recoverable_leak_check() == 0);
    }

    bool failOnce(const Use& use, const Rule& result, std::size_t succeeding, Failing failing) {
        prepare();
        const DescriptorCheck descriptors;
        std::optional<std::string> text;
        bool hasStruck = false;
        {
            const AllocationFault fault(succeeding, failing);
            try {
                text = use();
            } catch (const std::bad_alloc&) {
            }
            hasStruck = fault.hasStruck();
        }
        EXPECT_TRUE(text ? result(*text) : hasStruck)
            << text.value_or("nothing") << ", allocation " << succeeding;
        return hasStruck;
    }

    Rule unchanged() {
        prepare();
        const std::string usual = settings();
        reference::docparser::DocResourceParser::clearSupportPackageCache();
        // An installation that cannot be listed counts as one without support packages.
        return oneOf({usual, usual.substr(0, usual.find("and ") + 4)});
    }

    /// The same for a function that returns one thing or throws.
    void sweep(const char* name, const Use& use) { sweep(name, use, oneOf({use()}), unchanged()); }

private:
    std::size_t round_ = 0;
};

} // namespace testsupport

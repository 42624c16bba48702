#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Process.hpp"
#include "support/ScopedRoot.hpp"

namespace testsupport {

/// Runs the built command-line client on a copy of the documentation root `tests/client/showcase`.
/// The products alpha, zeta and gamma (which has no documentation) and the support package AB are
/// installed; beta and the support package AC are documented, but not installed.
class Refdoc : public testing::Test {
protected:
    using Words = std::vector<std::string>;
    using Environment = std::map<std::string, std::optional<std::string>>;

    Refdoc();

    /// A run in English, without a pager and without the caller's terminal variables;
    /// `environment` overrides these defaults.
    ProcessCall call(Words arguments, Environment environment = {}) const;
    ProcessResult refdoc(Words arguments, Environment environment = {}) const;
    ProcessResult onTerminal(Words arguments, Environment environment = {},
                             unsigned short columns = 72) const;

    ScopedRoot root_;
};

} // namespace testsupport

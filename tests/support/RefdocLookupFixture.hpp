#pragma once

#include "support/RefdocFixture.hpp"

namespace testsupport {

/// The small root with lookup files beside it. Installed are the products alpha, zeta and gamma,
/// which documents nothing, and the support package AB; documented but not installed are beta and
/// the support package AC.
class RefdocLookup : public Refdoc {
protected:
    RefdocLookup();

    /// The first columns of what `refdoc lookup` prints, "name/product" and a blank for each line.
    std::string found(Words arguments) const;
};

} // namespace testsupport

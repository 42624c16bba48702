#pragma once

#include "support/RefdocFixture.hpp"

namespace testsupport {

/// The small root plus lookup files. The products alpha, zeta and gamma (which has no
/// documentation) and the support package AB are installed; beta and the support package AC are
/// documented, but not installed.
class RefdocLookup : public Refdoc {
protected:
    RefdocLookup();

    /// What `refdoc lookup` prints, shortened to "name/product" and a blank for each line.
    std::string found(Words arguments) const;
};

} // namespace testsupport

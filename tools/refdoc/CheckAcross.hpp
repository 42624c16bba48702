#pragma once

#include <boost/json/value.hpp>

#include "refdoc/CheckFiles.hpp"
#include "refdoc/CheckFinding.hpp"
#include "refdoc/CheckIndex.hpp"

namespace refdoc {

/// Tells the faults of a sound text that only show beside the other files of its root.
void checkAcross(const ResourceText& text, const boost::json::value& resource,
                 const CheckIndex& index, FindingList& findings);

} // namespace refdoc

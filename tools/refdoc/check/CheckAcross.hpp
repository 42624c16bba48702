#pragma once

#include <boost/json/value.hpp>

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/CheckIndex.hpp"
#include "refdoc/check/ResourceText.hpp"

namespace refdoc {

/// Tells what a sound text has that does not fit the other files of its root: localized things
/// without English ones, and links that lead nowhere.
void checkAcross(const ResourceText& text, const boost::json::value& resource,
                 const CheckIndex& index, FindingList& findings);

} // namespace refdoc

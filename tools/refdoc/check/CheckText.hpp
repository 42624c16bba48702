#pragma once

#include <boost/json/value.hpp>

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/ResourceText.hpp"

namespace refdoc {

/// Tells what is wrong with a text as such, whatever other files there are.
void checkText(const ResourceText& text, const boost::json::value& resource, FindingList& findings);

/// Gives the findings of a text their positions, and the names of the items they are about. Tells
/// repeated members too if it is asked to.
void locateFindings(const ResourceText& text, const boost::json::value& resource,
                    bool tellRepeatedMembers, FindingList& findings);

} // namespace refdoc

#pragma once

#include <boost/json/value.hpp>

#include "refdoc/check/CheckFinding.hpp"

namespace refdoc {

/// Tells the members of a sound resource that are not read where they stand and seem to be meant:
/// those whose names nearly are what the schema knows, and those that others keep from being read.
/// Any further members are an author's own business. Beyond a thousand unknown names none is told.
void checkMembers(const boost::json::value& schema, const boost::json::value& resource,
                  FindingList& findings);

} // namespace refdoc

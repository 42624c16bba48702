#pragma once

#include <string>
#include <vector>

#include <boost/json/value.hpp>

#include "refdoc/check/CheckFiles.hpp"
#include "refdoc/check/CheckFinding.hpp"

namespace refdoc {

/// A document of a resource: the product's own, or that of a support package.
struct ResourceDocument {
    const boost::json::value* value;
    std::string pointer;
    std::string key;
};

/// The documents that the library takes from a sound resource: of one key the first.
std::vector<ResourceDocument> documentsOf(const boost::json::value& resource);

/// Tells what is wrong with a text as such, whatever other files there are.
void checkText(const ResourceText& text, const boost::json::value& resource, FindingList& findings);

/// Gives the findings of a text their positions, and the names of the items they are about. Tells
/// repeated members too if it is asked to.
void locateFindings(const ResourceText& text, const boost::json::value& resource,
                    bool tellRepeatedMembers, FindingList& findings);

} // namespace refdoc

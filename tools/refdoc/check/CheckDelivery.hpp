#pragma once

#include <map>
#include <string>

#include <boost/json/value.hpp>

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/CheckIndex.hpp"
#include "refdoc/check/DeliveredLookups.hpp"
#include "refdoc/check/ResourceText.hpp"

namespace refdoc {

/// What readers get of all lookup files, by their languages.
using Deliveries = std::map<std::string, DeliveredLookups>;

/// Tells what readers miss of a sound text of a lookup file because of other ones of its root.
void checkDelivery(const ResourceText& text, const boost::json::value& resource,
                   const CheckIndex& index, const Deliveries& deliveries, FindingList& findings);

} // namespace refdoc

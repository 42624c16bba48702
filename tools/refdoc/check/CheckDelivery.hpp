#pragma once

#include <cstdint>

#include <boost/json/value.hpp>

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/CheckIndex.hpp"
#include "refdoc/check/LookupFates.hpp"
#include "refdoc/check/ResourceText.hpp"

namespace refdoc {

/// Tells what readers miss of a sound text of a lookup file because of other ones of its root.
///
/// @param number the text's in the index of lookups.
void checkDelivery(const ResourceText& text, std::uint32_t number,
                   const boost::json::value& resource, const CheckIndex& index,
                   const LookupFates& fates, FindingList& findings);

} // namespace refdoc

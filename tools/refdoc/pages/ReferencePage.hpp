#pragma once

#include <string_view>

#include "environment/ReferenceProperty.hpp"
#include "refdoc/pages/Page.hpp"
#include "reference/docparser/RefItem.hpp"

namespace refdoc {

/// Lays out a full reference entry, from the header line to the footer line.
void addReferencePage(Page& page, const reference::property::HeaderInfo& header,
                      const reference::docparser::RefItem& item);

/// A deprecation status in words; empty for an entry that is not deprecated.
std::u16string_view statusText(reference::property::DeprecationStatus status);

} // namespace refdoc

// Parses an input as a full reference file.

#include <string>

#include "ResourceChecks.hpp"
#include "Support.hpp"
#include "reference/docparser/RefItem.hpp"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::checkResource<reference::docparser::RefItem>(std::string(fuzz::textOf(data, size)));
    return 0;
}

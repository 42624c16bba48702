// Parses an input as a lookup file.

#include <string>

#include "ResourceChecks.hpp"
#include "Support.hpp"
#include "environment/ReferenceProperty.hpp"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::checkResource<reference::property::RefItemLookup>(std::string(fuzz::textOf(data, size)));
    return 0;
}

#pragma once

#include <cstdint>
#include <string>

#include "environment/Diagnostics.hpp"

namespace reference::docparser {

/// The library's one log channel, "referenceApi::docparser".
extern foundation::log::basic_diagnostic_logger<char>& docParserLogger;

/// Emits one record: `message` directly followed by `argument`. A disabled severity costs one bit
/// test.
void logRecord(std::uint32_t severity, const char* message, const std::u16string& argument);

} // namespace reference::docparser

#pragma once

#include <string>

#include "RecordReader.hpp"

/// The records of one resource file, built with JSON libraries in ways other than the library's.
namespace bench {

Lookups readLookupsWithBoostJson(const std::string& text);
RefItems readRefItemsWithBoostJson(const std::string& text);

/// The same with an arena for the tree.
Lookups readLookupsWithBoostJsonArena(const std::string& text);
RefItems readRefItemsWithBoostJsonArena(const std::string& text);

/// In situ: `text` is overwritten.
Lookups readLookupsWithRapidJson(std::string& text);
RefItems readRefItemsWithRapidJson(std::string& text);

/// On demand. `text` gets the padding that simdjson reads beyond the end.
Lookups readLookupsWithSimdjson(std::string& text);
RefItems readRefItemsWithSimdjson(std::string& text);

Lookups readLookupsWithNlohmann(const std::string& text);
RefItems readRefItemsWithNlohmann(const std::string& text);

} // namespace bench

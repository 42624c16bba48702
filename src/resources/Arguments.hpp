#pragma once

#include <string>
#include <vector>

#include <boost/json/object.hpp>

#include "reference/docparser/ParsingTools.hpp"
#include "reference/docparser/RefItem.hpp"

/// The argument-like lists of a reference item. Each reader takes the item object and the item's
/// href, with which the links of the arguments begin, and returns an empty list when the item lacks
/// the member.
namespace reference::docparser {

/// Reads "inputgroup". The groups of a "namevaluepairs" list replace the group that holds it.
std::vector<InputGroup>
parseInputGroups(const boost::json::object& item, const std::u16string& itemHref,
                 DocResourceParser::ParsingTools::StringParsingType nameParsing);

/// Reads "outputs".
std::vector<OutputArgument> parseOutputs(const boost::json::object& item,
                                         const std::u16string& itemHref);

/// Reads "parameters".
std::vector<ArgumentWithDefault> parseParameters(const boost::json::object& item,
                                                 const std::u16string& itemHref);

/// Reads "classpropertygroup".
std::vector<ClassPropertyGroup>
parseClassPropertyGroups(const boost::json::object& item, const std::u16string& itemHref,
                         DocResourceParser::ParsingTools::StringParsingType nameParsing);

} // namespace reference::docparser

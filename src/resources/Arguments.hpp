#pragma once

#include <string>
#include <vector>

#include <boost/json/object.hpp>

#include "reference/docparser/ParsingTools.hpp"
#include "reference/docparser/RefItem.hpp"

/// The argument-like lists of a reference item. Each reader takes the item object and the item's
/// href, from which the links of the arguments are made, and gives an empty list when the item
/// lacks the member.
namespace reference::docparser {

/// From "inputgroup". The groups of a "namevaluepairs" list take the place of its holder.
std::vector<InputGroup>
parseInputGroups(const boost::json::object& item, const std::u16string& itemHref,
                 DocResourceParser::ParsingTools::StringParsingType nameParsing);

/// From "outputs".
std::vector<OutputArgument> parseOutputs(const boost::json::object& item,
                                         const std::u16string& itemHref);

/// From "parameters".
std::vector<ArgumentWithDefault> parseParameters(const boost::json::object& item,
                                                 const std::u16string& itemHref);

/// From "classpropertygroup".
std::vector<ClassPropertyGroup>
parseClassPropertyGroups(const boost::json::object& item, const std::u16string& itemHref,
                         DocResourceParser::ParsingTools::StringParsingType nameParsing);

} // namespace reference::docparser

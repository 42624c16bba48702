#pragma once

// What surrounds the fragments of the documentation in a host's source file.

#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/parse.hpp>

#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace docs = reference::docparser::DocResourceParser;
using fl::i18n::to_string;

struct HostSettings {
    std::u16string language() const;
};

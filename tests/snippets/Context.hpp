#pragma once

// What surrounds the fragments of the documentation in a host's source file.

// Nothing more: what a fragment needs it includes itself.

#include <string>

#include "environment/PathAndText.hpp"

namespace reference::docparser::DocResourceParser {}
namespace docs = reference::docparser::DocResourceParser;
using fl::i18n::to_string;

struct HostSettings {
    std::u16string language() const;
};

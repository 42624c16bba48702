#pragma once

#include "support/ScopedRoot.hpp"

namespace testsupport {

/// Documentation of all kinds, sound and broken, in English, Japanese and German.
void writeDocumentation(const ScopedRoot& root);

/// Calls every exported function, with the built-in services for what is installed at `root` and
/// without any documentation. Returns whether all gave what `writeDocumentation` wrote.
bool useTheWholeLibrary(const ScopedRoot& root);

} // namespace testsupport

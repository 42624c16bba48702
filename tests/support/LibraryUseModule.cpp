// The module that UnloadTest loads: the library, and a program's use of it.

#include "environment/Diagnostics.hpp"
#include "support/LibraryUse.hpp"

#pragma GCC visibility push(default)
extern "C" {

void writeDocumentationAt(const testsupport::ScopedRoot& root) {
    testsupport::writeDocumentation(root);
}

bool useTheWholeLibraryAt(const testsupport::ScopedRoot& root) {
    foundation::log::setEnabledSeverities("referenceApi::docparser", ~0U);
    return testsupport::useTheWholeLibrary(root);
}

} // extern "C"
#pragma GCC visibility pop

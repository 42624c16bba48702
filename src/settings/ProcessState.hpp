#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "environment/DocProducts.hpp"
#include "reference/docparser/DocResourceParser.hpp"

/// The library's only mutable state: three immutable snapshots, each behind a mutex of its own. Two
/// are here; the third, the names of the support packages, is in `SupportPackageCache.hpp`.
///
/// Lock order: a function that needs both `referenceRootsMutex` and `topLevelProductsMutex` takes
/// them by deadlock-avoiding acquisition. The mutex of the support packages may be taken inside the
/// two, or together with `topLevelProductsMutex` by the same acquisition; neither of the others is
/// taken inside it. Readers copy a snapshot under its mutex and work on the copy without it.
namespace reference::docparser {

using doc_products_shared::TopLevelProductList;
using TopLevelProductsProvider = std::function<TopLevelProductList()>;
using RootsSnapshot = std::shared_ptr<const DocResourceParser::ReferenceRoots>;

/// Guards `topLevelProductsProvider`, and is held while the provider runs.
extern std::mutex& topLevelProductsMutex;
/// Lists the installed top-level products; never empty.
extern TopLevelProductsProvider& topLevelProductsProvider;

/// Guards `currentReferenceRoots`, and is held while roots are made.
extern std::mutex& referenceRootsMutex;
/// Null until the first question or setting.
extern RootsSnapshot& currentReferenceRoots;

/// Asks the documentation product cache, anew at each call.
TopLevelProductList defaultTopLevelProductsProvider();

} // namespace reference::docparser

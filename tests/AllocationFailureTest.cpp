#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <string>

#include <boost/json/serialize.hpp>
#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/AllocationSweep.hpp"
#include "support/OpenPackage.hpp"
#include "support/RefItemDescription.hpp"

// libzip loses the state of a layer, 216 bytes at most, when the layer itself cannot be allocated.
// Only an unwinder that sees libzip's own frames finds that function in a stack.
#pragma GCC visibility push(default)
extern "C" const char* __lsan_default_suppressions() {
    return "leak:zip_fopen_index_encrypted";
}
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0:malloc_context_size=8:print_suppressions=0";
}
#pragma GCC visibility pop

namespace reference::docparser {
namespace {

using namespace DocResourceParser;
using fl::i18n::to_string;
using testsupport::oneOf;
using testsupport::Rule;
using AllocationFailureTest = testsupport::AllocationSweep;

std::string textOf(const std::map<std::u16string, DocResource<RefItem>>& resource) {
    std::string text;
    for (const auto& [key, document] : resource) {
        text += to_string(key) + ':' + to_string(document.header.getProductName());
        for (const auto& [href, items] : document.items)
            for (const RefItem& item : items)
                text += ' ' + boost::json::serialize(testsupport::describe(item));
    }
    return text;
}

TEST_F(AllocationFailureTest, ResourceFilesAreWholeOrLostEachForItself) {
    enableSeverities(16 | 512);
    const auto read = [] { return textOf(getResourceFile(u"abc")); };
    const std::string whole = read();
    language = u"en";
    const std::string english = read();
    language = u"ja";
    root.remove(root.referenceFolder() / "abc.json");
    const std::string japanese = read();
    root.referenceFile("abc.json", kReferenceText);
    ASSERT_EQ(read(), whole);
    EXPECT_EQ((std::set{whole, english, japanese}.size()), 3U);
    sweep("getResourceFile", read, oneOf({whole, english, japanese, ""}), unchanged());
}

TEST_F(AllocationFailureTest, ACollectionHasWholeLocalizedDocumentsAndNothingThatNoFileHas) {
    enableSeverities(16 | 512);
    std::set<std::string> known = testsupport::partsOf(collect());
    for (const auto& [name, notation] : kLookupFiles) {
        writeLookupFiles(name);
        known.merge(testsupport::partsOf(collect()));
    }
    writeLookupFiles("");
    // The result has all of a localized document, header and lookups, or none of it.
    const std::set<std::string> localizedDocuments[] = {
        {"f:Ja", "f n=1@Ja"},
        {"p:Ja", "p k=1@Ja"},
        {"g:ZipJa", "g n=1@ZipJa", "g m=1@ZipJa", "g k=1@ZipJa"},
    };
    const Rule isWhole = [&](const std::string& notation) {
        const auto parts = testsupport::partsOf(notation);
        const auto isThere = [&parts](const std::string& part) { return parts.contains(part); };
        return std::includes(known.begin(), known.end(), parts.begin(), parts.end()) &&
               std::ranges::all_of(localizedDocuments, [&](const auto& document) {
                   return std::ranges::all_of(document, isThere) ||
                          std::ranges::none_of(document, isThere);
               });
    };
    for (const char* broken : {"+f:Zip", "+f:Ja n=1@En", "+f:En n=1@Ja", "+g:ZipJa n=1@ZipJa"})
        ASSERT_FALSE(isWhole(broken)) << broken;
    ASSERT_TRUE(isWhole(collect()));
    sweep(
        "getResourceLookupFiles", [] { return collect(); }, isWhole, unchanged());
}

TEST_F(AllocationFailureTest, FilesAreReadWholeOrNotAtAll) {
    enableSeverities(16 | 512);
    const std::u16string path = root.pathOf("docCatalog/referenceapi/abc_ja.json");
    const std::string content = openAndReadFile(path);
    ASSERT_FALSE(content.empty());
    const ProductPathData product(u"a", false, path);
    sweep(
        "path", [&] { return openAndReadFile(path); }, oneOf({content, ""}), unchanged());
    sweep(
        "product", [&] { return openAndReadFile(product); }, oneOf({content, ""}), unchanged());
    const auto readLeaf = [this] {
        testsupport::OpenPackage package(root.pathOf("docCatalog/referenceapi_lookup/b.zip"));
        return openAndReadFile(
            ProductZipData(u"x", false, package.leaves().front(), &package.manager()));
    };
    sweep(
        "entry",
        [&]() -> std::string {
            try {
                return readLeaf();
            } catch (const std::runtime_error&) {
                return {}; // libzip reports its own failures to allocate in this way
            }
        },
        oneOf({readLeaf(), ""}), unchanged());
}

} // namespace
} // namespace reference::docparser

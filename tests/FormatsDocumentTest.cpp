// The examples in docs/formats.md are what authors copy: each must be read in full.

#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "reference/docparser/RefItem.hpp"
#include "resources/ReferenceResource.hpp"
#include "settings/ProcessState.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ScopedServices.hpp"

namespace reference::docparser {
namespace {

std::string readExample(const std::string& kind) {
    std::ifstream file(DOCPARSER_FORMATS_DOCUMENT);
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    const std::string fence = "```json " + kind + "\n";
    const std::size_t first = page.find(fence) + fence.size();
    return page.substr(first, page.find("```", first) - first);
}

TEST(FormatsDocumentTest, ExamplesAreReadInFull) {
    const auto reference = parseReferenceResource<RefItem>(readExample("reference"));
    const RefItem& item = reference.at(u"alpha").items.at(u"alpha/spin.html").at(0);
    EXPECT_EQ(item.inputGroups.at(1).inputs.at(0).info.name, u"Axis");
    EXPECT_EQ(item.outputs.size() + item.classPropertyGroups.size() + item.seeAlso.size() +
                  item.examples.size() + item.parameters.size(),
              5U);

    const auto lookup =
        parseReferenceResource<reference::property::RefItemLookup>(readExample("lookup"));
    EXPECT_TRUE(lookup.at(u"alpha").items.at(u"twist").at(0).isDeprecated());
    EXPECT_TRUE(lookup.contains(u"ALBOARD"));

    const testsupport::ScopedRoot root;
    root.writeFile("installedProducts.json", readExample("products"));
    testsupport::ScopedServices services({.docDataRoot = [&root] { return root.path(); }});
    EXPECT_EQ(defaultTopLevelProductsProvider()->at(0)->getAltShortName(), "alphatb");
}

} // namespace
} // namespace reference::docparser

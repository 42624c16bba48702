// The examples in docs/formats.md are what authors copy: each must be read in full.

#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "reference/docparser/DocResourceParser.hpp"
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
    const std::size_t start = page.find(fence);
    if (start == std::string::npos)
        return {};
    const std::size_t first = start + fence.size();
    return page.substr(first, page.find("```", first) - first);
}

} // namespace

TEST(FormatsDocumentTest, ReferenceExampleIsReadInFull) {
    testsupport::ScopedRoot root;
    root.referenceFile("alpha.json", readExample("reference"));
    DocResourceParser::setReferenceRoot(root.path());

    const auto documents = DocResourceParser::getResourceFile(u"alpha");

    ASSERT_EQ(documents.count(u"alpha"), 1U);
    const RefItem& item = documents.at(u"alpha").items.at(u"alpha/spin.html").at(0);
    EXPECT_EQ(item.inputGroups.at(1).inputs.at(0).info.name, u"Axis");
    EXPECT_TRUE(item.inputGroups.at(1).inputs.at(0).isNameValuePair);
    EXPECT_EQ(item.outputs.size() + item.classPropertyGroups.size() + item.seeAlso.size() +
                  item.examples.size() + item.parameters.size(),
              5U);
}

TEST(FormatsDocumentTest, LookupExampleIsReadInFull) {
    const auto documents =
        parseReferenceResource<reference::property::RefItemLookup>(readExample("lookup"));

    ASSERT_EQ(documents.size(), 2U);
    EXPECT_TRUE(documents.at(u"alpha").items.at(u"twist").at(0).isDeprecated());
    EXPECT_EQ(documents.at(u"ALBOARD").items.at(u"flash").at(0).getHref(), u"alpha/flash.html");
}

TEST(FormatsDocumentTest, ProductsExampleIsReadInFull) {
    testsupport::ScopedRoot root;
    root.writeFile("installedProducts.json", readExample("products"));
    testsupport::ScopedServices services({.docDataRoot = [&root] { return root.path(); }});

    const auto products = defaultTopLevelProductsProvider();

    ASSERT_EQ(products->size(), 1U);
    EXPECT_EQ(products->front()->getAltShortName(), "alphatb");
}

} // namespace reference::docparser

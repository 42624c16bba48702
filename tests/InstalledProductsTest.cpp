#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "environment/DocProducts.hpp"
#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/LibraryFixture.hpp"
#include "support/ScopedServices.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

using doc_products_shared::TopLevelDocProduct;
using environment::TopLevelProductList;
using fl::i18n::to_string;
using testsupport::makeProducts;
using testsupport::namesOfPackages;
using testsupport::namesOfProducts;
using testsupport::ServiceFailure;
using Names = std::unordered_set<std::u16string>;

/// The host's services, and a record of the calls: "r" for the root of the support packages, "s"
/// for the support packages under it, "p" for the products. A service in `failing` throws.
class InstalledProductsTest : public testsupport::LibraryFixture {
protected:
    InstalledProductsTest() {
        environment::Services services;
        services.docDataRoot = [] { return std::u16string(u"/data"); };
        services.supportPackageRoot = [this] {
            ask('r');
            return std::u16string(u"/packages");
        };
        services.installedHardwareSupportPackages = [this](const std::u16string& root) {
            EXPECT_EQ(root, u"/packages");
            ask('s');
            return packages;
        };
        services.installedTopLevelDocProducts = [this] {
            ask('p');
            return products;
        };
        environment::setServices(services);
    }

    std::string takeAsked() { return std::exchange(asked, ""); }

    TopLevelProductList products = makeProducts({"host"});
    Names packages = {u"board"};
    std::string failing;

private:
    void ask(char service) {
        asked += service;
        if (failing.find(service) != failing.npos)
            throw ServiceFailure();
    }

    std::string asked;
};

TEST_F(InstalledProductsTest, AKeyIsAShortNameOrASupportPackage) {
    using namespace std::string_literals;
    setTestProducts({u"alpha", u"é\U0001F600", u"\uFFFD", u"both"},
                    {u"board", u"x\uFFFD", u"both"});
    const std::pair<std::u16string, bool> cases[] = {
        {u"alpha", true},   {u"Alpha", false},    {u"alph", false},  {u"alphab", false},
        {u"", false},       {u"alpha\0"s, false}, {u"board", true},  {u"BOARD", false},
        {u"board ", false}, {u"both", true},      {u"é", false},     {u"é\U0001F600", true},
        {u"É", false},      {u"\uFFFD", true},    {u"\xD800", true}, {u"x\uFFFD", true},
        {u"x\xD800", false}};
    for (const auto& [key, installed] : cases)
        EXPECT_EQ(isProductInstalled(key), installed) << to_string(key);
    setTestProducts({u""}, {});
    EXPECT_TRUE(isProductInstalled(u""));
    setTestProducts({}, {u""});
    EXPECT_TRUE(isProductInstalled(u""));
}

TEST_F(InstalledProductsTest, AMissingListOrProductIsNone) {
    auto withNull = *makeProducts({"host", "host"});
    withNull.front() = nullptr;
    for (const TopLevelProductList& list :
         {TopLevelProductList(), makeProducts({}),
          TopLevelProductList(std::make_shared<const decltype(withNull)>(withNull))}) {
        products = list;
        EXPECT_EQ(getTopLevelProducts(), list);
        EXPECT_EQ(isProductInstalled(u"host"), list && !list->empty());
        EXPECT_FALSE(isProductInstalled(u"other"));
        EXPECT_TRUE(isProductInstalled(u"board"));
    }
}

TEST_F(InstalledProductsTest, SupportPackagesAreKeptUntilTheyAreCleared) {
    for (void (*clear)() : {clearSupportPackageCache, restoreDefaultSettings}) {
        packages = {u"a"};
        const auto first = getHardwareSupportPackages();
        packages = {u"b", u"c"};
        EXPECT_EQ(getHardwareSupportPackages(), first);
        EXPECT_EQ(takeAsked(), "rs");
        clear();
        EXPECT_EQ(takeAsked(), "");
        const auto second = getHardwareSupportPackages();
        EXPECT_EQ(*second, (Names{u"b", u"c"}));
        EXPECT_EQ(*first, Names{u"a"});
        EXPECT_EQ(takeAsked(), "rs");
        clear();
    }
}

TEST_F(InstalledProductsTest, AnInstallationThatCannotBeListedIsEmptyAndKept) {
    failing = "s";
    const auto none = getHardwareSupportPackages();
    ASSERT_NE(none, nullptr);
    EXPECT_TRUE(none->empty());
    EXPECT_EQ(takeAsked(), "rs");
    failing = "";
    EXPECT_EQ(getHardwareSupportPackages(), none);
    EXPECT_FALSE(isProductInstalled(u"board"));
    EXPECT_EQ(takeAsked(), "p");
    clearSupportPackageCache();
    EXPECT_TRUE(isProductInstalled(u"board"));
}

TEST_F(InstalledProductsTest, WhatAServiceThrowsPassesThroughAndLeavesNothingLockedOrKept) {
    failing = "r";
    EXPECT_THROW(getHardwareSupportPackages(), ServiceFailure);
    EXPECT_THROW(isProductInstalled(u"host"), ServiceFailure);
    EXPECT_EQ(takeAsked(), "rr");
    failing = "p";
    EXPECT_THROW(getTopLevelProducts(), ServiceFailure);
    EXPECT_THROW(isProductInstalled(u"board"), ServiceFailure);
    EXPECT_EQ(takeAsked(), "prsp");
    failing = "";
    std::thread([] {
        EXPECT_TRUE(isProductInstalled(u"host"));
        EXPECT_TRUE(isProductInstalled(u"board"));
    }).join();
}

TEST_F(InstalledProductsTest, TestProductsHaveFixedTextsAndOneList) {
    setTestProducts({u"A", u"Bé", u"A"}, {});
    const auto list = getTopLevelProducts();
    EXPECT_EQ(getTopLevelProducts(), list);
    const std::vector<std::string> shortNames = {"A", "Bé", "A"};
    ASSERT_EQ(list->size(), shortNames.size());
    for (std::size_t i = 0; i < shortNames.size(); ++i) {
        const TopLevelDocProduct& product = *(*list)[i];
        EXPECT_EQ(product.getShortName(), shortNames[i]);
        EXPECT_EQ(product.getDisplayName(), "testDisplayName");
        EXPECT_EQ(product.getHelpLocation(), "testHelpLocation");
        EXPECT_EQ(product.getBaseCode(), "testBaseCode");
        EXPECT_EQ(product.getAltShortName(), "testAltShortName");
        EXPECT_EQ(product.getAvailability(), "testAvailability");
    }
    EXPECT_EQ(takeAsked(), "");
    setTestProducts({}, {u"X"});
    EXPECT_EQ(list->size(), 3U);
}

TEST_F(InstalledProductsTest, TestProductsStandUntilTheyAreReplacedOrForgotten) {
    const std::map<char, std::function<void()>> functions = {
        {'a',
         [] {
             setTestProducts({u"B", u"A"}, {u"X", u"X"});
         }},
        {'b',
         [] {
             setTestProducts({u"C"}, {u"Y", u"Z"});
         }},
        {'e', [] { setTestProducts({}, {}); }},
        {'c', clearSupportPackageCache},
        {'d', restoreDefaultSettings},
        {'r', [] { setReferenceRoot(u"/set"); }},
    };
    struct Case {
        std::string operations, state, services;
    };
    for (const auto& [operations, state, services] : {
             Case{"", "host | board ", "prs"},
             Case{"a", "B A | X ", ""},
             Case{"e", "| ", ""},
             Case{"ab", "C | Y Z ", ""},
             Case{"ae", "| ", ""},
             Case{"ar", "B A | X ", ""},
             Case{"ac", "B A | board ", "rs"},
             Case{"ec", "| board ", "rs"},
             Case{"acb", "C | Y Z ", ""},
             Case{"ad", "host | board ", "prs"},
             Case{"adc", "host | board ", "prs"},
             Case{"ada", "B A | X ", ""},
             Case{"abcd", "host | board ", "prs"},
         }) {
        restoreDefaultSettings();
        for (const char operation : operations)
            functions.at(operation)();
        EXPECT_EQ(takeAsked(), "") << operations;
        std::string names = namesOfProducts();
        names += "| " + namesOfPackages();
        EXPECT_EQ(names, state) << operations;
        EXPECT_EQ(takeAsked(), services) << operations;
        EXPECT_EQ(getReferenceRoots()->referenceRoot,
                  operations.find('r') == operations.npos ? u"/data" : u"/set")
            << operations;
    }
}

} // namespace
} // namespace reference::docparser::DocResourceParser

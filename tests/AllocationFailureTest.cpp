#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "environment/ZipPackages.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "support/FaultFixture.hpp"
#include "support/HeapMonitor.hpp"
#include "support/RefItemDescription.hpp"

extern "C" [[gnu::weak]] int __lsan_do_recoverable_leak_check();

// libzip loses the state of a layer, 216 bytes at most, when the layer itself cannot be allocated.
// That function is found in a stack only by looking through libzip's own frames.
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
using namespace DocResourceParser::ParsingTools;
using fl::i18n::to_string;
using testsupport::AllocationFault;
using testsupport::Failing;

/// What a function may give, or leave behind, after an allocation failed and it did not throw.
using Rule = std::function<bool(const std::string&)>;

Rule oneOf(std::set<std::string> texts) {
    return [texts = std::move(texts)](const std::string& text) { return texts.contains(text); };
}

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

std::string textOf(const ProductFiles& files) {
    std::string text;
    for (const auto* list : {&files.first, &files.second})
        for (const ProductPathData& file : *list)
            text += to_string(file.getName()) + (file.isNonEnglishLocale() ? "+ " : " ");
    return text;
}

std::string namesOfProducts() {
    std::string names;
    const auto products = getTopLevelProducts();
    for (const auto& product : *products)
        names += product->getShortName() + ' ';
    return names;
}

std::string namesOfPackages() {
    std::string names;
    const auto packages = getHardwareSupportPackages();
    for (const std::u16string& name : std::set(packages->begin(), packages->end()))
        names += to_string(name) + ' ';
    return names;
}

/// A file that cannot be opened for want of memory the built-in list of products reports as such.
std::string askWhether(const std::u16string& name) {
    try {
        return isProductInstalled(name) ? "yes" : "no";
    } catch (const std::runtime_error&) {
        return "not told";
    }
}

std::string settings() {
    return to_string(getReferenceRoots()->referenceApiFolder) + ' ' + namesOfProducts() + "and " +
           namesOfPackages();
}

class AllocationFailureTest : public testsupport::FaultFixture {
protected:
    using Use = std::function<std::string()>;

    void prepare() {
        // Of another size each time, so that the list of products is read anew.
        root.writeFile("installedProducts.json", R"([{"shortName": "f"}, {"shortName": "g"}])" +
                                                     std::string(++round_ % 2, ' '));
        restoreDefaultSettings();
        log.clear();
    }

    /// Lets the 1st, 2nd, 3rd ... allocation of `use` fail until a run completes. Each failure
    /// leads to `std::bad_alloc` or to a result within `result`, leaves the settings within
    /// `state`, and nothing behind: the same call then gives all that it gave at first.
    void sweep(const char* name, const Use& use, const Rule& result, const Rule& state) {
        SCOPED_TRACE(name);
        prepare();
        const std::string whole = use();
        std::size_t failures = 0;
        for (const Failing failing : {Failing::Once, Failing::FromThereOn})
            for (std::size_t succeeding = 0; failOnce(use, result, succeeding, failing);
                 ++succeeding) {
                ++failures;
                ASSERT_TRUE(state(settings())) << settings() << ", allocation " << succeeding;
                clearSupportPackageCache();
                ASSERT_EQ(use(), whole) << "allocation " << succeeding;
            }
        EXPECT_GT(failures, 0U);
        EXPECT_TRUE(__lsan_do_recoverable_leak_check == nullptr ||
                    __lsan_do_recoverable_leak_check() == 0);
    }

    bool failOnce(const Use& use, const Rule& result, std::size_t succeeding, Failing failing) {
        prepare();
        const testsupport::DescriptorCheck descriptors;
        std::optional<std::string> text;
        bool hasStruck = false;
        {
            const AllocationFault fault(succeeding, failing);
            try {
                text = use();
            } catch (const std::bad_alloc&) {
            }
            hasStruck = fault.hasStruck();
        }
        EXPECT_TRUE(text ? result(*text) : hasStruck)
            << text.value_or("nothing") << ", allocation " << succeeding;
        return hasStruck;
    }

    Rule unchanged() {
        prepare();
        const std::string usual = settings();
        clearSupportPackageCache();
        // An installation that cannot be listed counts as one without support packages.
        return oneOf({usual, usual.substr(0, usual.find("and ") + 4)});
    }

    /// For a function that gives one thing or throws.
    void sweep(const char* name, const Use& use) { sweep(name, use, oneOf({use()}), unchanged()); }

private:
    std::size_t round_ = 0;
};

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

TEST_F(AllocationFailureTest, ACollectionHasNothingThatNoFileHas) {
    enableSeverities(16 | 512);
    std::set<std::string> known = testsupport::partsOf(collect());
    for (const auto& [name, notation] : kLookupFiles) {
        writeLookupFiles(name);
        known.merge(testsupport::partsOf(collect()));
    }
    writeLookupFiles("");
    const Rule isKnown = [&known](const std::string& notation) {
        const auto parts = testsupport::partsOf(notation);
        return std::includes(known.begin(), known.end(), parts.begin(), parts.end());
    };
    ASSERT_FALSE(isKnown("+f:Zip")) << "the rule tells nothing apart";
    sweep(
        "getResourceLookupFiles", [] { return collect(); }, isKnown, unchanged());
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
        opc::FileSystemOpsSelector operations(
            storage::microservicestoragesystem::GetStorageSystemReference());
        opc::zippackage::ZipPhysicalPackage physical(
            root.pathOf("docCatalog/referenceapi_lookup/b.zip"), operations, true);
        opc::model::Package package(physical);
        opc::zqservices::FileSystemManager manager(package, operations);
        package.open(opc::interfaces::OpenMode::Read);
        return openAndReadFile(
            ProductZipData(u"x", false, manager.getAllLeafs().front(), &manager));
    };
    sweep(
        "leaf",
        [&]() -> std::string {
            try {
                return readLeaf();
            } catch (const std::runtime_error&) {
                return {}; // libzip reports its own failures to allocate in this way
            }
        },
        oneOf({readLeaf(), ""}), unchanged());
}

TEST_F(AllocationFailureTest, SettingsChangeWholeOrNotAtAll) {
    const std::string state = settings();
    const std::u16string folder = u"/a folder whose name takes memory of its own";
    const auto after = [](const auto& change) {
        change();
        std::string text = settings();
        restoreDefaultSettings();
        return text;
    };
    const Rule before = unchanged();
    const auto beforeOr = [&](const std::string& changed) -> Rule {
        return [=](const std::string& text) { return before(text) || text == changed; };
    };
    const auto sweepChange = [&](const char* name, const std::function<void()>& change,
                                 const Rule& rule) {
        sweep(
            name,
            [&] {
                change();
                return std::string();
            },
            oneOf({""}), rule);
    };
    const auto setRoot = [&] { setReferenceRoot(folder); };
    sweepChange("setReferenceRoot", setRoot, [&](const std::string& text) {
        return before(text) || text.starts_with(to_string(folder));
    });
    sweepChange(
        "restoreDefaultSettings", [] { restoreDefaultSettings(); }, before);
    sweepChange(
        "clearSupportPackageCache and what fills it",
        [] {
            clearSupportPackageCache();
            getHardwareSupportPackages();
        },
        before);
    // The products are in place before the set of support packages is made.
    const auto setProducts = [] {
        setTestProducts({u"one", u"another with a long name"}, {u"two", u"two", u"three"});
    };
    const std::string changed = after(setProducts);
    const std::string half =
        changed.substr(0, changed.find("and ")) + state.substr(state.find("and "));
    sweepChange("setTestProducts", setProducts,
                [&](const std::string& text) { return beforeOr(changed)(text) || text == half; });
}

TEST_F(AllocationFailureTest, WhatIsInstalledIsToldOrThrows) {
    sweep("getReferenceRoots", [] { return to_string(getReferenceRoots()->referenceRoot); });
    sweep("ReferenceRoots", [] { return to_string(ReferenceRoots().referenceApiFolder); });
    sweep(
        "getTopLevelProducts",
        []() -> std::string {
            try {
                return namesOfProducts();
            } catch (const std::runtime_error&) {
                return "not told";
            }
        },
        oneOf({"f g ", "not told"}), unchanged());
    sweep("getHardwareSupportPackages", namesOfPackages, oneOf({"p ", ""}), unchanged());
    sweep(
        "isProductInstalled, by a product", [] { return askWhether(u"g"); },
        oneOf({"yes", "not told"}), unchanged());
    sweep(
        "isProductInstalled, by a support package", [] { return askWhether(u"p"); },
        oneOf({"yes", "no", "not told"}), unchanged());
    sweep("getSupportedDocLocales", [] {
        std::string text;
        for (const std::u16string& locale : getSupportedDocLocales())
            text += to_string(locale);
        return text;
    });
    language = u"a language of a long name";
    sweep("getCurrentLocale", [] { return to_string(getCurrentLocale()); });
    language = u"ja";
    sweep("isValidFilename", [] {
        const fl::filesystem::upath path(u"a long name of a file that takes memory.json");
        return std::string(isValidFilename(path) ? "yes" : "no");
    });
    // The walk ends at the failure: a, a_ja, b.zip, broken.json, broken.zip, c.
    const Rule walked = oneOf({"", "a ", "a a_ja+ ", "a a_ja+ b ", "a a_ja+ broken b ",
                               "a a_ja+ broken b broken ", "a a_ja+ broken c b broken "});
    sweep(
        "getAllProducts",
        [this] {
            return textOf(getAllProducts(root.lookupFolder().u16string(), {u"_ja"}, u"_ja"));
        },
        walked, unchanged());
}

TEST_F(AllocationFailureTest, JsonToolsGiveTheWholeTextOrThrow) {
    const auto document = boost::json::parse(R"({"plain": "a text too long for a string object",
        "umlauts": "äöü äöü äöü äöü äöü äöü", "productName": "Ü", "baseCode": "",
        "helpFolder": "a folder with a long name", "helpLocation": "", "list": []})");
    const boost::json::object& object = document.as_object();
    const auto& plain = object.at("plain");
    using enum StringParsingType;
    sweep("ASCII", [&] { return to_string(getFluString(plain, Ascii)); });
    sweep("UTF-8", [&] { return to_string(getFluString(object, "umlauts", Utf8)); });
    sweep("fallback", [&] { return to_string(getFluStringWithFallback(object, "plain", Utf8)); });
    sweep("header", [&] { return to_string(getHeaderInfo(document).getHelpFolder()); });
    // The exception itself is an allocation that may fail, but never is lost.
    const auto caught = [](const auto& use) -> std::string {
        try {
            use();
            return "nothing";
        } catch (const DocParserException& failure) {
            return failure.what();
        }
    };
    sweep("missing text", [&] { return caught([&] { getFluString(object, "no", Utf8); }); });
    sweep("missing array", [&] { return caught([&] { getJsonArray(document, "no"); }); });
    sweep("no array", [&] { return caught([&] { getJsonArray(plain); }); });
    sweep("copies", [&] {
        return caught([] {
            const std::unique_ptr<const boost::exception_detail::clone_base> copy(
                DocParserException().clone());
            copy->rethrow();
        });
    });
}

} // namespace
} // namespace reference::docparser

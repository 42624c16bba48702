#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "support/AllocationSweep.hpp"

namespace reference::docparser {
namespace {

using namespace DocResourceParser;
using namespace DocResourceParser::ParsingTools;
using fl::i18n::to_string;
using testsupport::namesOfPackages;
using testsupport::namesOfProducts;
using testsupport::oneOf;
using testsupport::Rule;
using testsupport::settings;
using SettingsFailureTest = testsupport::AllocationSweep;

std::string textOf(const ProductFiles& files) {
    std::string text;
    for (const auto* list : {&files.first, &files.second})
        for (const ProductPathData& file : *list)
            text += to_string(file.getName()) + (file.isNonEnglishLocale() ? "+ " : " ");
    return text;
}

/// When memory runs out as the list of products is opened, the built-in service reports the file as
/// one that cannot be read.
std::string askWhether(const std::u16string& name) {
    try {
        return isProductInstalled(name) ? "yes" : "no";
    } catch (const std::runtime_error&) {
        return "no answer";
    }
}

TEST_F(SettingsFailureTest, SettingsChangeWholeOrNotAtAll) {
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
    // The products are set before the set of support packages is made.
    const auto setProducts = [] {
        setTestProducts({u"one", u"another with a long name"}, {u"two", u"two", u"three"});
    };
    const std::string changed = after(setProducts);
    const std::string half =
        changed.substr(0, changed.find("and ")) + state.substr(state.find("and "));
    sweepChange("setTestProducts", setProducts,
                [&](const std::string& text) { return beforeOr(changed)(text) || text == half; });
}

TEST_F(SettingsFailureTest, WhatIsInstalledIsKnownOrThrows) {
    sweep("getReferenceRoots", [] { return to_string(getReferenceRoots()->referenceRoot); });
    sweep("ReferenceRoots", [] { return to_string(ReferenceRoots().referenceApiFolder); });
    sweep(
        "getTopLevelProducts",
        []() -> std::string {
            try {
                return namesOfProducts();
            } catch (const std::runtime_error&) {
                return "no answer";
            }
        },
        oneOf({"f g ", "no answer"}), unchanged());
    sweep("getHardwareSupportPackages", namesOfPackages, oneOf({"p ", ""}), unchanged());
    sweep(
        "isProductInstalled, by a product", [] { return askWhether(u"g"); },
        oneOf({"yes", "no answer"}), unchanged());
    sweep(
        "isProductInstalled, by a support package", [] { return askWhether(u"p"); },
        oneOf({"yes", "no", "no answer"}), unchanged());
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

TEST_F(SettingsFailureTest, JsonToolsGiveTheWholeTextOrThrow) {
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
    // The allocation of the exception itself may fail, but the exception is never lost.
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

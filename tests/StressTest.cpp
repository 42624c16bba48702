#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <iostream>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "environment/DocProducts.hpp"
#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "support/LibraryFixture.hpp"
#include "support/LogCapture.hpp"
#include "support/LookupFixture.hpp"
#include "support/NumberedRoot.hpp"
#include "support/ResourceNotation.hpp"

namespace reference::docparser {
namespace {

using namespace DocResourceParser;
using namespace DocResourceParser::ParsingTools;
using fl::i18n::to_string;
using testing::AnyOf;
using testsupport::NumberedRoot;
using testsupport::referenceText;
using testsupport::ServiceFailure;

constexpr int kThreads = 8;
const std::vector<std::string> kLanguages = {"en", "ja", "de"};
const std::vector<std::u16string> kSuffixes = {u"_ja", u"_de"};

/// The services' answers to this thread: services run in the thread that asks.
struct Answers {
    std::string language;
    int failures = 0;
};
thread_local Answers answers;
thread_local std::minstd_rand randomNumbers;

unsigned int randomBelow(unsigned int limit) {
    return static_cast<unsigned int>(randomNumbers() % limit);
}

void failNowAndThen() {
    if (randomBelow(20) == 0) {
        ++answers.failures;
        throw ServiceFailure();
    }
}

/// A host whose answers differ from one question to the next: "always" is installed in all of them,
/// "never" in none.
environment::Services makeServices(const std::u16string& root) {
    using Names = std::unordered_set<std::u16string>;
    environment::Services services;
    services.docDataRoot = [root] {
        failNowAndThen();
        return root;
    };
    services.supportedDocLanguages = [] {
        failNowAndThen();
        return std::vector<std::u16string>{u"ja", u"en", u"de"};
    };
    services.docLanguage = [] {
        failNowAndThen();
        answers.language = kLanguages[randomBelow(3)];
        return std::u16string(answers.language.begin(), answers.language.end());
    };
    services.installedTopLevelDocProducts = [] {
        failNowAndThen();
        return randomBelow(2) == 0 ? testsupport::makeProducts({"always"})
                                   : testsupport::makeProducts({"first", "always"});
    };
    services.supportPackageRoot = [] {
        failNowAndThen();
        return std::u16string(u"/packages");
    };
    services.installedHardwareSupportPackages = [](const std::u16string& folder) {
        EXPECT_EQ(folder, u"/packages");
        failNowAndThen();
        return randomBelow(2) == 0 ? Names{u"p"} : Names{u"first", u"p"};
    };
    return services;
}

class StressTest : public testsupport::LibraryFixture {
protected:
    StressTest() {
        environment::setServices(makeServices(roots[0].path()));
        setReferenceRoot(roots[0].path());
    }

    /// Every exported function and every change that a host may make.
    std::vector<std::function<void()>> actions() {
        return {
            [this] { checkRoots(*getReferenceRoots()); },
            [this] { checkRoots(ReferenceRoots()); },
            [this] { setReferenceRoot(roots[randomBelow(2)].path()); },
            [] { clearSupportPackageCache(); },
            [] { restoreDefaultSettings(); },
            [] {
                setTestProducts({u"first", u"always"}, {u"x"});
            },
            [] {
                setTestProducts({u"second", u"second", u"always"}, {u"y", u"z"});
            },
            [this] { environment::setServices(makeServices(roots[randomBelow(2)].path())); },
            [this] { changeSeverities(); },
            [] { checkProducts(); },
            [] { checkSupportPackages(); },
            [] { EXPECT_TRUE(isProductInstalled(u"always")); },
            [] { EXPECT_FALSE(isProductInstalled(u"never")); },
            [this] { checkCollection(); },
            [this] { checkResource(); },
            [this] { roots[randomBelow(2)].checkFiles(); },
            [this] { checkTools(); },
            [] { EXPECT_EQ(getSupportedDocLocales(), kSuffixes); },
            [] { EXPECT_EQ(to_string(getCurrentLocale()), answers.language); },
        };
    }

    void checkRoots(const ReferenceRoots& current) {
        const std::u16string& root = current.referenceRoot;
        EXPECT_TRUE(root == roots[0].path() || root == roots[1].path()) << to_string(root);
        EXPECT_EQ(current.referenceApiFolder, root + u"/docCatalog/referenceapi");
        EXPECT_EQ(current.referenceApiLookupFolder, root + u"/docCatalog/referenceapi_lookup");
    }

    void changeSeverities() {
        enableSeverities(randomBelow(2) == 0 ? 512 : 16 | 512);
        for (const std::string& message : log.messages())
            EXPECT_TRUE(message.starts_with("Reading file: ") &&
                        (message.ends_with(".json") || message.size() < 20))
                << message;
        log.clear();
    }

    static void checkProducts() {
        EXPECT_THAT(testsupport::namesOfProducts(),
                    AnyOf("always ", "first always ", "second second always "));
    }

    static void checkSupportPackages() {
        // It is empty when the service failed.
        EXPECT_THAT(testsupport::namesOfPackages(), AnyOf("", "p ", "first p ", "x ", "y z "));
    }

    void checkCollection() {
        LookupResources resources = getResourceLookupFiles();
        EXPECT_FALSE(resources.second.contains(u"always"));
        EXPECT_FALSE(resources.first.contains(u"never"));
        EXPECT_LE(resources.first.count(u"first") + resources.second.count(u"first"), 1U);
        resources.first.merge(resources.second);
        std::string notation = testsupport::notationOf(resources);
        std::erase(notation, '+');
        const bool withFailures = answers.failures > 0;
        EXPECT_TRUE(roots[0].collections(answers.language, withFailures).contains(notation) ||
                    roots[1].collections(answers.language, withFailures).contains(notation))
            << answers.language << ", " << answers.failures << " failures: " << notation;
    }

    void checkResource() {
        const std::string notation = testsupport::notationOf(getResourceFile(u"abc"));
        EXPECT_TRUE(notation == roots[0].resource(answers.language) ||
                    notation == roots[1].resource(answers.language))
            << answers.language << ": " << notation;
    }

    void checkTools() const {
        EXPECT_EQ(getHeaderInfo(document).getHelpFolder(), u"f");
        EXPECT_EQ(getFluString(document.at("productName"), StringParsingType::Utf8), u"\u00E4");
        const auto& object = document.as_object();
        EXPECT_EQ(getFluString(object, "productName", StringParsingType::Ascii), u"\u00C3\u00A4");
        EXPECT_EQ(getFluStringWithFallback(object, "none", StringParsingType::Utf8), u"");
        EXPECT_EQ(getJsonArray(document, "refItems").size(), 1U);
        EXPECT_EQ(&getJsonArray(document.at("refItems")), &getJsonArray(document, "refItems"));
        EXPECT_THROW(getJsonArray(document), DocParserException);
        EXPECT_TRUE(isValidFilename(fl::filesystem::upath(u"a" + kDotJsonExt)));
        EXPECT_FALSE(isValidFilename(fl::filesystem::upath(u"a." + kEnglishLocale)));
    }

    std::array<NumberedRoot, 2> roots{NumberedRoot("1"), NumberedRoot("2")};
    const boost::json::value document = boost::json::parse(referenceText("f:\u00E4 a=1"));
    testsupport::LogCapture log;
};

/// An action may throw only what a service has thrown.
void run(const std::function<void()>& action) {
    answers = {};
    try {
        action();
    } catch (const ServiceFailure&) {
        EXPECT_GT(answers.failures, 0);
    }
}

TEST_F(StressTest, EveryResultIsOfOneStateAndEveryExceptionOfAService) {
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(DOCPARSER_STRESS_SECONDS);
    const auto everything = actions();
    std::atomic<unsigned long> rounds = 0;
    {
        std::vector<std::jthread> threads;
        for (unsigned int seed = 1; seed <= kThreads; ++seed)
            threads.emplace_back([&, seed] {
                randomNumbers.seed(seed);
                for (; std::chrono::steady_clock::now() < end; ++rounds)
                    run(everything[randomBelow(static_cast<unsigned int>(everything.size()))]);
            });
    }
    std::cout << "[   rounds ] " << rounds << '\n';
    EXPECT_GT(rounds, everything.size() * kThreads);
}

} // namespace
} // namespace reference::docparser

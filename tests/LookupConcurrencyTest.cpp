#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "environment/DocProducts.hpp"
#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/LookupFixture.hpp"
#include "support/ResourceNotation.hpp"
#include "support/ScopedRoot.hpp"

namespace reference::docparser {
namespace {

using namespace DocResourceParser;
using fl::i18n::to_string;

constexpr int kRounds = 500;

/// Two roots that differ in every text, and three states of what is installed: "always" is in each
/// of them, "never" in none.
class LookupConcurrencyTest : public testsupport::LookupFixture {
protected:
    LookupConcurrencyTest() {
        for (const auto& [place, n] : {std::pair(&root, "1"), std::pair(&other, "2")}) {
            const std::string english = std::string("En") + n;
            const std::string japanese = std::string("Ja") + n;
            place->lookupFile("a.json", testsupport::lookupText("always:" + english + " n=1,2"));
            place->lookupFile("a_ja.json", testsupport::lookupText("always:" + japanese + " n=1"));
            testsupport::ZipFile()
                .add("b.json", testsupport::lookupText("never:" + english + " n=1,2"))
                .add("b_ja.json", testsupport::lookupText("never:" + japanese + " n=1"))
                .write(place->lookupFolder() / "b.zip");
            place->lookupFile("c.json", testsupport::lookupText("first:" + english + " n=1"));
            place->referenceFile("abc.json", testsupport::referenceText("f:" + english + " a=1"));
        }
        environment::Services services = host();
        services.installedTopLevelDocProducts = [] {
            return testsupport::makeProducts({"always"});
        };
        environment::setServices(services);
    }

    testsupport::ScopedRoot other;
};

void changeSettings(const std::u16string& anotherRoot) {
    for (int round = 0; round < kRounds; ++round) {
        setTestProducts({u"first", u"always"}, {u"x"});
        setReferenceRoot(anotherRoot);
        clearSupportPackageCache();
        setTestProducts({u"second", u"second", u"always"}, {u"y", u"z"});
        restoreDefaultSettings();
    }
}

void expectOneOf(const std::set<std::string>& states, const std::string& state) {
    EXPECT_TRUE(states.contains(state)) << state;
}

void checkSettings() {
    for (int round = 0; round < 4 * kRounds; ++round) {
        std::string names;
        const auto products = getTopLevelProducts();
        for (const auto& product : *products)
            names += product->getShortName() + ' ';
        expectOneOf({"always ", "first always ", "second second always "}, names);
        const auto packages = getHardwareSupportPackages();
        names.clear();
        for (const std::u16string& name : std::set(packages->begin(), packages->end()))
            names += to_string(name) + ' ';
        expectOneOf({"p ", "x ", "y z "}, names);
        EXPECT_TRUE(isProductInstalled(u"always"));
        EXPECT_FALSE(isProductInstalled(u"never"));
    }
}

void checkCollections() {
    for (int round = 0; round < kRounds; ++round) {
        LookupResources resources = getResourceLookupFiles();
        // Installed or not, and so in the one map or the other, but never in both.
        EXPECT_EQ(resources.first.count(u"first") + resources.second.count(u"first"), 1U);
        resources.first.merge(resources.second);
        expectOneOf({"+always:Ja1 n=1@Ja1,2@En1 | +first:En1 n=1@En1 | +never:Ja1 n=1@Ja1,2@En1",
                     "+always:Ja2 n=1@Ja2,2@En2 | +first:En2 n=1@En2 | +never:Ja2 n=1@Ja2,2@En2"},
                    testsupport::notationOf(resources));
        expectOneOf({"f:En1 a=1", "f:En2 a=1"}, testsupport::notationOf(getResourceFile(u"abc")));
    }
}

TEST_F(LookupConcurrencyTest, EveryResultIsOneOfTheStatesThatWereSet) {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back(changeSettings, other.path());
        threads.emplace_back(checkSettings);
        threads.emplace_back(checkCollections);
    }
}

} // namespace
} // namespace reference::docparser

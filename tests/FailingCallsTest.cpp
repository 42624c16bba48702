#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/FaultFixture.hpp"
#include "support/FaultyCalls.hpp"
#include "support/ResourceNotation.hpp"

namespace reference::docparser {
namespace {

using namespace DocResourceParser;
namespace fs = std::filesystem;
using testsupport::CallFault;
using testsupport::FaultyCall;
using testsupport::partsOf;

/// How often each call has failed.
using Failures = std::map<std::string, int>;
using Check = std::function<void(const std::string& call, const std::string& result)>;

class FailingCallsTest : public testsupport::FaultFixture {
protected:
    /// Makes the 1st, 2nd, 3rd ... call of `use` fail in this way, until a run completes.
    static Failures sweep(
        CallFault fault, const std::function<std::string()>& use, const Check& check,
        const std::function<void()>& prepare = [] {}) {
        prepare();
        const std::string whole = use();
        Failures failures;
        for (std::size_t succeeding = 0;; ++succeeding) {
            SCOPED_TRACE(succeeding);
            std::string result;
            const char* call = nullptr;
            prepare();
            {
                const testsupport::DescriptorCheck descriptors;
                const FaultyCall faulty(succeeding, fault);
                result = use();
                call = faulty.name();
            }
            EXPECT_EQ(use(), whole);
            if (call == nullptr)
                return failures;
            ++failures[call];
            check(call, result);
        }
    }

    /// The collections without one file, without one entry, and without the package.
    std::set<std::string> collectionsLackingOne() const {
        std::set<std::string> collections;
        for (const auto& [name, notation] : kLookupFiles) {
            writeLookupFiles(name);
            collections.insert(collect());
        }
        writeLookupFiles(kPackage);
        collections.insert(collect());
        writeLookupFiles("");
        return collections;
    }
};

TEST_F(FailingCallsTest, AFileThatFailsCostsThatFileAndNoOther) {
    environment::setServices(host());
    // The kind of such an entry must be looked up.
    fs::rename(root.lookupFolder() / "c.json", root.nativePathOf("c.json"));
    fs::create_symlink(root.nativePathOf("c.json"), root.lookupFolder() / "c.json");
    const std::string whole = collect();
    std::set<std::string> ofFolder;
    std::set<std::string> ofFiles;
    const Failures failures = sweep(
        CallFault::Error, [] { return collect(); },
        [&](const std::string& call, const std::string& result) {
            const bool isOfFolder = call == "opendir" || call.starts_with("readdir");
            (isOfFolder ? ofFolder : ofFiles).insert(result);
        });
    const std::set<std::string> lackingOne = collectionsLackingOne();
    EXPECT_EQ(lackingOne.size(), kLookupFiles.size() + 1);
    // Some failure loses each of them; a failure to size or close a broken file loses none.
    ofFiles.erase(whole);
    EXPECT_EQ(ofFiles, lackingOne);
    for (const char* call : {"opendir", "readdir", "fstatat", "stat", "open", "fstat", "pread"})
        EXPECT_TRUE(failures.contains(call)) << call;

    // Entries that were read before the folder failed count.
    EXPECT_TRUE(ofFolder.contains(""));
    EXPECT_GT(ofFolder.size(), 2U);
    std::set<std::string> known = partsOf(whole);
    for (const std::string& collection : lackingOne)
        known.merge(partsOf(collection));
    for (const std::string& result : ofFolder) {
        const auto parts = partsOf(result);
        EXPECT_TRUE(std::includes(known.begin(), known.end(), parts.begin(), parts.end()))
            << result;
    }
}

TEST_F(FailingCallsTest, AFileIsReadByAsFewCallsAsCanBe) {
    const fs::path file = root.nativePathOf("file");
    const auto read = [&] { return openAndReadFile(file.u16string()); };
    const struct {
        std::uintmax_t size; // all but the beginning is one hole
        Failures calls;
    } rows[] = {
        {3, {{"stat", 1}, {"open", 1}, {"fstat", 1}, {"pread", 1}}},
        {65 << 20, {{"stat", 1}, {"open", 1}, {"fstat", 1}, {"lseek", 2}, {"pread", 1}}},
    };
    for (const auto& [size, calls] : rows) {
        std::ofstream(file) << std::string(std::min<std::uintmax_t>(size, 2 << 20), 'x');
        fs::resize_file(file, size);
        const auto check = [count = size](const std::string& call, const std::string& result) {
            EXPECT_TRUE(call != "pread" || result == std::string(count, '\0'));
        };
        EXPECT_EQ(sweep(CallFault::Error, read, check), calls) << size;
    }
}

TEST_F(FailingCallsTest, ACallThatIsInterruptedOrComesShortOrTooEarlyIsRepeated) {
    const auto use = [] { return collect() + testsupport::notationOf(getResourceFile(u"abc")); };
    const std::string whole = use();
    for (const auto& [fault, struck] : {std::pair(CallFault::Interrupt, "pread"),
                                        {CallFault::Short, "pread"},
                                        {CallFault::Leased, "open"}}) {
        const Failures failures =
            sweep(fault, use, [&](const std::string& call, const std::string& result) {
                EXPECT_EQ(result, whole) << call;
            });
        EXPECT_TRUE(failures.contains(struck)) << struck;
    }
}

TEST_F(FailingCallsTest, OneLanguageOfAResourceFailsWithoutTheOther) {
    const auto read = [] { return testsupport::notationOf(getResourceFile(u"abc")); };
    ASSERT_EQ(read(), "f:Ja a=1 b=4 | p:Ja c=1 d=English");
    std::set<std::string> seen;
    sweep(CallFault::Error, read,
          [&](const std::string&, const std::string& result) { seen.insert(result); });
    EXPECT_EQ(seen, (std::set<std::string>{"f:Ja a=1 b=4 | p:Ja c=1",
                                           "f:En a=English | p:Pack d=English"}));
}

TEST_F(FailingCallsTest, AnInstallationThatCannotBeReadThrowsOrHasNoSupportPackages) {
    const auto use = []() -> std::string {
        clearSupportPackageCache();
        try {
            return isProductInstalled(u"p") ? "yes" : "no";
        } catch (const std::exception&) {
            return "throws";
        }
    };
    std::set<std::string> seen;
    std::string text = R"([{"shortName": "f"}])";
    sweep(
        CallFault::Error, use,
        [&seen](const std::string&, const std::string& result) { seen.insert(result); },
        // The size differs each time, so that the file is read again.
        [&] { root.writeFile("installedProducts.json", text += ' '); });
    EXPECT_EQ(seen, (std::set<std::string>{"no", "throws"}));
}

} // namespace
} // namespace reference::docparser

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>
#include <boost/json/value.hpp>
#include <boost/log/attributes/attribute_value_set.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core/core.hpp>
#include <gtest/gtest.h>

#include "environment/Diagnostics.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "support/LibraryFixture.hpp"
#include "support/LogCapture.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ScopedServices.hpp"

namespace reference::docparser {
namespace {

using namespace DocResourceParser;
using testsupport::kChannel;
using testsupport::LogRecord;
using testsupport::ScopedServices;
using testsupport::ServiceFailure;
using testsupport::withDocDataRoot;

constexpr const char* kExceptionText = "resource::docparser::DocParserException";

void raise() {
    ParsingTools::getJsonArray(boost::json::value(nullptr));
}

template <typename Handled>
bool isCaughtAs() {
    try {
        raise();
    } catch (const Handled&) {
        return true;
    } catch (...) {
    }
    return false;
}

TEST(DocParserExceptionTest, OnlyItsOwnBasesCatchIt) {
    EXPECT_TRUE(isCaughtAs<DocParserException>());
    EXPECT_TRUE(isCaughtAs<foundation::core::except::IInternalException>());
    EXPECT_TRUE(isCaughtAs<foundation::core::except::IException>());
    EXPECT_TRUE(isCaughtAs<boost::exception>());
    EXPECT_TRUE(isCaughtAs<boost::exception_detail::clone_base>());
    EXPECT_FALSE(isCaughtAs<std::exception>());
    try {
        raise();
    } catch (const DocParserException& exception) {
        EXPECT_STREQ(exception.what(), kExceptionText);
        EXPECT_EQ(boost::get_error_info<boost::throw_function>(exception), nullptr);
        EXPECT_EQ(boost::get_error_info<boost::throw_line>(exception), nullptr);
        EXPECT_EQ(exception.ToUstringImpl(), u"resource::docparser::DocParserException");
        EXPECT_EQ(exception.convert_str(std::string("\xFF")), u"\uFFFD");
        EXPECT_EQ(exception.convert_str(std::u16string(u"text")), u"text");
    }
}

TEST(DocParserExceptionTest, AllCopiesShareTheErrorInformation) {
    using FileName = boost::error_info<struct FileNameTag, std::string>;
    DocParserException original;
    original << FileName("abc.json");
    const std::string* const shared = boost::get_error_info<FileName>(original);
    ASSERT_NE(shared, nullptr);

    const auto expectCopy = [&](const DocParserException& copy, const char* how) {
        EXPECT_NE(&copy, &original) << how;
        EXPECT_EQ(boost::get_error_info<FileName>(copy), shared) << how;
        EXPECT_STREQ(copy.what(), kExceptionText) << how;
    };
    DocParserException assigned;
    assigned = original;
    expectCopy(assigned, "assignment");
    const boost::exception_detail::clone_base& base = original;
    const std::unique_ptr<const boost::exception_detail::clone_base> clone(base.clone());
    ASSERT_NE(dynamic_cast<const DocParserException*>(clone.get()), nullptr);
    expectCopy(dynamic_cast<const DocParserException&>(*clone), "clone");
    try {
        clone->rethrow();
        ADD_FAILURE() << "nothing was raised again";
    } catch (const DocParserException& raisedAgain) {
        EXPECT_NE(static_cast<const void*>(&raisedAgain), dynamic_cast<const void*>(clone.get()));
        expectCopy(raisedAgain, "rethrow");
    }
}

class DiagnosticLogTest : public testsupport::LibraryFixture {
protected:
    ~DiagnosticLogTest() override {
        boost::log::core::get()->set_logging_enabled(true);
        boost::log::core::get()->reset_filter();
    }
};

using ReferenceRootsTest = testsupport::LibraryFixture;

TEST_F(DiagnosticLogTest, RecordsPassTheMaskTheCoreAndItsFilter) {
    const testsupport::ScopedRoot root;
    const std::string folder = root.nativePathOf("").string();
    const LogRecord reading{"Reading file: " + folder, kChannel, 16};
    const LogRecord problem{"Problem reading JSON file: " + folder, kChannel, 512};
    struct Case {
        std::uint32_t mask;
        bool coreEnabled;
        int filtered;
        std::vector<LogRecord> records;
    };
    for (const Case& row : {
             Case{16 | 512, true, 0, {reading, problem}},
             Case{16, true, 0, {reading}},
             Case{512, true, 0, {problem}},
             Case{foundation::log::kDefaultEnabledSeverities, true, 0, {problem}},
             Case{~(16U | 512U), true, 0, {}},
             Case{16 | 512, false, 0, {}},
             Case{16 | 512, true, 512, {reading}},
             Case{16 | 512, true, 16, {problem}},
         }) {
        enableSeverities(row.mask);
        boost::log::core::get()->set_logging_enabled(row.coreEnabled);
        boost::log::core::get()->set_filter([&](const boost::log::attribute_value_set& values) {
            return boost::log::extract_or_default<int>("Severity", values, 0) != row.filtered;
        });
        const testsupport::LogCapture log;
        EXPECT_EQ(openAndReadFile(root.pathOf("")), "");
        EXPECT_EQ(log.records(), row.records)
            << "mask " << row.mask << ", core " << row.coreEnabled << ", filter " << row.filtered;
    }
}

void expectRoots(const ReferenceRoots& roots, const std::u16string& root) {
    EXPECT_EQ(roots.referenceRoot, root);
    EXPECT_EQ(roots.referenceApiLookupFolder, root + u"/docCatalog/referenceapi_lookup");
    EXPECT_EQ(roots.referenceApiFolder, root + u"/docCatalog/referenceapi");
}

TEST_F(ReferenceRootsTest, TheRootIsTakenAsItStands) {
    for (const char16_t* root : {u"/data", u"/data/", u"", u"../日本/.", u"\xD800"}) {
        expectRoots(ReferenceRoots(root), root);
        setReferenceRoot(root);
        expectRoots(*getReferenceRoots(), root);
    }
}

TEST_F(ReferenceRootsTest, SnapshotsOutliveTheirReplacement) {
    int calls = 0;
    const ScopedServices services(withDocDataRoot([&] {
        ++calls;
        return std::u16string(calls == 1 ? u"/default" : u"/another");
    }));
    setReferenceRoot(u"/first");
    const auto first = getReferenceRoots();
    clearSupportPackageCache();
    EXPECT_EQ(getReferenceRoots(), first);
    setReferenceRoot(u"/second");
    const auto second = getReferenceRoots();
    EXPECT_EQ(calls, 0);
    restoreDefaultSettings();
    expectRoots(*first, u"/first");
    expectRoots(*second, u"/second");
    expectRoots(*getReferenceRoots(), u"/default");
    EXPECT_EQ(getReferenceRoots(), getReferenceRoots());
    EXPECT_EQ(calls, 1);
    expectRoots(ReferenceRoots(), u"/another");
}

TEST_F(ReferenceRootsTest, AFailingServiceLeavesAllAsItIsAndNothingLocked) {
    setReferenceRoot(u"/kept");
    setTestProducts({u"A"}, {u"X"});
    const auto roots = getReferenceRoots();
    const auto products = getTopLevelProducts();
    const auto packages = getHardwareSupportPackages();
    {
        const ScopedServices services(
            withDocDataRoot([]() -> std::u16string { throw ServiceFailure(); }));
        EXPECT_THROW(restoreDefaultSettings(), ServiceFailure);
        EXPECT_THROW(ReferenceRoots(), ServiceFailure);
        EXPECT_EQ(getReferenceRoots(), roots);
        EXPECT_EQ(getTopLevelProducts(), products);
        EXPECT_EQ(getHardwareSupportPackages(), packages);
    }
    std::thread(restoreDefaultSettings).join();
    EXPECT_NE(getReferenceRoots()->referenceRoot, u"/kept");
    EXPECT_NE(getTopLevelProducts(), products);
    EXPECT_FALSE(getHardwareSupportPackages()->contains(u"X"));
}

// Runs in a process of its own, in which no roots have been made yet.
[[noreturn]] void useRootsForTheFirstTime() {
    int calls = 0;
    environment::Services services = withDocDataRoot([&]() -> std::u16string {
        if (++calls <= 3)
            throw ServiceFailure();
        return u"/data";
    });
    // The roots are taken first.
    services.docLanguage = []() -> std::u16string { throw 1; };
    services.supportedDocLanguages = []() -> std::vector<std::u16string> { throw 2; };
    environment::setServices(services);
    EXPECT_THROW(getReferenceRoots(), ServiceFailure);
    EXPECT_THROW(getResourceFile(u"abc"), ServiceFailure);
    EXPECT_THROW(getResourceLookupFiles(), ServiceFailure);
    const auto roots = getReferenceRoots();
    expectRoots(*roots, u"/data");
    EXPECT_EQ(getReferenceRoots(), roots);
    EXPECT_EQ(calls, 4);
    environment::resetServices();
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

TEST_F(ReferenceRootsTest, TheFirstQuestionMakesTheDefaultRootsAndMayFail) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(useRootsForTheFirstTime(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace reference::docparser

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <latch>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

#include <dlfcn.h>
#include <unistd.h>

#include <boost/exception/exception.hpp>
#include <boost/json/value.hpp>

#include <gtest/gtest.h>

#include "environment/DocProducts.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/ScopedRoot.hpp"

namespace reference::docparser {
namespace {

using DocResourceParser::ReferenceRoots;
using Products = std::vector<std::shared_ptr<const doc_products_shared::TopLevelDocProduct>>;

constexpr const char* kGetReferenceRoots =
    "_ZN9reference9docparser17DocResourceParser17getReferenceRootsEv";
constexpr const char* kGetTopLevelProducts =
    "_ZN9reference9docparser17DocResourceParser19getTopLevelProductsEv";
constexpr const char* kGetHardwareSupportPackages =
    "_ZN9reference9docparser17DocResourceParser26getHardwareSupportPackagesB5cxx11Ev";
constexpr const char* kSetTestProducts =
    "_ZN9reference9docparser17DocResourceParser15setTestProductsERKSt6vectorINSt7__cxx1112basic_"
    "stringIDsSt11char_traitsIDsESaIDsEEESaIS8_EESC_";
constexpr const char* kRestoreDefaultSettings =
    "_ZN9reference9docparser17DocResourceParser22restoreDefaultSettingsEv";
constexpr const char* kGetHeaderInfo =
    "_ZN9reference9docparser17DocResourceParser12ParsingTools13getHeaderInfoERKN5boost4json5value"
    "E";

/// The library in the hands of a host that loads it at run time.
class Library {
public:
    explicit Library(const char* path = DOCPARSER_LIBRARY)
        : handle_(::dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
        if (!handle_)
            throw std::runtime_error(::dlerror());
    }

    template <typename Function>
    Function* find(const char* symbol) const {
        void* const function = ::dlsym(handle_.get(), symbol);
        if (function == nullptr)
            throw std::runtime_error(::dlerror());
        return reinterpret_cast<Function*>(function);
    }

private:
    struct Close {
        void operator()(void* handle) const noexcept { ::dlclose(handle); }
    };

    std::unique_ptr<void, Close> handle_;
};

/// The objects that a caller may hold: snapshots, and an exception.
struct Holdings {
    std::shared_ptr<const ReferenceRoots> roots;
    std::shared_ptr<const Products> products;
    std::shared_ptr<const std::unordered_set<std::u16string>> packages;
    std::exception_ptr exception;

    bool areSound() const {
        return roots->referenceApiFolder == roots->referenceRoot + u"/docCatalog/referenceapi" &&
               products->size() == 2 && products->back()->getShortName() == "second product" &&
               packages->size() == 1 && packages->contains(u"a package with a long name");
    }
};

std::exception_ptr takeException(const Library& library) {
    try {
        library.find<property::HeaderInfo(const boost::json::value&)>(kGetHeaderInfo)(nullptr);
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
}

Holdings takeHoldings(const Library& library) {
    using namespace DocResourceParser;
    library.find<decltype(setTestProducts)>(kSetTestProducts)({u"first", u"second product"},
                                                              {u"a package with a long name"});
    Holdings holdings{
        library.find<decltype(getReferenceRoots)>(kGetReferenceRoots)(),
        library.find<decltype(getTopLevelProducts)>(kGetTopLevelProducts)(),
        library.find<decltype(getHardwareSupportPackages)>(kGetHardwareSupportPackages)(),
        takeException(library)};
    // From here on the library itself holds none of them.
    library.find<decltype(restoreDefaultSettings)>(kRestoreDefaultSettings)();
    return holdings;
}

TEST(UnloadTest, SnapshotsAreUsedAndReleasedAfterTheLibraryIsClosed) {
    constexpr int kRounds = 100;
    constexpr int kThreads = 3;
    for (int round = 0; round < kRounds; ++round) {
        std::latch isClosed(1);
        std::vector<std::jthread> threads;
        {
            const Library library;
            for (int thread = 0; thread < kThreads; ++thread)
                threads.emplace_back([&isClosed, holdings = takeHoldings(library)]() mutable {
                    isClosed.wait();
                    EXPECT_TRUE(holdings.areSound());
                    EXPECT_NE(holdings.exception, nullptr);
                    EXPECT_THROW(std::rethrow_exception(holdings.exception), boost::exception);
                    holdings = {};
                });
        }
        isClosed.count_down();
    }
}

TEST(UnloadTest, OnceLoadedTheLibraryStays) {
    std::shared_ptr<const ReferenceRoots> roots;
    for (int round = 0; round < 2; ++round) {
        const Library library;
        const auto current =
            library.find<decltype(DocResourceParser::getReferenceRoots)>(kGetReferenceRoots)();
        EXPECT_TRUE(roots == nullptr || roots == current);
        roots = current;
    }
    const std::unique_ptr<void, int (*)(void*)> loaded(
        ::dlopen(DOCPARSER_LIBRARY, RTLD_NOW | RTLD_NOLOAD), &::dlclose);
    EXPECT_NE(loaded, nullptr);
}

/// Ends the process while other threads copy, use and release what they hold.
[[noreturn]] void exitWhileSnapshotsAreHeld(bool isClosedBefore) {
    static auto library = std::make_unique<Library>();
    constexpr int kThreads = 3;
    std::latch areRunning(kThreads);
    for (int thread = 0; thread < kThreads; ++thread)
        std::thread([&areRunning, holdings = takeHoldings(*library)] {
            areRunning.count_down();
            for (;;) {
                const Holdings copy = holdings;
                if (!copy.areSound())
                    std::abort();
            }
        }).detach();
    areRunning.wait();
    if (isClosedBefore)
        library.reset();
    std::exit(0);
}

TEST(UnloadTest, TheProcessMayEndWhileSnapshotsAreHeld) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (int round = 0; round < 5; ++round) {
        EXPECT_EXIT(exitWhileSnapshotsAreHeld(false), testing::ExitedWithCode(0), "");
        EXPECT_EXIT(exitWhileSnapshotsAreHeld(true), testing::ExitedWithCode(0), "");
    }
}

/// Uses the library, and again in the program's last handler: by then the library, and what it is
/// linked with, have destroyed all that they ever will.
[[noreturn]] void useTheLibraryToTheVeryEnd() {
    using UseTheWholeLibrary = bool(const testsupport::ScopedRoot&);
    static const auto* root = new testsupport::ScopedRoot();
    static UseTheWholeLibrary* use = nullptr;
    std::atexit([] {
        const bool isUsable = use(*root);
        delete root;
        ::_exit(isUsable ? 0 : 1);
    });
    const Library library(LIBRARY_USE);
    library.find<void(const testsupport::ScopedRoot&)>("writeDocumentationAt")(*root);
    use = library.find<UseTheWholeLibrary>("useTheWholeLibraryAt");
    std::exit(use(*root) ? 2 : 3);
}

TEST(UnloadTest, EveryFunctionWorksToTheEndOfTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(useTheLibraryToTheVeryEnd(), testing::ExitedWithCode(0), "");
}

/// Loads the libraries by relative paths, and changes to another folder.
[[noreturn]] void askForTheRootElsewhere() {
    namespace fs = std::filesystem;
    const fs::path environment(DOCENVIRONMENT_LIBRARY);
    const fs::path library = fs::relative(DOCPARSER_LIBRARY, environment.parent_path());
    fs::current_path(environment.parent_path());
    const Library loadedFirst(("./" + environment.filename().string()).c_str());
    const Library loaded(("./" + library.string()).c_str());
    fs::current_path("/");
    const auto roots =
        loaded.find<decltype(DocResourceParser::getReferenceRoots)>(kGetReferenceRoots)();
    const fs::path expected = environment.parent_path().parent_path() / "share";
    std::exit(roots->referenceRoot.starts_with(expected.u16string()) ? 0 : 1);
}

TEST(UnloadTest, TheDefaultRootLiesBesideTheLibraryHoweverItWasLoaded) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(askForTheRootElsewhere(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace reference::docparser

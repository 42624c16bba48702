#include "settings/ProcessState.hpp"

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include <gtest/gtest.h>

#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "settings/SupportPackageCache.hpp"
#include "support/LookupFixture.hpp"
#include "support/ResourceNotation.hpp"

// The program's own functions for mutexes and files replace those of the C library. They are called
// before and after all load-time construction, so nothing here may need any.
namespace {

/// What this thread does, unless null: "+R" it waits for a lock, "?R" it tries one, "-R" it gives
/// one back, "open" it opens a file; and the names of services that run, with '!' when a mutex that
/// is not the library's is held.
thread_local constinit std::string* trace = nullptr;
thread_local constinit int otherLocks = 0;

constexpr std::array<const char*, 3> kNames = {"R", "P", "C"};
constexpr std::size_t kOther = kNames.size();

std::size_t lockOf(const pthread_mutex_t* mutex) {
    using namespace reference::docparser;
    if (trace == nullptr) // perhaps before the mutexes are made
        return kOther;
    std::size_t lock = 0;
    for (std::mutex* known :
         {&referenceRootsMutex, &topLevelProductsMutex, &supportPackageCache.mutex()}) {
        if (known->native_handle() == mutex)
            break;
        ++lock;
    }
    return lock;
}

void note(const std::string& step) {
    if (trace != nullptr)
        *trace += (trace->empty() ? "" : " ") + step;
}

void noteService(const std::string& name) {
    note(otherLocks > 0 ? name + '!' : name);
}

void noteLock(char how, std::size_t lock) {
    if (lock == kOther)
        otherLocks += how == '-' ? -1 : 1;
    else
        note(how + std::string(kNames[lock]));
}

template <typename Function>
Function* nextOne(std::atomic<Function*>& known, const char* name) {
    if (known.load() == nullptr)
        known = reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
    return known;
}

} // namespace

#pragma GCC visibility push(default)

extern "C" int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
    static constinit std::atomic<int (*)(pthread_mutex_t*)> next = nullptr;
    const std::size_t lock = lockOf(mutex);
    const int result = nextOne(next, "pthread_mutex_lock")(mutex);
    noteLock('+', lock);
    return result;
}

extern "C" int pthread_mutex_trylock(pthread_mutex_t* mutex) noexcept {
    static constinit std::atomic<int (*)(pthread_mutex_t*)> next = nullptr;
    const int result = nextOne(next, "pthread_mutex_trylock")(mutex);
    if (result == 0)
        noteLock('?', lockOf(mutex));
    return result;
}

extern "C" int pthread_mutex_unlock(pthread_mutex_t* mutex) noexcept {
    static constinit std::atomic<int (*)(pthread_mutex_t*)> next = nullptr;
    noteLock('-', lockOf(mutex));
    return nextOne(next, "pthread_mutex_unlock")(mutex);
}

extern "C" int open(const char* path, int flags, ...) {
    static constinit std::atomic<int (*)(const char*, int, ...)> next = nullptr;
    std::va_list arguments;
    va_start(arguments, flags);
    const bool makesFile = (flags & (O_CREAT | O_TMPFILE)) != 0;
    const auto mode = makesFile ? va_arg(arguments, mode_t) : mode_t{0};
    va_end(arguments);
    note("open");
    return nextOne(next, "open")(path, flags, mode);
}

#pragma GCC visibility pop

namespace reference::docparser {
namespace {

using namespace DocResourceParser;
using namespace DocResourceParser::ParsingTools;

class LockOrderTest : public testsupport::LookupFixture {
protected:
    LockOrderTest() {
        write({{"a.json", "f:En n=1"}, {"b.zip/x.json", "q:Zip n=1"}});
        root.referenceFile("abc.json", testsupport::referenceText("f:En a=1"));
        root.referenceFile("abc_ja.json", testsupport::referenceText("f:Ja a=1"));
        environment::Services services = host();
        services.docDataRoot = noted("root", services.docDataRoot);
        services.docLanguage = noted("language", services.docLanguage);
        services.supportedDocLanguages = noted("languages", services.supportedDocLanguages);
        services.installedTopLevelDocProducts =
            noted("products", services.installedTopLevelDocProducts);
        services.supportPackageRoot = noted("folder", services.supportPackageRoot);
        services.installedHardwareSupportPackages =
            [list = services.installedHardwareSupportPackages](const std::u16string& folder) {
                noteService("packages");
                return list(folder);
            };
        environment::setServices(services);
    }

    template <typename Service>
    static Service noted(const char* name, Service service) {
        return [=] {
            noteService(name);
            return service();
        };
    }

    /// Each exported function, with its steps in order.
    std::vector<std::pair<std::function<void()>, std::string>> functions() {
        const std::string products = " +P products -P";
        const std::string installed = " +C -C" + products;
        const std::u16string file = root.pathOf(root.lookupFolder() / "a.json");
        return {
            {[] { restoreDefaultSettings(); }, "+R ?P root +C -C -R -P"},
            {[] { getReferenceRoots(); }, "+R -R"},
            {[this] { setReferenceRoot(root.path()); }, "+R -R"},
            {[] { ReferenceRoots(); }, "root"},
            {[] { clearSupportPackageCache(); }, "+C -C"},
            {[] { isProductInstalled(u"f"); }, "+C folder packages -C" + products},
            {[] { getHardwareSupportPackages(); }, "+C -C"},
            {[] { getTopLevelProducts(); }, "+P products -P"},
            {[] { clearSupportPackageCache(); }, "+C -C"},
            {[] { getHardwareSupportPackages(); }, "+C folder packages -C"},
            {[] { isProductInstalled(u"f"); }, "+C -C +P products -P"},
            {[] { getResourceFile(u"abc"); }, "+R -R open language open"},
            {[] { getResourceLookupFiles(); },
             "+R -R languages language open" + installed + " open" + installed},
            {[file] { openAndReadFile(file); }, "open"},
            {[this] { getAllProducts(root.lookupFolder().u16string(), {}, u""); }, ""},
            {[] { getSupportedDocLocales(); }, "languages"},
            {[] { getCurrentLocale(); }, "language"},
            {[this] { getHeaderInfo(document); }, ""},
            {[this] { getJsonArray(document, "refItems"); }, ""},
            {[] { setTestProducts({u"f"}, {u"p"}); }, "+P ?C -P -C"},
            {[] { isProductInstalled(u"f"); }, "+C -C +P -P"},
        };
    }

    const boost::json::value document = boost::json::parse(testsupport::referenceText("f:En a=1"));
};

TEST_F(LockOrderTest, EachFunctionLocksWhatItSaysAndReadsWithoutALock) {
    std::size_t row = 0;
    for (const auto& [function, expected] : functions()) {
        SCOPED_TRACE(row++);
        std::string steps;
        trace = &steps;
        function();
        trace = nullptr;
        EXPECT_EQ(steps, expected);
    }
}

} // namespace
} // namespace reference::docparser

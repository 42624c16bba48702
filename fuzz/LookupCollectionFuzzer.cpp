// Collects the lookup files of a small root that is made from an input, and compares the result
// with what the rules say.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include <unistd.h>

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>

#include "CollectionModel.hpp"
#include "CollectionRoot.hpp"
#include "Support.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/RefItemDescription.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ScopedServices.hpp"

namespace {

namespace json = boost::json;
namespace DocResourceParser = reference::docparser::DocResourceParser;
using fuzz::FailingService;

struct ServiceFailure {};

/// The services of the host of one input, one of which may fail. `questions` counts the calls of
/// the service for the products.
environment::Services servicesOf(const fuzz::Host& host, std::size_t& questions) {
    const auto failIf = [&host](FailingService service) {
        if (host.failingService == service)
            throw ServiceFailure();
    };
    environment::Services services;
    services.docLanguage = [&host, failIf] {
        failIf(FailingService::Language);
        return fuzz::utf16(host.language);
    };
    services.supportedDocLanguages = [&host, failIf] {
        failIf(FailingService::Languages);
        std::vector<std::u16string> languages;
        for (const std::string& language : host.languages)
            languages.push_back(fuzz::utf16(language));
        return languages;
    };
    services.supportPackageRoot = [failIf] {
        failIf(FailingService::PackageRoot);
        return std::u16string();
    };
    services.installedHardwareSupportPackages = [&host, failIf](const std::u16string&) {
        failIf(FailingService::PackageList);
        std::unordered_set<std::u16string> packages;
        for (const std::string& package : host.supportPackages)
            packages.insert(fuzz::utf16(package));
        return packages;
    };
    services.installedTopLevelDocProducts = [&host, &questions, failIf] {
        if (++questions % host.failurePeriod == 0)
            failIf(FailingService::Products);
        return testsupport::makeProducts(host.products);
    };
    return services;
}

std::optional<json::array> collect() {
    try {
        const auto resources = DocResourceParser::getResourceLookupFiles();
        return json::array{testsupport::describe(resources.first),
                           testsupport::describe(resources.second)};
    } catch (const ServiceFailure&) {
        return std::nullopt;
    }
}

/// Temporary files go to memory where possible.
bool preferMemory() {
    const char* const memory = "/dev/shm";
    return ::access(memory, W_OK) == 0 && ::setenv("TMPDIR", memory, 1) == 0;
}

void requireEqual(const std::optional<json::array>& collected,
                  const std::optional<json::array>& expected) {
    if (collected == expected)
        return;
    const auto textOf = [](const std::optional<json::array>& collection) {
        return collection ? json::serialize(*collection) : "a failure";
    };
    std::fprintf(stderr, "collected:\n%s\nexpected:\n%s\n", textOf(collected).c_str(),
                 textOf(expected).c_str());
    fuzz::require(false, "what is collected is what the rules say");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    [[maybe_unused]] static const bool isInMemory = preferMemory();
    fuzz::Choices choices(fuzz::textOf(data, size));
    const fuzz::CollectionRoot described = fuzz::chooseRoot(choices);
    std::optional<json::array> collected;
    {
        const testsupport::ScopedRoot folder;
        fuzz::writeFiles(described.files, folder);
        DocResourceParser::setReferenceRoot(folder.path());
        DocResourceParser::clearSupportPackageCache();
        std::size_t questions = 0;
        const testsupport::ScopedServices services(servicesOf(described.host, questions));
        collected = collect();
    }
    requireEqual(collected, fuzz::expectedCollection(described));
    return 0;
}

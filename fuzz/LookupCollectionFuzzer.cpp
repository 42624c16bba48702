// Collects the lookup files of a small root that is made as an input says, and compares with what
// the rules say.

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <unistd.h>

#include "CollectionModel.hpp"
#include "CollectionRoot.hpp"
#include "SlowText.hpp"
#include "Support.hpp"
#include "environment/DocProducts.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/ScopedRoot.hpp"

namespace {

namespace DocResourceParser = reference::docparser::DocResourceParser;
using fuzz::FailingService;

struct ServiceFailure {};

environment::TopLevelProductList makeProducts(const std::vector<std::u16string>& shortNames) {
    using Product = doc_products_shared::TopLevelDocProduct;
    std::vector<std::shared_ptr<const Product>> products;
    for (const std::u16string& name : shortNames)
        products.push_back(std::make_shared<const Product>("", "", fuzz::encodeUtf8(name), "", "",
                                                           "", Product::Properties()));
    return std::make_shared<const std::vector<std::shared_ptr<const Product>>>(products);
}

/// The services of the host of one input; one of them may fail.
class HostServices {
public:
    explicit HostServices(fuzz::Host host) : host_(std::move(host)) {}

    environment::Services services() {
        environment::Services services;
        services.docLanguage = [this] {
            failIf(FailingService::Language);
            return host_.language;
        };
        services.supportedDocLanguages = [this] {
            failIf(FailingService::Languages);
            return host_.languages;
        };
        services.supportPackageRoot = [this] {
            failIf(FailingService::PackageRoot);
            return std::u16string();
        };
        services.installedHardwareSupportPackages = [this](const std::u16string&) {
            failIf(FailingService::PackageList);
            return std::unordered_set<std::u16string>(host_.supportPackages.begin(),
                                                      host_.supportPackages.end());
        };
        services.installedTopLevelDocProducts = [this] {
            if (++questions_ % host_.failurePeriod == 0)
                failIf(FailingService::Products);
            return makeProducts(host_.products);
        };
        return services;
    }

private:
    void failIf(FailingService service) const {
        if (host_.failingService == service)
            throw ServiceFailure();
    }

    const fuzz::Host host_;
    std::size_t questions_ = 0;
};

std::optional<std::string> collect() {
    try {
        return fuzz::describeCollection(DocResourceParser::getResourceLookupFiles());
    } catch (const ServiceFailure&) {
        return std::nullopt;
    }
}

/// Temporary files go to memory where that can be.
bool preferMemory() {
    const char* const memory = "/dev/shm";
    return ::access(memory, W_OK) == 0 && ::setenv("TMPDIR", memory, 1) == 0;
}

void requireEqual(const std::optional<std::string>& collected,
                  const std::optional<std::string>& expected) {
    if (collected == expected)
        return;
    const auto textOr = [](const std::optional<std::string>& text) {
        return text.value_or("a failure\n");
    };
    std::fprintf(stderr, "collected:\n%sexpected:\n%s", textOr(collected).c_str(),
                 textOr(expected).c_str());
    fuzz::require(false, "what is collected is what the rules say");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    [[maybe_unused]] static const bool isInMemory = preferMemory();
    fuzz::Choices choices(fuzz::textOf(data, size));
    const fuzz::CollectionRoot described = fuzz::chooseRoot(choices);
    std::optional<std::string> collected;
    {
        const testsupport::ScopedRoot folder;
        fuzz::writeFiles(described.files, folder);
        DocResourceParser::setReferenceRoot(folder.path());
        DocResourceParser::clearSupportPackageCache();
        HostServices host(described.host);
        environment::setServices(host.services());
        collected = collect();
        environment::resetServices();
    }
    requireEqual(collected, fuzz::expectedCollection(described));
    return 0;
}

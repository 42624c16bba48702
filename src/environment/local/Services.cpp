#include "environment/Services.hpp"

#include <mutex>
#include <utility>

#include "environment/local/BuiltInServices.hpp"
#include "environment/local/CurrentServices.hpp"

namespace environment {

namespace {

Services builtInServices() {
    return {.docDataRoot = local::installedDocDataRoot,
            .supportedDocLanguages = local::translatedManualLanguages,
            .docLanguage = [locale =
                                local::messageLocale()] { return local::languageOfLocale(locale); },
            .installedTopLevelDocProducts = local::productsOfInstalledProductsFile,
            .supportPackageRoot = local::supportPackageFolder,
            .installedHardwareSupportPackages = local::namesOfFoldersUnder};
}

/// Never destroyed, because the services are asked until the process ends.
class ServiceRegistry {
public:
    static ServiceRegistry& getInstance() {
        static auto& registry = *new ServiceRegistry();
        return registry;
    }

    std::shared_ptr<const Services> get() const {
        const std::lock_guard lock(mutex_);
        return services_;
    }

    // The former services are destroyed without the lock: a host's destructors may call back.
    void set(std::shared_ptr<const Services> services) {
        const std::lock_guard lock(mutex_);
        services_.swap(services);
    }

private:
    mutable std::mutex mutex_; // guards services_
    std::shared_ptr<const Services> services_ = std::make_shared<Services>(builtInServices());
};

/// Asks for the message locale while the program is being loaded, before it has threads.
[[maybe_unused]] const ServiceRegistry& registryOfLoadTime = ServiceRegistry::getInstance();

template <typename Service>
void fillIfEmpty(Service& service, Service& builtIn) {
    if (!service)
        service = std::move(builtIn);
}

} // namespace

namespace local {

std::shared_ptr<const Services> currentServices() {
    return ServiceRegistry::getInstance().get();
}

} // namespace local

void setServices(Services services) {
    Services builtIn = builtInServices();
    fillIfEmpty(services.docDataRoot, builtIn.docDataRoot);
    fillIfEmpty(services.supportedDocLanguages, builtIn.supportedDocLanguages);
    fillIfEmpty(services.docLanguage, builtIn.docLanguage);
    fillIfEmpty(services.installedTopLevelDocProducts, builtIn.installedTopLevelDocProducts);
    fillIfEmpty(services.supportPackageRoot, builtIn.supportPackageRoot);
    fillIfEmpty(services.installedHardwareSupportPackages,
                builtIn.installedHardwareSupportPackages);
    ServiceRegistry::getInstance().set(std::make_shared<Services>(std::move(services)));
}

void resetServices() {
    setServices({});
}

} // namespace environment

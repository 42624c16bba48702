#include "environment/Services.hpp"

#include <atomic>
#include <chrono>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "environment/DocLanguage.hpp"
#include "environment/DocProducts.hpp"
#include "environment/HostArrays.hpp"
#include "environment/SupportPackages.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ScopedServices.hpp"

namespace {

using doc_products_shared::DocProductCacheManager;
using doc_products_shared::Docroot;
using doclanguage::DocLanguage;
using environment::Services;
using environment::TopLevelProductList;
using install::product_impl::utils::getInstalledHardwareSupportPackages;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using testsupport::ScopedRoot;
using testsupport::ScopedServices;

Services servicesAt(const ScopedRoot& root) {
    Services services;
    services.docDataRoot = [path = root.path()] { return path; };
    return services;
}

TopLevelProductList installedProducts() {
    return DocProductCacheManager::getInstance()
        .getDocProductCache()
        ->getInstalledTopLevelDocProducts();
}

std::vector<std::string> installedNames() {
    const TopLevelProductList products = installedProducts();
    std::vector<std::string> names;
    for (const auto& product : *products)
        names.push_back(product->getShortName());
    return names;
}

TEST(Services, AServiceMayReplaceTheServicesItIsPartOf) {
    Services services;
    services.docLanguage = [token = std::make_shared<std::u16string>(u"kept")] {
        environment::resetServices();
        return *token;
    };
    const ScopedServices scope(services);
    EXPECT_EQ(DocLanguage::getInstance().getDocLanguage(), u"kept");
    EXPECT_NE(DocLanguage::getInstance().getDocLanguage(), u"kept");
}

TEST(BuiltInServices, DefaultRootLiesBesideTheLibrary) {
    const std::filesystem::path root = Docroot::getInstance().getDocDataRoot();
    EXPECT_TRUE(root.is_absolute());
    EXPECT_EQ(root, root.lexically_normal());
    EXPECT_TRUE(root.string().ends_with("/share/reference-docparser/docroot")) << root;
}

class ScopedVariables {
public:
    ScopedVariables(const char* all, const char* messages, const char* lang) {
        set("LC_ALL", all);
        set("LC_MESSAGES", messages);
        set("LANG", lang);
    }
    ~ScopedVariables() {
        for (const auto& [name, value] : former_)
            value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name);
    }

private:
    void set(const char* name, const char* value) {
        const char* const former = std::getenv(name);
        former_.emplace_back(name, former ? std::optional<std::string>(former) : std::nullopt);
        value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1);
    }

    std::vector<std::pair<const char*, std::optional<std::string>>> former_;
};

TEST(BuiltInServices, LanguageIsTheOneOfTheMessageLocale) {
    ASSERT_STREQ(std::setlocale(LC_MESSAGES, nullptr), "C");
    const struct {
        const char *all, *messages, *lang;
        std::u16string language;
    } rows[] = {
        {nullptr, nullptr, "ja_JP.UTF-8", u"ja"},
        {nullptr, nullptr, "pt_BR", u"pt_BR"},
        {nullptr, nullptr, "pt_PT", u"en"},
        {nullptr, nullptr, "zh_CN.UTF-8@x", u"zh_CN"},
        {nullptr, nullptr, "zh_TW", u"zh_TW"},
        {nullptr, nullptr, "C.UTF-8", u"en"},
        {nullptr, nullptr, "nb_NO", u"nb"},
        {nullptr, nullptr, "sr_RS@latin", u"sr"},
        {nullptr, nullptr, "xx_XX", u"en"},
        {nullptr, nullptr, nullptr, u"en"},
        {"", "", "de", u"de"},
        {"", "fr_FR", "de", u"fr"},
        {"it", "fr", "de", u"it"},
        {"C", "fr", "de", u"en"},
    };
    for (const auto& row : rows) {
        const ScopedVariables variables(row.all, row.messages, row.lang);
        EXPECT_EQ(DocLanguage::getInstance().getDocLanguage(), row.language)
            << (row.lang == nullptr ? "none" : row.lang);
    }
}

TEST(BuiltInServices, LocaleOfTheProcessComesBeforeItsVariables) {
    if (std::setlocale(LC_MESSAGES, "C.UTF-8") == nullptr)
        GTEST_SKIP() << "the machine has no locale but C";
    const ScopedVariables variables(nullptr, nullptr, "de_DE.UTF-8");
    EXPECT_EQ(DocLanguage::getInstance().getDocLanguage(), u"de") << "not asked for again yet";
    environment::resetServices();
    EXPECT_EQ(DocLanguage::getInstance().getDocLanguage(), u"en");
    std::setlocale(LC_MESSAGES, "C");
    environment::resetServices();
    EXPECT_EQ(DocLanguage::getInstance().getDocLanguage(), u"de");
}

TEST(BuiltInServices, TheLocaleMayBeSetWhileTheLanguageIsAskedFor) {
    std::jthread setter([](const std::stop_token& token) {
        while (!token.stop_requested())
            for (const char* locale : {"C.UTF-8", "C"})
                std::setlocale(LC_MESSAGES, locale);
    });
    const ScopedVariables variables(nullptr, nullptr, "de");
    for (int question = 0; question < 20'000; ++question)
        ASSERT_EQ(DocLanguage::getInstance().getDocLanguage(), u"de");
}

TEST(InstalledProductsFile, EveryMemberReachesTheProduct) {
    const ScopedRoot root;
    root.writeFile("installedProducts.json",
                   R"([{"shortName": "full", "displayName": "Döc", "helpLocation": "help/full",
                        "baseCode": "FL", "altShortName": "f", "availability": "now", "more": 1},
                       {"shortName": "bare"}])");
    const ScopedServices scope(servicesAt(root));
    const TopLevelProductList products = installedProducts();
    ASSERT_EQ(products->size(), 2U);
    const auto& full = *products->front();
    EXPECT_EQ(full.getShortName(), "full");
    EXPECT_EQ(full.getDisplayName(), "Döc");
    EXPECT_EQ(full.getHelpLocation(), "help/full");
    EXPECT_EQ(full.getBaseCode(), "FL");
    EXPECT_EQ(full.getAltShortName(), "f");
    EXPECT_EQ(full.getAvailability(), "now");
    EXPECT_EQ(products->back()->getShortName(), "bare");
    EXPECT_EQ(products->back()->getHelpLocation(), "");
}

TEST(InstalledProductsFile, IsReadAgainOnlyWhenItHasChanged) {
    const ScopedRoot root;
    const ScopedServices scope(servicesAt(root));
    const std::filesystem::path file = root.nativePathOf("installedProducts.json");
    EXPECT_THAT(installedNames(), IsEmpty());

    root.writeFile("installedProducts.json", R"([{"shortName": "a"}])");
    const TopLevelProductList first = installedProducts();
    EXPECT_EQ(installedProducts(), first);

    const auto later = std::filesystem::last_write_time(file) + std::chrono::nanoseconds(1);
    root.writeFile("installedProducts.json", R"([{"shortName": "b"}])");
    std::filesystem::last_write_time(file, later);
    EXPECT_THAT(installedNames(), ElementsAre("b"));

    root.writeFile("installedProducts.json", R"([{"shortName": "longer"}])");
    std::filesystem::last_write_time(file, later);
    EXPECT_THAT(installedNames(), ElementsAre("longer"));

    root.remove("installedProducts.json");
    EXPECT_THAT(installedNames(), IsEmpty());
    EXPECT_EQ(first->front()->getShortName(), "a");
}

TEST(InstalledProductsFile, ABrokenOneThrowsUntilItIsMended) {
    const ScopedRoot root;
    const ScopedServices scope(servicesAt(root));
    for (const char* text : {"", "{}", "[", "[1]", "[{}]", R"([{"shortName": 1}])", "[] []", "\xFF",
                             R"([{"shortName": "a"}, {"shortName": "b", "baseCode": null}])"}) {
        root.writeFile("installedProducts.json", text);
        EXPECT_THROW(installedProducts(), std::runtime_error) << text;
        EXPECT_THROW(installedProducts(), std::runtime_error) << text << ", asked again";
    }
    root.remove("installedProducts.json");
    root.makePipe("installedProducts.json");
    EXPECT_THROW(installedProducts(), std::runtime_error) << "a named pipe";
    root.remove("installedProducts.json");
    root.makeFolder("installedProducts.json");
    EXPECT_THROW(installedProducts(), std::runtime_error) << "a folder";
    root.remove("installedProducts.json");
    root.writeFile("installedProducts.json", "[]");
    EXPECT_THAT(installedNames(), IsEmpty());
}

TEST(InstalledProductsFile, ManyThreadsSeeWholeLists) {
    const ScopedRoot root;
    root.writeFile("installedProducts.json", R"([{"shortName": "a"}])");
    const ScopedServices scope(servicesAt(root));
    std::atomic<int> strange = 0;
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&] {
                for (int round = 0; round < 200; ++round)
                    strange += installedNames().size() == 1 ? 0 : 1;
            });
        for (int round = 0; round < 50; ++round) {
            root.writeFile("new", R"([{"shortName": ")" + std::to_string(round) + R"("}])");
            std::filesystem::rename(root.nativePathOf("new"),
                                    root.nativePathOf("installedProducts.json"));
        }
    }
    EXPECT_EQ(strange, 0);
}

TEST(SupportPackages, AreTheFoldersUnderTheRoot) {
    const ScopedRoot root;
    const ScopedServices scope(servicesAt(root));
    const std::u16string packages = SupportPackageRootReader().getSupportPackageRootNoCreate();
    EXPECT_EQ(packages, root.pathOf("supportPackages"));
    EXPECT_THAT(getInstalledHardwareSupportPackages(packages), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(packages));

    root.makeFolder("supportPackages/board/inner");
    root.makeFolder(u8"supportPackages/\u00E9\U0001F600");
    root.makeFolder("supportPackages/not utf-8 \xFF");
    root.writeFile("supportPackages/file", "x");
    std::filesystem::create_directory_symlink("board", root.nativePathOf("supportPackages/link"));
    EXPECT_THAT(getInstalledHardwareSupportPackages(packages),
                UnorderedElementsAre(u"board", u"\u00E9\U0001F600", u"link"));

    EXPECT_THAT(getInstalledHardwareSupportPackages(packages + u'\0'), IsEmpty());
    EXPECT_THROW(getInstalledHardwareSupportPackages(root.pathOf("supportPackages/file")),
                 std::exception);
}

TEST(HostArrays, TheLastHandleDeletesTheArray) {
    struct CountedArray : kvArray_tag {
        explicit CountedArray(std::atomic<int>& counter) : deleted(counter) {}
        ~CountedArray() override { ++deleted; }
        std::atomic<int>& deleted;
    };
    using Handle = boost::intrusive_ptr<const kvArray_tag>;
    std::atomic<int> deleted = 0;
    {
        const Handle handle(new CountedArray(deleted));
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([copy = handle] {
                for (int round = 0; round < 1000; ++round)
                    const Handle another = copy;
            });
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 1);
}

} // namespace

#include "environment/local/BuiltInServices.hpp"

#include <cerrno>
#include <exception>
#include <ios>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <sys/stat.h>

#include <boost/json/value.hpp>

#include "environment/PathAndText.hpp"
#include "environment/local/OpenedFile.hpp"
#include "environment/local/SystemSpelling.hpp"
#include "jsontext/Parsing.hpp"

namespace environment::local {

namespace {

using doc_products_shared::TopLevelDocProduct;
using ProductList = std::vector<std::shared_ptr<const TopLevelDocProduct>>;

constexpr std::streamoff kMaximumFileSize = 64 << 20;

/// What distinguishes one state of a file from the next.
struct FileState {
    std::string path;
    off_t size;
    std::pair<time_t, long> modified;

    bool operator==(const FileState&) const = default;
};

[[noreturn]] void throwBroken(const std::u16string& path, const std::string& reason) {
    throw std::runtime_error(fl::i18n::to_string(path) + ": " + reason);
}

/// Nothing when the file is missing.
std::optional<FileState> lookAt(const std::u16string& path) {
    std::optional<std::string> nativePath = accessPath(path);
    struct stat status {};
    if (!nativePath)
        return std::nullopt;
    if (::stat(nativePath->c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return std::nullopt;
        throwBroken(path, std::generic_category().message(errno));
    }
    if (!S_ISREG(status.st_mode))
        throwBroken(path, "not a regular file");
    const timespec modified = modificationTime(status);
    return FileState{*std::move(nativePath), status.st_size, {modified.tv_sec, modified.tv_nsec}};
}

/// Takes the size from the file that it has opened: the path may name another one by now. In that
/// case the next look finds that what is kept is out of date.
std::string readWhole(const std::u16string& path) {
    fl::filesystem::basic_ifstream<char> file(path, std::ios_base::binary | std::ios_base::ate);
    const std::streamoff size = file.tellg();
    if (size < 0)
        throwBroken(path, "cannot be opened");
    if (size > kMaximumFileSize)
        throwBroken(path, "larger than 64 MiB");
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!file.seekg(0) || !file.read(text.data(), size))
        throwBroken(path, "cannot be read");
    return text;
}

/// Makes a product of one element of the file.
class ProductReader {
public:
    ProductReader(const std::u16string& path, std::size_t number) : path_(path), number_(number) {}

    std::shared_ptr<const TopLevelDocProduct> read(const boost::json::value& product) const {
        const boost::json::object* members = product.if_object();
        if (members == nullptr)
            throwBroken(path_, subject() + " is not an object");
        if (!members->contains("shortName"))
            throwBroken(path_, subject() + " has no shortName");
        return std::make_shared<const TopLevelDocProduct>(
            text(*members, "displayName"), text(*members, "helpLocation"),
            text(*members, "shortName"), text(*members, "baseCode"), text(*members, "altShortName"),
            text(*members, "availability"), TopLevelDocProduct::Properties());
    }

private:
    std::string subject() const { return "product " + std::to_string(number_); }

    std::string text(const boost::json::object& product, const char* name) const {
        const boost::json::value* member = product.if_contains(name);
        if (member != nullptr && !member->is_string())
            throwBroken(path_, subject() + ": " + name + " is not a string");
        return member == nullptr ? std::string() : std::string(member->as_string());
    }

    const std::u16string& path_;
    std::size_t number_; // counted from 1
};

const jsontext::MemberNames& productMembers() {
    static const auto& names = *new jsontext::MemberNames{
        "shortName", "displayName", "helpLocation", "baseCode", "altShortName", "availability"};
    return names;
}

TopLevelProductList readProducts(const std::u16string& path) {
    const std::string text = readWhole(path);
    boost::json::error_code failure;
    const boost::json::value document = jsontext::parse(text, productMembers(), {}, failure);
    if (failure)
        throwBroken(path, "not JSON: " + failure.message());
    if (!document.is_array())
        throwBroken(path, "not a list of products");
    ProductList products;
    for (const boost::json::value& product : document.get_array())
        products.push_back(ProductReader(path, products.size() + 1).read(product));
    return std::make_shared<const ProductList>(std::move(products));
}

/// Keeps the last list that was read.
class ProductListCache {
public:
    TopLevelProductList get(const FileState& state) const {
        const std::lock_guard lock(mutex_);
        return state_ == state ? products_ : nullptr;
    }

    void set(FileState state, TopLevelProductList products) {
        const std::lock_guard lock(mutex_);
        state_ = std::move(state);
        products_.swap(products);
    }

private:
    mutable std::mutex mutex_; // guards both members
    std::optional<FileState> state_;
    TopLevelProductList products_;
};

} // namespace

TopLevelProductList productsOfInstalledProductsFile() {
    static auto& cache = *new ProductListCache();
    static const auto& none = *new TopLevelProductList(std::make_shared<const ProductList>());
    const std::u16string path = doc_products_shared::Docroot::getInstance().getDocDataRoot() +
                                fl::filesystem::upath_constant::PATHNAME_SEPARATOR +
                                u"installedProducts.json";
    std::optional<FileState> state = lookAt(path);
    if (!state)
        return none;
    if (TopLevelProductList products = cache.get(*state))
        return products;
    TopLevelProductList products = readProducts(path);
    cache.set(*std::move(state), products);
    return products;
}

} // namespace environment::local

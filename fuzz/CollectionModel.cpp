#include "CollectionModel.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <boost/system/error_code.hpp>

#include "environment/ReferenceProperty.hpp"
#include "support/ResourceModel.hpp"

namespace fuzz {

namespace {

namespace json = boost::json;

/// What a service of the host throws.
struct Failure {};

enum class Language { Other, English, Current };

bool contains(const std::vector<std::string>& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::string lastComponent(const std::string& name) {
    return name.substr(name.rfind('/') + 1);
}

/// Where the last extension begins; a name that begins with its only dot has none.
std::size_t endOfStem(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == name.npos || dot == 0 ? name.size() : dot;
}

bool isResourceName(const std::string& name) {
    const std::string end = name.substr(endOfStem(name));
    return end == ".json" || end == ".zip";
}

class Model {
public:
    explicit Model(const CollectionRoot& root) : host_(root.host), files_(root.files) {}

    void collect() {
        if (host_.failingService == FailingService::Language ||
            host_.failingService == FailingService::Languages)
            throw Failure();
        std::sort(files_.begin(), files_.end(),
                  [](const auto& a, const auto& b) { return utf16(a.name) < utf16(b.name); });
        for (const LookupFile& file : files_)
            if (isRead(file) && file.name.ends_with(".zip"))
                collectPackage(file);
        for (const LookupFile& file : files_)
            if (isRead(file) && file.name.ends_with(".json") && file.kind == FileKind::Text)
                collectText(file.text, languageOf(file.name));
    }

    json::object installed;
    json::object others;

private:
    bool isRead(const LookupFile& file) const {
        return file.kind != FileKind::Folder && isResourceName(file.name) &&
               languageOf(file.name) != Language::Other;
    }

    Language languageOf(const std::string& name) const {
        const std::string stem = name.substr(0, endOfStem(name));
        bool isLocalized = false;
        for (const std::string& language : host_.languages)
            isLocalized = isLocalized || (language != "en" && stem.ends_with('_' + language));
        if (!isLocalized)
            return Language::English;
        return stem.ends_with('_' + host_.language) ? Language::Current : Language::Other;
    }

    void collectPackage(const LookupFile& package) {
        if (package.kind != FileKind::Package)
            return;
        std::vector<Leaf> leaves;
        for (const Leaf& leaf : package.leaves)
            if (!leaf.name.ends_with('/'))
                leaves.push_back(leaf);
        for (const Leaf& leaf : leaves) {
            const std::string name = lastComponent(leaf.name);
            const Language language =
                leaves.size() == 1 ? languageOfSingle(package, name) : languageOf(name);
            if (isResourceName(name) && leaf.damage == LeafDamage::None)
                collectText(leaf.text, language);
        }
    }

    /// The package's name says the language of its only leaf; a localized leaf must agree.
    Language languageOfSingle(const LookupFile& package, const std::string& leaf) const {
        if (languageOf(package.name) == Language::English)
            return Language::English;
        const std::string stem = leaf.substr(0, endOfStem(leaf));
        return stem.ends_with('_' + host_.language) ? Language::Current : Language::Other;
    }

    void collectText(const std::string& text, Language language) {
        if (language == Language::Other)
            return;
        try {
            for (auto& [key, document] : documentsOf(text))
                merge(isInstalled(key) ? installed : others, key, document, language);
        } catch (const Failure&) {
            // The rest of this text is lost, and nothing else.
        }
    }

    /// In the order of their keys, which are ASCII; none for a text that breaks the format.
    static std::map<std::string, json::object> documentsOf(const std::string& text) {
        std::map<std::string, json::object> documents;
        boost::system::error_code failure;
        const json::value parsed = json::parse(text, failure);
        if (failure)
            return documents;
        const auto resource =
            testsupport::expectedResource<reference::property::RefItemLookup>(parsed);
        for (const auto& [key, document] : resource.value_or(json::object()))
            documents.emplace(key, document.as_object());
        return documents;
    }

    bool isInstalled(const std::string& key) {
        if (host_.failingService == FailingService::PackageRoot)
            throw Failure();
        if (host_.failingService == FailingService::Products &&
            ++productQuestions_ % host_.failurePeriod == 0)
            throw Failure();
        return contains(host_.products, key) ||
               (contains(host_.supportPackages, key) &&
                host_.failingService != FailingService::PackageList);
    }

    static void merge(json::object& documents, const std::string& key, json::object& incoming,
                      Language language) {
        json::value* const held = documents.if_contains(key);
        if (held == nullptr) {
            documents[key] = incoming;
            return;
        }
        if (language == Language::Current)
            std::swap(held->as_object(), incoming);
        for (const auto& [name, lookups] : incoming.at("refItems").as_object())
            mergeGroup(held->at("refItems").as_object(), name, lookups.as_array());
    }

    /// A new name brings all its lookups; a list shorter than the incoming one gets those whose
    /// links it lacks.
    static void mergeGroup(json::object& groups, json::string_view name,
                           const json::array& incoming) {
        json::value* const group = groups.if_contains(name);
        if (group == nullptr) {
            groups[name] = incoming;
            return;
        }
        json::array& held = group->as_array();
        if (held.size() >= incoming.size())
            return;
        for (const json::value& lookup : incoming)
            if (std::none_of(held.begin(), held.end(), [&lookup](const json::value& other) {
                    return other.at("href") == lookup.at("href");
                }))
                held.push_back(lookup);
    }

    const Host& host_;
    std::vector<LookupFile> files_;
    std::size_t productQuestions_ = 0;
};

} // namespace

std::optional<json::array> expectedCollection(const CollectionRoot& root) {
    Model model(root);
    try {
        model.collect();
    } catch (const Failure&) {
        return std::nullopt;
    }
    return json::array{model.installed, model.others};
}

} // namespace fuzz

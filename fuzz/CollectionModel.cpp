#include "CollectionModel.hpp"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "SlowText.hpp"

namespace fuzz {

namespace {

using Texts = std::vector<std::u16string>;

/// What a service of the host throws.
struct Failure {};

enum class Language { Other, English, Current };

struct Group {
    std::u16string name;
    std::vector<Lookup> lookups;
};

struct HeldDocument {
    std::u16string key;
    Document header;
    std::vector<Group> groups;
};

bool contains(const Texts& texts, const std::u16string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

template <typename Entries, typename Text>
auto* findNamed(Entries& entries, std::u16string Text::*name, const std::u16string& text) {
    for (auto& entry : entries)
        if (entry.*name == text)
            return &entry;
    return static_cast<decltype(&entries.front())>(nullptr);
}

template <typename Entry>
void sortBy(std::vector<Entry>& entries, std::u16string Entry::*text) {
    std::stable_sort(entries.begin(), entries.end(),
                     [text](const Entry& a, const Entry& b) { return a.*text < b.*text; });
}

std::u16string lastComponent(const std::u16string& name) {
    return name.substr(name.rfind(u'/') + 1);
}

/// Where the last extension begins; a name that begins with its only dot has none.
std::size_t endOfStem(const std::u16string& name) {
    const std::size_t dot = name.rfind(u'.');
    return dot == name.npos || dot == 0 ? name.size() : dot;
}

bool isResourceName(const std::u16string& name) {
    const std::u16string end = name.substr(endOfStem(name));
    return end == u".json" || end == u".zip";
}

class Model {
public:
    explicit Model(const CollectionRoot& root) : host_(root.host), files_(root.files) {}

    void collect() {
        if (host_.failingService == FailingService::Language ||
            host_.failingService == FailingService::Languages)
            throw Failure();
        sortBy(files_, &LookupFile::name);
        for (const LookupFile& file : files_)
            if (isRead(file) && file.name.ends_with(u".zip"))
                collectPackage(file);
        for (const LookupFile& file : files_)
            if (isRead(file) && file.name.ends_with(u".json") && file.kind == FileKind::Text)
                collectText(file.text, languageOf(file.name));
    }

    std::vector<HeldDocument> installed;
    std::vector<HeldDocument> others;

private:
    bool isRead(const LookupFile& file) const {
        return file.kind != FileKind::Folder && isResourceName(file.name) &&
               languageOf(file.name) != Language::Other;
    }

    Language languageOf(const std::u16string& name) const {
        const std::u16string stem = name.substr(0, endOfStem(name));
        bool isLocalized = false;
        for (const std::u16string& language : host_.languages)
            isLocalized = isLocalized || (language != u"en" && stem.ends_with(u'_' + language));
        if (!isLocalized)
            return Language::English;
        return stem.ends_with(u'_' + host_.language) ? Language::Current : Language::Other;
    }

    void collectPackage(const LookupFile& package) {
        if (package.kind != FileKind::Package)
            return;
        std::vector<Leaf> leaves;
        for (const Leaf& leaf : package.leaves)
            if (!leaf.name.ends_with(u'/'))
                leaves.push_back(leaf);
        for (const Leaf& leaf : leaves) {
            const std::u16string name = lastComponent(leaf.name);
            const Language language =
                leaves.size() == 1 ? languageOfSingle(package, name) : languageOf(name);
            if (isResourceName(name) && leaf.damage == LeafDamage::None)
                collectText(leaf.text, language);
        }
    }

    /// The package says the language of its only leaf, which must be named for it if localized.
    Language languageOfSingle(const LookupFile& package, const std::u16string& leaf) const {
        if (languageOf(package.name) == Language::English)
            return Language::English;
        const std::u16string stem = leaf.substr(0, endOfStem(leaf));
        return stem.ends_with(u'_' + host_.language) ? Language::Current : Language::Other;
    }

    void collectText(const LookupText& text, Language language) {
        if (!text.isSound() || language == Language::Other)
            return;
        try {
            for (HeldDocument& document : documentsOf(text))
                merge(isInstalled(document.key) ? installed : others, document, language);
        } catch (const Failure&) {
            // What remains of this text is lost, and nothing else.
        }
    }

    /// The documents of a text in the order of their keys; of several with one key the first.
    static std::vector<HeldDocument> documentsOf(const LookupText& text) {
        std::vector<HeldDocument> documents;
        for (const Document& document : text.documents) {
            const bool isMain = &document == &text.documents.front();
            const std::u16string& key = isMain ? document.helpFolder : document.baseCode;
            if (findNamed(documents, &HeldDocument::key, key) == nullptr)
                documents.push_back({key, document, groupsOf(document)});
        }
        sortBy(documents, &HeldDocument::key);
        return documents;
    }

    static std::vector<Group> groupsOf(const Document& document) {
        std::vector<Group> groups;
        for (const Lookup& lookup : document.lookups) {
            if (findNamed(groups, &Group::name, lookup.name) == nullptr)
                groups.push_back({lookup.name, {}});
            findNamed(groups, &Group::name, lookup.name)->lookups.push_back(lookup);
        }
        return groups;
    }

    bool isInstalled(const std::u16string& key) {
        if (host_.failingService == FailingService::PackageRoot)
            throw Failure();
        if (host_.failingService == FailingService::Products &&
            ++productQuestions_ % host_.failurePeriod == 0)
            throw Failure();
        return contains(host_.products, key) ||
               (contains(host_.supportPackages, key) &&
                host_.failingService != FailingService::PackageList);
    }

    static void merge(std::vector<HeldDocument>& documents, HeldDocument& incoming,
                      Language language) {
        HeldDocument* const held = findNamed(documents, &HeldDocument::key, incoming.key);
        if (held == nullptr) {
            documents.push_back(incoming);
            return;
        }
        if (language == Language::Current)
            std::swap(*held, incoming);
        for (const Group& group : incoming.groups)
            mergeGroup(held->groups, group);
    }

    /// A name that is new comes with all its lookups; a list that is shorter than the incoming one
    /// gets those whose links it lacks.
    static void mergeGroup(std::vector<Group>& groups, const Group& incoming) {
        Group* const held = findNamed(groups, &Group::name, incoming.name);
        if (held == nullptr) {
            groups.push_back(incoming);
            return;
        }
        if (held->lookups.size() >= incoming.lookups.size())
            return;
        for (const Lookup& lookup : incoming.lookups)
            if (findNamed(held->lookups, &Lookup::href, lookup.href) == nullptr)
                held->lookups.push_back(lookup);
    }

    const Host& host_;
    std::vector<LookupFile> files_;
    std::size_t productQuestions_ = 0;
};

/// A text in which every part of a document shows.
class Description {
public:
    void startDocument(char mark, const std::u16string& key, const Texts& header) {
        text_ += mark + encodeUtf8(key);
        for (const std::u16string& part : header)
            text_ += " | " + encodeUtf8(part);
        text_ += '\n';
    }

    void add(const Texts& texts, std::string_view type, std::string_view functionType,
             bool isDeprecated) {
        for (const std::u16string& part : texts)
            text_ += "  " + encodeUtf8(part);
        text_.append("  ").append(type).append("  ").append(functionType);
        text_ += isDeprecated ? "  deprecated\n" : "\n";
    }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

void describe(Description& description, char mark, std::vector<HeldDocument> documents) {
    sortBy(documents, &HeldDocument::key);
    for (HeldDocument& document : documents) {
        const Document& header = document.header;
        description.startDocument(
            mark, document.key,
            {header.productName, header.baseCode, header.helpFolder, header.helpLocation});
        sortBy(document.groups, &Group::name);
        for (const Group& group : document.groups)
            for (const Lookup& lookup : group.lookups)
                description.add({group.name, lookup.name, lookup.href, lookup.purpose},
                                lookup.type == "no type" ? "unknown" : lookup.type,
                                lookup.functionType == "no type" ? "unspecified"
                                                                 : lookup.functionType,
                                lookup.isDeprecated);
    }
}

template <typename Documents>
void describeCollected(Description& description, char mark, const Documents& documents) {
    for (const auto& [key, document] : documents) {
        const auto& header = document.header;
        description.startDocument(mark, key,
                                  {header.getProductName(), header.getBaseCode(),
                                   header.getHelpFolder(), header.getHelpLocation()});
        for (const auto& [name, lookups] : document.items)
            for (const auto& lookup : lookups)
                description.add({name, lookup.getName(), lookup.getHref(), lookup.getPurpose()},
                                lookup.getEntityType().toString(),
                                lookup.getFunctionType().toString(), lookup.isDeprecated());
    }
}

} // namespace

std::optional<std::string> expectedCollection(const CollectionRoot& root) {
    Model model(root);
    try {
        model.collect();
    } catch (const Failure&) {
        return std::nullopt;
    }
    Description description;
    describe(description, '+', std::move(model.installed));
    describe(description, '-', std::move(model.others));
    return description.text();
}

std::string describeCollection(const reference::docparser::LookupResources& resources) {
    Description description;
    describeCollected(description, '+', resources.first);
    describeCollected(description, '-', resources.second);
    return description.text();
}

} // namespace fuzz

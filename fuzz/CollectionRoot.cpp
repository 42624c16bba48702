#include "CollectionRoot.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "SlowText.hpp"
#include "support/ZipFile.hpp"

namespace fuzz {

namespace {

namespace json = boost::json;
using testsupport::ZipBytes;
using testsupport::ZipFile;
using testsupport::ZipMethod;

using Texts = std::vector<std::u16string>;

// Few of each kind, so that keys, names and links meet. The two names beyond ASCII are in one
// order as UTF-8 and in the other as UTF-16.
const Texts kKeys{u"f", u"g", u"p", u"F", u"f1", u""};
const Texts kNames{u"n", u"m", u"a\U0001F600", u"a\uFB00", u"N", u""};
const Texts kHrefs{u"h1", u"h2", u"h3", u"h4", u"H1", u""};
const Texts kStems{u"a", u"b", u"a.b", u"a\U0001F600", u"a\uFB00", u""};
const Texts kSuffixes{u"", u"_ja", u"_de", u"_BR", u"_pt_BR", u"_en", u"_JA", u"_ja_de", u"_"};
const Texts kExtensions{u".json", u".zip", u".JSON", u".txt", u"", u".json.bak", u".tar.zip"};
const Texts kFolders{u"", u"d/", u"d_ja/", u"d/e.json/"};
const Texts kLanguages{u"en", u"ja", u"de", u"BR", u"pt_BR", u"xx", u""};
const std::vector<Texts> kLanguageLists{
    {u"en", u"ja", u"de"}, {u"BR", u"en", u"pt_BR"}, {u"ja"}, {}, {u"en", u"", u"en"}};
const std::vector<std::string> kTypes{"function", "class", "app", "no type"};
const std::vector<std::string> kFunctionTypes{"method", "static", "no type"};

constexpr std::size_t kMaximumFiles = 6;
constexpr std::size_t kMaximumLeaves = 4;
constexpr std::size_t kMaximumLookups = 5;

/// Every text that tells documents and lookups apart gets the next number.
class Numbers {
public:
    std::u16string next() {
        const std::string digits = std::to_string(++last_);
        return std::u16string(digits.begin(), digits.end());
    }

private:
    std::size_t last_ = 0;
};

/// One choice out of sixteen is the first damage after `None`, the next the second, and so on.
template <typename Damage>
Damage chooseDamage(Choices& choices, Damage last) {
    const std::size_t choice = choices.below(16);
    return choice <= static_cast<std::size_t>(last) ? static_cast<Damage>(choice) : Damage::None;
}

Texts chooseSome(Choices& choices, const Texts& texts) {
    Texts some;
    const std::size_t bits = choices.below(std::size_t{1} << texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        if ((bits >> i & 1) != 0)
            some.push_back(texts[i]);
    return some;
}

Lookup chooseLookup(Choices& choices, Numbers& numbers) {
    const std::u16string& name = choices.from(kNames);
    const std::u16string& href = choices.from(kHrefs);
    const std::size_t kinds = choices.below(kTypes.size() * kFunctionTypes.size() * 2);
    return {name,
            numbers.next(),
            href,
            kTypes[kinds / 2 / kFunctionTypes.size()],
            kFunctionTypes[kinds / 2 % kFunctionTypes.size()],
            kinds % 2 == 1};
}

Document chooseDocument(Choices& choices, Numbers& numbers) {
    const std::u16string& baseCode = choices.from(kKeys);
    const std::u16string& helpFolder = choices.from(kKeys);
    Document document{numbers.next(), baseCode, helpFolder, numbers.next(), {}};
    for (std::size_t count = choices.below(kMaximumLookups + 1); count > 0; --count)
        document.lookups.push_back(chooseLookup(choices, numbers));
    return document;
}

LookupText chooseText(Choices& choices, Numbers& numbers) {
    LookupText text{{}, chooseDamage(choices, TextDamage::NullItems)};
    for (std::size_t count = 1 + choices.below(4) % 3; count > 0; --count)
        text.documents.push_back(chooseDocument(choices, numbers));
    return text;
}

std::u16string chooseFileName(Choices& choices) {
    const std::u16string& stem = choices.from(kStems);
    const std::u16string& suffix = choices.from(kSuffixes);
    return stem + suffix + choices.from(kExtensions);
}

Leaf chooseLeaf(Choices& choices, Numbers& numbers) {
    const std::u16string& folder = choices.from(kFolders);
    const std::u16string name = folder + chooseFileName(choices);
    const LeafDamage damage = chooseDamage(choices, LeafDamage::Method);
    const bool isDeflated = choices.yes();
    // An entry must have a name.
    return {name.empty() ? u"a.json" : name, chooseText(choices, numbers), damage, isDeflated};
}

FileKind chooseKind(Choices& choices, const std::u16string& name) {
    const bool mayBePackage = name.ends_with(u".zip");
    switch (choices.below(16)) {
    case 1:
        return FileKind::Folder;
    case 2:
        return FileKind::CutPackage;
    case 3:
        return mayBePackage ? FileKind::Text : FileKind::Package;
    default:
        return mayBePackage ? FileKind::Package : FileKind::Text;
    }
}

LookupFile chooseFile(Choices& choices, Numbers& numbers) {
    LookupFile file{chooseFileName(choices), FileKind::Text, {{}, TextDamage::None}, {}};
    file.kind = chooseKind(choices, file.name);
    if (file.kind == FileKind::Text)
        file.text = chooseText(choices, numbers);
    if (file.kind == FileKind::Package || file.kind == FileKind::CutPackage)
        for (std::size_t count = 1 + choices.below(kMaximumLeaves); count > 0; --count)
            file.leaves.push_back(chooseLeaf(choices, numbers));
    return file;
}

Host chooseHost(Choices& choices) {
    const Texts& languages = choices.from(kLanguageLists);
    const std::u16string& language = choices.from(kLanguages);
    const Texts products = chooseSome(choices, kKeys);
    const Texts packages = chooseSome(choices, kKeys);
    const FailingService failing = chooseDamage(choices, FailingService::Languages);
    return {languages, language, products, packages, failing, 1 + choices.below(4)};
}

json::object jsonOf(const Lookup& lookup) {
    json::object item{{"name", encodeUtf8(lookup.name)},
                      {"refpurpose", encodeUtf8(lookup.purpose)},
                      {"href", encodeUtf8(lookup.href)},
                      {"type", lookup.type},
                      {"fcntype", lookup.functionType}};
    if (lookup.isDeprecated)
        item["deprecated"] = false;
    return item;
}

json::object jsonOf(const Document& document) {
    json::array items;
    for (const Lookup& lookup : document.lookups)
        items.push_back(jsonOf(lookup));
    return {{"productName", encodeUtf8(document.productName)},
            {"baseCode", encodeUtf8(document.baseCode)},
            {"helpFolder", encodeUtf8(document.helpFolder)},
            {"helpLocation", encodeUtf8(document.helpLocation)},
            {"refItems", items}};
}

/// Damage to one document that costs the whole file.
void damage(json::object& document, TextDamage damage) {
    if (damage == TextDamage::UnknownMembers)
        document["unknown"] = {{"refItems", 1}};
    if (damage == TextDamage::MissingBaseCode)
        document.erase("baseCode");
    if (damage == TextDamage::MissingHref)
        document["refItems"].as_array().push_back({{"name", "n"}, {"refpurpose", ""}});
    if (damage == TextDamage::NullItems)
        document["refItems"] = nullptr;
}

std::string bytesOf(const LookupText& text) {
    if (text.damage == TextDamage::Empty)
        return {};
    json::array packages;
    for (std::size_t i = 1; i < text.documents.size(); ++i)
        packages.push_back(jsonOf(text.documents[i]));
    json::object main = jsonOf(text.documents.front());
    damage(packages.empty() ? main : packages.back().as_object(), text.damage);
    if (!packages.empty())
        main["supportPackages"] = packages;
    const std::string bytes = json::serialize(main);
    if (text.damage == TextDamage::CutShort)
        return bytes.substr(0, bytes.size() - 1);
    return text.damage == TextDamage::ByteOrderMark ? "\xEF\xBB\xBF" + bytes : bytes;
}

void damage(ZipBytes& package, std::size_t entry, LeafDamage damage) {
    constexpr std::uint16_t kUnknownMethod = 77;
    if (damage == LeafDamage::Checksum)
        package.breakChecksum(entry);
    if (damage == LeafDamage::Encryption)
        package.markEncrypted(entry);
    if (damage == LeafDamage::Method)
        package.setMethod(entry, kUnknownMethod);
}

std::string bytesOf(const std::vector<Leaf>& leaves) {
    ZipFile file;
    for (const Leaf& leaf : leaves) {
        const bool isFolder = leaf.name.ends_with(u'/');
        file.add(encodeUtf8(leaf.name), isFolder ? std::string() : bytesOf(leaf.text),
                 leaf.isDeflated ? ZipMethod::Deflated : ZipMethod::Stored);
    }
    ZipBytes package = file.build();
    for (std::size_t i = 0; i < leaves.size(); ++i)
        damage(package, i, leaves[i].damage);
    return package.bytes();
}

} // namespace

CollectionRoot chooseRoot(Choices& choices) {
    CollectionRoot root{chooseHost(choices), {}};
    Numbers numbers;
    while (!choices.isUsedUp() && root.files.size() < kMaximumFiles) {
        LookupFile file = chooseFile(choices, numbers);
        const bool isNew = std::none_of(root.files.begin(), root.files.end(),
                                        [&file](const auto& f) { return f.name == file.name; });
        if (isNew && !file.name.empty())
            root.files.push_back(std::move(file));
    }
    return root;
}

void writeFiles(const std::vector<LookupFile>& files, const testsupport::ScopedRoot& root) {
    for (const LookupFile& file : files) {
        const std::filesystem::path path = encodeUtf8(file.name);
        if (file.kind == FileKind::Folder) {
            root.makeFolder(root.lookupFolder() / path);
            continue;
        }
        std::string bytes = file.kind == FileKind::Text ? bytesOf(file.text) : bytesOf(file.leaves);
        if (file.kind == FileKind::CutPackage)
            bytes.resize(bytes.size() / 2);
        root.lookupFile(path, bytes);
    }
}

} // namespace fuzz

#include "refdoc/completion/Completions.hpp"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string_view>
#include <utility>

#include <langinfo.h>

#include "environment/ReferenceProperty.hpp"
#include "refdoc/catalog/CatalogFolder.hpp"
#include "refdoc/catalog/LookupSearch.hpp"
#include "refdoc/host/HostSetup.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
using reference::property::HeaderInfo;

/// Whether the shell cannot misread the UTF-8 of a text: in encodings such as GBK, one of its bytes
/// may absorb the next one, a quote for example, as its second half.
bool isReadAsWritten(const std::u16string& text) {
    constexpr char16_t lastAscii = 0x7F;
    const bool isAscii =
        std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit <= lastAscii; });
    return isAscii || MB_CUR_MAX == 1 || std::string_view(::nl_langinfo(CODESET)) == "UTF-8";
}

/// Collects the completions of one word.
class Collector {
public:
    explicit Collector(const CommandWords& words)
        : fixedPart_(words.fixedPart()), word_(words.word()), wideWord_(fromUtf8(word_)),
          optionsAllowed_(words.optionsAllowed() && fixedPart_.empty()) {}

    const std::u16string& word() const { return wideWord_; }

    void add(const std::string& word, const std::string& meaning = {}) {
        if (word.starts_with(word_) && known_.insert(word).second)
            completions_.push_back({fixedPart_ + word, meaning});
    }

    void add(const std::u16string& word, const std::u16string& meaning) {
        const bool isOption = optionsAllowed_ && word.starts_with(u'-');
        if (word.starts_with(wideWord_) && printable(word) == word && !word.empty() && !isOption &&
            isReadAsWritten(word))
            add(toUtf8(word),
                isReadAsWritten(meaning) ? toUtf8(printable(meaning)) : std::string());
    }

    std::vector<Completion> take() { return std::move(completions_); }

private:
    std::string fixedPart_;
    std::string word_;
    std::u16string wideWord_;
    bool optionsAllowed_;
    std::set<std::string> known_;
    std::vector<Completion> completions_;
};

void addOptions(const CLI::App& application, Collector& collector) {
    for (const CLI::Option* option : application.get_options())
        for (const std::string& name : option->get_lnames())
            collector.add("--" + name, option->get_description());
}

void addCommands(const CLI::App& application, Collector& collector) {
    const auto isShown = [](const CLI::App* command) { return !command->get_group().empty(); };
    for (const CLI::App* command : application.get_subcommands(isShown))
        collector.add(command->get_name(), command->get_description());
}

void addProducts(const LookupDocuments& documents, Collector& collector) {
    for (const auto& [key, document] : documents)
        collector.add(key, document.header.getProductName());
}

/// The header of the product that the resource belongs to; null if it has no lookup document.
const HeaderInfo* headerOf(const std::u16string& resource, const LookupResources& documents) {
    for (const LookupDocuments* map : {&documents.first, &documents.second})
        if (const auto found = map->find(resource);
            found != map->end() && found->second.header.getHelpFolder() == resource)
            return &found->second.header;
    return nullptr;
}

/// The resources with files that are read in the current language, each with the name of its
/// product from the lookup records.
void addResources(const LookupResources& documents, Collector& collector) {
    const std::string current = toUtf8(DocResourceParser::ParsingTools::getCurrentLocale());
    for (const CatalogFile& file : listCatalog(Catalog::Reference).files) {
        if (file.language != kEnglish && file.language != current)
            continue;
        const std::u16string resource = fromUtf8(file.resource);
        const HeaderInfo* header = headerOf(resource, documents);
        collector.add(resource, header == nullptr ? std::u16string() : header->getProductName());
    }
}

/// @param resource empty for the names of all resources.
void addNames(const LookupDocuments& documents, const std::u16string& resource,
              Collector& collector) {
    for (const auto& [key, document] : documents) {
        if (!resource.empty() && document.header.getHelpFolder() != resource)
            continue;
        for (auto entry = document.items.lower_bound(collector.word());
             entry != document.items.end() && entry->first.starts_with(collector.word()); ++entry)
            if (!entry->second.empty())
                collector.add(entry->first, entry->second.front().getPurpose());
    }
}

void addOptionValues(const std::string& option, const OptionValues& fixedValues,
                     Collector& collector) {
    if (const auto values = fixedValues.find(option); values != fixedValues.end())
        for (const std::string_view value : values->second)
            collector.add(std::string(value));
    if (option == "--language")
        for (const std::string& language : supportedLanguages())
            collector.add(language);
    if (option == "--product") {
        const LookupResources documents = DocResourceParser::getResourceLookupFiles();
        addProducts(documents.first, collector);
        addProducts(documents.second, collector);
    }
}

/// The first word may be a resource or a name. There are too many names to offer them for an empty
/// word.
void addShowArguments(const CommandWords& words, Collector& collector) {
    if (words.positionals().size() > 1)
        return;
    const LookupResources documents = DocResourceParser::getResourceLookupFiles();
    if (!words.positionals().empty()) {
        const std::u16string resource = fromUtf8(words.positionals().front());
        addNames(documents.first, resource, collector);
        addNames(documents.second, resource, collector);
        return;
    }
    addResources(documents, collector);
    if (!collector.word().empty())
        addNames(documents.first, {}, collector);
}

void addPatterns(const CommandWords& words, Collector& collector) {
    if (!words.positionals().empty())
        return;
    const LookupResources documents = DocResourceParser::getResourceLookupFiles();
    addNames(documents.first, {}, collector);
    if (words.hasFlag("--all"))
        addNames(documents.second, {}, collector);
}

/// Whether the word is the beginning of an option.
bool wantsOption(const CommandWords& words) {
    return words.optionsAllowed() && words.word().starts_with("-");
}

} // namespace

bool wantsFolder(const CommandWords& words) {
    if (words.optionToFill() != nullptr)
        return words.optionToFill()->get_name() == "--root";
    return words.command().get_name() == "check" && words.positionals().empty() &&
           !wantsOption(words);
}

std::vector<Completion> completionsOf(const CommandWords& words, const OptionValues& optionValues) {
    Collector collector(words);
    const std::string command = words.command().get_name();
    if (words.optionToFill() != nullptr) {
        addOptionValues(words.optionToFill()->get_name(), optionValues, collector);
    } else if (wantsOption(words)) {
        if (&words.command() != &words.application())
            addOptions(words.command(), collector);
        addOptions(words.application(), collector);
    } else if (&words.command() == &words.application()) {
        addCommands(words.application(), collector);
    } else if (command == "show") {
        addShowArguments(words, collector);
    } else if (command == "lookup") {
        addPatterns(words, collector);
    }
    return collector.take();
}

} // namespace refdoc

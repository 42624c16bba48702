#include "refdoc/commands/ShowByName.hpp"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "refdoc/catalog/LookupSearch.hpp"
#include "refdoc/completion/ShellWords.hpp"
#include "refdoc/pages/ResourceEntries.hpp"
#include "refdoc/terminal/Choice.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
using reference::property::RefItemLookup;

/// What one resource has under a name. By convention a document stands in the resource that its
/// header's help folder names, a support package's document in that of the product it extends.
struct Candidate {
    std::u16string resource{};
    std::u16string productName{};
    std::u16string purpose{};
    std::set<std::u16string> products{};
    std::set<std::u16string> hrefs{};
};

std::vector<Candidate> findCandidates(const LookupDocuments& documents,
                                      const std::u16string& name) {
    std::map<std::u16string, Candidate> candidates;
    for (const auto& [product, document] : documents) {
        const auto found = document.items.find(name);
        if (found == document.items.end() || found->second.empty())
            continue;
        const std::u16string& resource = document.header.getHelpFolder();
        if (!isResourceName(resource)) {
            reportError(fmt::format(
                R"(note: "{}" documents "{}", but its help folder "{}" cannot be the name of a resource)",
                toUtf8(product), toUtf8(name), toUtf8(resource)));
            continue;
        }
        Candidate& candidate =
            candidates
                .try_emplace(resource, Candidate{resource, document.header.getProductName(),
                                                 found->second.front().getPurpose()})
                .first->second;
        candidate.products.insert(product);
        for (const RefItemLookup& item : found->second)
            candidate.hrefs.insert(item.getHref());
    }
    std::vector<Candidate> result;
    result.reserve(candidates.size());
    for (auto& [resource, candidate] : candidates)
        result.push_back(std::move(candidate));
    return result;
}

std::string commandFor(const Candidate& candidate, const std::string& name,
                       const GlobalOptions& options) {
    std::string command = "refdoc";
    if (options.root)
        command += " --root " + shellQuoted(*options.root);
    if (options.language)
        command += " --language " + shellQuoted(*options.language);
    return fmt::format("{} show{}{} {} {}", command, options.json ? " --json" : "",
                       name.starts_with('-') || candidate.resource.starts_with(u'-') ? " --" : "",
                       shellQuoted(toUtf8(candidate.resource)), shellQuoted(name));
}

std::u16string description(const Candidate& candidate) {
    return candidate.productName + u": " + candidate.purpose;
}

/// Which candidate is meant: the only one, or the one that the user chooses. Where nobody can be
/// asked, the commands to choose from are told instead.
std::optional<Candidate> chooseCandidate(const std::vector<Candidate>& candidates,
                                         const std::string& name, const GlobalOptions& options) {
    if (candidates.size() == 1)
        return candidates.front();
    if (!options.json && canAskUser()) {
        std::vector<std::u16string> choices;
        choices.reserve(candidates.size());
        for (const Candidate& candidate : candidates)
            choices.push_back(candidate.resource + u" - " + description(candidate));
        const auto chosen =
            askUser(fmt::format("Several products document \"{}\":", name), choices);
        return chosen ? std::optional(candidates[*chosen]) : std::nullopt;
    }
    Lines commands;
    for (const Candidate& candidate : candidates) {
        commands.push_back(commandFor(candidate, name, options));
        commands.push_back("    " + toUtf8(description(candidate)));
    }
    reportError(fmt::format("several products document \"{}\"; choose one:", name), {commands});
    return std::nullopt;
}

ExitCode showCandidate(const Candidate& candidate, const std::string& name,
                       const GlobalOptions& options) {
    const ResourceDocuments documents = DocResourceParser::getResourceFile(candidate.resource);
    const std::vector<Selection> selections =
        select(documents,
               [&, wanted = fromUtf8(name)](const std::u16string& product, const RefItem& item) {
                   return candidate.products.contains(product) &&
                          (candidate.hrefs.contains(item.href) || isCalled(item, wanted));
               });
    if (selections.empty())
        reportError(fmt::format(R"({} documents "{}", but its resource "{}" has no entry for it)",
                                toUtf8(candidate.productName), name, toUtf8(candidate.resource)),
                    {documents.empty() ? triedFiles(candidate.resource) : Lines()});
    return showEntries(selections, candidate.resource,
                       options.json ? EntryFormat::Json : EntryFormat::Pages);
}

ExitCode reportNothingFound(const LookupResources& documents, const std::string& name,
                            const GlobalOptions& options) {
    const std::size_t records = countRecords(documents);
    if (records == 0)
        // Asked for its error: a broken list of installed products drops all records.
        DocResourceParser::getTopLevelProducts();
    const auto roots = DocResourceParser::getReferenceRoots();
    reportError(
        fmt::format(R"(no reference entries found for "{}", neither a resource nor a name)", name),
        {triedFiles(fromUtf8(name)),
         {fmt::format("tried the {} lookup records in {}", records,
                      toUtf8(roots->referenceApiLookupFolder))},
         similarNames(fromUtf8(name), documents, {}, Installed::Either)});
    return showEntries({}, fromUtf8(name), options.json ? EntryFormat::Json : EntryFormat::Pages);
}

} // namespace

ExitCode showByName(const std::string& name, const GlobalOptions& options) {
    const LookupResources documents = DocResourceParser::getResourceLookupFiles();
    const std::u16string wanted = fromUtf8(name);
    std::vector<Candidate> candidates = findCandidates(documents.first, wanted);
    const bool installed = !candidates.empty();
    if (!installed)
        candidates = findCandidates(documents.second, wanted);
    if (candidates.empty())
        return reportNothingFound(documents, name, options);
    if (!installed)
        reportError("note: only products that are not installed document \"" + name + "\"");
    const auto chosen = chooseCandidate(candidates, name, options);
    return chosen ? showCandidate(*chosen, name, options) : ExitCode::Failure;
}

} // namespace refdoc

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/Version.hpp"
#include "refdoc/check/report/Report.hpp"
#include "refdoc/text/Json.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

json::object message(std::string_view text) {
    return {{"text", toJson(text)}};
}

std::string percentEncoded(std::string_view path) {
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string uri;
    for (const char byte : path)
        uri += plain.find(byte) != plain.npos
                   ? std::string(1, byte)
                   : fmt::format("%{:02X}", static_cast<unsigned char>(byte));
    return uri;
}

json::array rules() {
    json::array result;
    for (const Rule& rule : kRules)
        result.push_back(
            json::object{{"id", rule.id},
                         {"shortDescription", message(rule.description)},
                         {"defaultConfiguration", json::object{{"level", levelName(rule.level)}}}});
    return result;
}

/// The files with findings, and those of their entries that have findings.
class Artifacts {
public:
    std::size_t indexOf(const std::string& file, const std::string& entry) {
        const auto known = indices_.find({file, entry});
        if (known != indices_.end())
            return known->second;
        json::object artifact;
        if (entry.empty())
            artifact["location"] = fileLocation(file);
        else {
            artifact["parentIndex"] = indexOf(file, {});
            artifact["location"] = json::object{{"uri", '/' + percentEncoded(entry)}};
        }
        const std::size_t index = artifacts_.size();
        artifacts_.push_back(std::move(artifact));
        indices_.insert({{file, entry}, index});
        return index;
    }

    static json::object fileLocation(const std::string& file) {
        return {{"uri", percentEncoded(file)}, {"uriBaseId", "ROOT"}};
    }

    json::array take() { return std::move(artifacts_); }

private:
    std::map<std::pair<std::string, std::string>, std::size_t> indices_;
    json::array artifacts_;
};

json::object locationOf(const Finding& finding, Artifacts& artifacts) {
    json::object artifact = finding.entry.empty()
                                ? Artifacts::fileLocation(finding.file)
                                : json::object{{"uri", '/' + percentEncoded(finding.entry)}};
    artifact["index"] = artifacts.indexOf(finding.file, finding.entry);
    json::object physical{{"artifactLocation", std::move(artifact)}};
    if (finding.position.line > 0)
        physical["region"] = json::object{{"startLine", finding.position.line},
                                          {"startColumn", finding.position.column}};
    json::object location{{"physicalLocation", std::move(physical)}};
    if (!finding.pointer.empty()) {
        json::object logical{{"fullyQualifiedName", toJson(finding.pointer)}};
        if (!finding.item.empty())
            logical["name"] = toJson(finding.item);
        location["logicalLocations"] = json::array({std::move(logical)});
    }
    return location;
}

json::object resultOf(const Finding& finding, Artifacts& artifacts) {
    json::object result{{"ruleId", ruleOf(finding.fault).id},
                        {"ruleIndex", static_cast<std::size_t>(finding.fault)},
                        {"level", levelName(finding.level)},
                        {"message", message(sentenceOf(finding))},
                        {"locations", json::array({locationOf(finding, artifacts)})}};
    if (finding.further > 0)
        result["properties"] = json::object{{"further", finding.further}};
    return result;
}

} // namespace

std::string sarifLog(const std::vector<const Finding*>& findings, const std::string& root) {
    Artifacts artifacts;
    json::array results;
    for (const Finding* finding : findings)
        results.push_back(resultOf(*finding, artifacts));
    json::object driver{{"name", "refdoc"}, {"version", kVersion}, {"rules", rules()}};
    const std::string folder = percentEncoded(root);
    json::object bases{
        {"ROOT", json::object{{"uri", "file://" + folder + (folder.ends_with('/') ? "" : "/")}}}};
    json::object run{{"tool", json::object{{"driver", std::move(driver)}}},
                     {"columnKind", "unicodeCodePoints"},
                     {"originalUriBaseIds", std::move(bases)},
                     {"artifacts", artifacts.take()},
                     {"results", std::move(results)}};
    return prettyJson(json::object{{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                                   {"version", "2.1.0"},
                                   {"runs", json::array({std::move(run)})}});
}

} // namespace refdoc

#include "refdoc/check/CheckMembers.hpp"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/check/ResourceDocument.hpp"
#include "refdoc/format/JsonPositions.hpp"
#include "refdoc/text/NearNames.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

/// What a schema says about the members of an object.
struct Members {
    std::map<std::string_view, const json::object*> read; ///< with the rules of their values
    std::set<std::u16string> known; ///< also those that are only read without another member
    std::string_view condition;     ///< that other member
};

class MemberCheck {
public:
    MemberCheck(const json::value& schema, FindingList& findings)
        : schema_(schema), findings_(findings) {}

    void check(const json::value& value, const json::object& rule, const std::string& pointer) {
        const json::object& resolved = withoutReference(rule);
        if (const json::object* object = value.if_object())
            return checkObject(*object, resolved, pointer);
        const json::array* array = value.if_array();
        const json::value* items = resolved.if_contains("items");
        for (std::size_t i = 0; array != nullptr && items != nullptr && i < array->size(); ++i)
            check(array->at(i), items->as_object(), fmt::format("{}/{}", pointer, i));
    }

private:
    /// An author's own members are not to be taken for others.
    static constexpr std::size_t kShortName = 8;
    /// Looking for near names takes its time, and hostile files have unknown ones without end.
    static constexpr std::size_t kMostUnknownNames = 1000;

    const json::object& withoutReference(const json::object& rule) const {
        const json::value* reference = rule.if_contains("$ref");
        return reference == nullptr
                   ? rule
                   : schema_.at_pointer(reference->as_string().subview(1)).as_object();
    }

    void checkObject(const json::object& object, const json::object& rule,
                     const std::string& pointer) {
        const Members& members = membersOf(rule, object);
        for (const json::key_value_pair& member : object) {
            const auto read = members.read.find(member.key());
            if (read == members.read.end())
                checkUnread(member.key(), members, object, pointer);
            else if (member.value().is_structured())
                check(member.value(), *read->second, pointer + pointerStep(member.key()));
        }
    }

    void checkUnread(std::string_view name, const Members& members, const json::object& object,
                     const std::string& pointer) {
        if (members.known.contains(fromUtf8(name)))
            return add(fmt::format("{} is not read beside {}", name, members.condition), name,
                       pointer);
        for (const std::u16string& near : namesNear(name, members))
            if (!object.contains(toUtf8(near)))
                return add(fmt::format("{} is not read (did you mean \"{}\"?)", inQuotes(name),
                                       toUtf8(near)),
                           name, pointer);
    }

    void add(std::string message, std::string_view name, const std::string& pointer) {
        findings_.add(Fault::UnreadMember, Loss::Nothing, std::move(message),
                      pointer + pointerStep(name));
    }

    const std::vector<std::u16string>& namesNear(std::string_view name, const Members& members) {
        static const std::vector<std::u16string> none;
        const std::pair key(&members, std::string(name));
        const auto found = near_.find(key);
        if (found != near_.end())
            return found->second;
        if (near_.size() == kMostUnknownNames)
            return none;
        const std::size_t mostWrong = name.size() < kShortName ? 1 : kMostWrongLetters;
        return near_.emplace(key, nearNames(fromUtf8(name), members.known, mostWrong))
            .first->second;
    }

    const Members& membersOf(const json::object& rule, const json::object& object) {
        const json::value* condition = rule.if_contains("if");
        const bool isMet =
            condition != nullptr && object.contains(condition->at("required").at(0).as_string());
        std::optional<Members>& members = members_[&rule][isMet ? 1 : 0];
        if (!members) {
            members.emplace();
            collect(rule, isMet, true, *members);
        }
        return *members;
    }

    void collect(const json::object& rule, bool conditionIsMet, bool areRead,
                 Members& members) const {
        if (const json::value* properties = rule.if_contains("properties"))
            for (const json::key_value_pair& property : properties->as_object()) {
                members.known.insert(fromUtf8(property.key()));
                if (areRead)
                    members.read.emplace(property.key(), &property.value().as_object());
            }
        if (const json::value* all = rule.if_contains("allOf"))
            for (const json::value& part : all->as_array())
                collect(withoutReference(part.as_object()), conditionIsMet, areRead, members);
        if (const json::value* condition = rule.if_contains("if")) {
            members.condition = condition->at("required").at(0).as_string();
            collect(withoutReference(rule.at("then").as_object()), conditionIsMet,
                    areRead && conditionIsMet, members);
            collect(withoutReference(rule.at("else").as_object()), conditionIsMet,
                    areRead && !conditionIsMet, members);
        }
    }

    const json::value& schema_;
    FindingList& findings_;
    std::unordered_map<const json::object*, std::array<std::optional<Members>, 2>> members_;
    std::map<std::pair<const Members*, std::string>, std::vector<std::u16string>> near_;
};

} // namespace

void checkMembers(const json::value& schema, const json::value& resource, FindingList& findings) {
    MemberCheck(schema, findings).check(resource, schema.as_object(), {});
    forEachDocument(resource, [&](const ResourceDocument& document) {
        if (document.value != &resource && document.value->as_object().contains("supportPackages"))
            findings.add(Fault::UnreadMember, Loss::Nothing,
                         "supportPackages is not read: a support package has none of its own",
                         document.pointer + "/supportPackages");
    });
}

} // namespace refdoc

#include "refdoc/check/CheckSchema.hpp"

#include <cstddef>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <fmt/format.h>

#include "refdoc/Schemas.hpp"
#include "refdoc/check/ResourceDocument.hpp"
#include "refdoc/check/SchemaValidator.hpp"
#include "refdoc/format/JsonPositions.hpp"
#include "refdoc/text/NearNames.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

/// The faults of an item with more values than this are not told one by one: the validator keeps
/// all of them at once.
constexpr std::size_t kMostExplainedValues = 20000;
/// Nor are those of items beyond so many values: finding out costs more than what is told is worth.
constexpr std::size_t kMostExplainedInAll = 500000;

void eraseEverywhere(json::value& value, std::string_view member) {
    if (json::object* object = value.if_object()) {
        object->erase(member);
        for (json::key_value_pair& child : *object)
            eraseEverywhere(child.value(), member);
    } else if (json::array* array = value.if_array()) {
        for (json::value& element : *array)
            eraseEverywhere(element, member);
    }
}

/// The schema without what it says about the elements of long lists, which are checked one by one.
json::value frameOf(json::value schema) {
    schema.at_pointer("/definitions/document/properties/refItems").as_object().erase("items");
    schema.at_pointer("/properties/supportPackages").as_object().erase("items");
    return schema;
}

/// A schema that is one of the definitions of another.
json::value definitionOf(const json::value& schema, std::string_view name) {
    const json::object reference{{"$ref", fmt::format("#/definitions/{}", name)}};
    return json::object{{"allOf", json::array({reference})},
                        {"definitions", schema.at("definitions")}};
}

json::value withoutEnumerations(json::value schema) {
    eraseEverywhere(schema, "enum");
    return schema;
}

std::size_t countValues(const json::value& value) {
    std::size_t count = 1;
    if (const json::object* object = value.if_object())
        for (const json::key_value_pair& member : *object)
            count += countValues(member.value());
    else if (const json::array* array = value.if_array())
        for (const json::value& element : *array)
            count += countValues(element);
    return count;
}

/// A step of a pointer as an author would write it: "name", or "list[3]" for an element.
std::string subjectOf(const std::vector<std::string>& steps) {
    if (steps.empty())
        return "the document";
    const bool isElement = steps.back().find_first_not_of("0123456789") == std::string::npos;
    return isElement && steps.size() > 1
               ? fmt::format("{}[{}]", steps[steps.size() - 2], steps.back())
               : steps.back();
}

/// What a schema says about values at a place: nothing when it does not name the place.
const json::object* ruleAt(const json::value& root, const json::object& rule,
                           const std::vector<std::string>& steps, std::size_t depth) {
    if (const json::value* reference = rule.if_contains("$ref"))
        return ruleAt(root, root.at_pointer(reference->as_string().subview(1)).as_object(), steps,
                      depth);
    const json::value* whole = rule.if_contains("allOf");
    if (depth == steps.size())
        return whole == nullptr ? &rule : ruleAt(root, whole->at(0).as_object(), steps, depth);
    if (const json::value* items = rule.if_contains("items"))
        return ruleAt(root, items->as_object(), steps, depth + 1);
    if (const json::value* properties = rule.if_contains("properties"))
        if (const json::value* property = properties->as_object().if_contains(steps[depth]))
            return ruleAt(root, property->as_object(), steps, depth + 1);
    for (const std::string_view branch : {"then", "else"})
        if (const json::value* part = rule.if_contains(branch))
            if (const json::object* found = ruleAt(root, part->as_object(), steps, depth))
                return found;
    return whole == nullptr ? nullptr : ruleAt(root, whole->at(0).as_object(), steps, depth);
}

/// A member of nearly the name of the one that is missing.
std::string insteadOf(const std::string& missing, const json::value& value) {
    constexpr std::size_t mostMembers = 100;
    const json::object* object = value.if_object();
    std::set<std::u16string> names;
    if (object != nullptr && object->size() <= mostMembers)
        for (const json::key_value_pair& member : *object)
            names.insert(fromUtf8(member.key()));
    const auto near = nearNames(fromUtf8(missing), names);
    return near.empty() ? "" : fmt::format(" (there is {})", inQuotes(toUtf8(near.front())));
}

std::string_view wantedKind(const json::object* rule) {
    const json::value* type = rule == nullptr ? nullptr : rule->if_contains("type");
    if (type == nullptr)
        return "what the format has here";
    return *type == "string" ? "a text" : *type == "array" ? "a list" : "an object";
}

std::string wrongText(const json::value& value, const json::object* rule) {
    const json::value* enumeration = rule == nullptr ? nullptr : rule->if_contains("enum");
    if (enumeration == nullptr)
        return "does not keep to the format";
    const json::array& texts = enumeration->as_array();
    std::string message;
    if (const json::string* text = value.if_string()) {
        std::set<std::u16string> known;
        for (const json::value& each : texts)
            known.insert(fromUtf8(std::string_view(each.as_string())));
        message = fmt::format("is {}, which is none of its texts", inQuotes(*text));
        const auto near = nearNames(fromUtf8(std::string_view(*text)), known);
        if (!near.empty())
            message += fmt::format(" (did you mean \"{}\"?)", toUtf8(near.front()));
    } else {
        message = fmt::format("is {}, not a text", kindName(value));
    }
    return fmt::format("{}; it counts as \"{}\"", message,
                       std::string_view(texts.front().as_string()));
}

} // namespace

class CheckSchema::Validation {
public:
    explicit Validation(const json::value& schema)
        : schema_(schema), root_(frameOf(schema)),
          document_(definitionOf(frameOf(schema), "document")), item_(definitionOf(schema, "item")),
          itemKinds_(withoutEnumerations(definitionOf(schema, "item"))) {}

    void check(const json::value& resource, FindingList& findings) const {
        explain(root_, resource, {}, resource, findings);
        std::size_t explained = 0;
        forEachDocument(resource, [&](const ResourceDocument& document) {
            if (document.value != &resource && !document_.accepts(*document.value))
                explain(document_, *document.value, document.pointer, resource, findings);
            checkItems(document, resource, explained, findings);
        });
    }

    const json::value& schema() const { return schema_; }

private:
    void checkItems(const ResourceDocument& document, const json::value& resource,
                    std::size_t& explained, FindingList& findings) const {
        const json::array* items = listMember(*document.value, "refItems");
        for (std::size_t i = 0; items != nullptr && i < items->size(); ++i) {
            const json::value& item = items->at(i);
            if (item_.accepts(item))
                continue;
            const std::string pointer = fmt::format("{}/refItems/{}", document.pointer, i);
            const std::size_t values = countValues(item);
            explained += values;
            if (values <= kMostExplainedValues && explained <= kMostExplainedInAll)
                explain(item_, item, pointer, resource, findings);
            else
                addUnexplained(item, pointer, findings);
        }
    }

    void addUnexplained(const json::value& item, const std::string& pointer,
                        FindingList& findings) const {
        if (!itemKinds_.accepts(item))
            findings.add(Fault::WrongKind, findings.wholeText(),
                         "the item does not keep to the format", pointer);
        else
            findings.add(Fault::UnknownText, Loss::Nothing,
                         "the item has an enumeration with an unknown text", pointer);
    }

    void explain(const SchemaValidator& validator, const json::value& value,
                 const std::string& pointer, const json::value& resource,
                 FindingList& findings) const {
        for (const SchemaError& error : validator.errorsIn(value))
            explain(error, pointer + error.pointer, resource, findings);
    }

    void explain(const SchemaError& error, const std::string& pointer, const json::value& resource,
                 FindingList& findings) const {
        const std::vector<std::string> steps = pointerSteps(pointer);
        const json::value& value = resource.at_pointer(pointer);
        const json::object* rule = ruleAt(schema_, schema_.as_object(), steps, 0);
        switch (error.kind) {
        case SchemaError::Kind::MissingMember:
            return findings.add(
                Fault::MissingMember, findings.wholeText(),
                fmt::format("{} is missing{}", error.member, insteadOf(error.member, value)),
                pointer);
        case SchemaError::Kind::WrongKind:
            return findings.add(Fault::WrongKind, findings.wholeText(),
                                fmt::format("{} is {}, not {}", subjectOf(steps), kindName(value),
                                            wantedKind(rule)),
                                pointer);
        case SchemaError::Kind::UnknownText:
            return findings.add(Fault::UnknownText, Loss::Nothing,
                                fmt::format("{} {}", subjectOf(steps), wrongText(value, rule)),
                                pointer);
        }
    }

    json::value schema_;
    SchemaValidator root_;
    SchemaValidator document_;
    SchemaValidator item_;
    SchemaValidator itemKinds_;
};

CheckSchema::CheckSchema(std::string_view schema)
    : validation_(std::make_unique<const Validation>(json::parse({schema.data(), schema.size()}))) {
}

CheckSchema::~CheckSchema() = default;

void CheckSchema::check(const json::value& resource, FindingList& findings) const {
    validation_->check(resource, findings);
}

const json::value& CheckSchema::schema() const {
    return validation_->schema();
}

const CheckSchema& lookupSchema() {
    static const CheckSchema schema(kLookupSchema);
    return schema;
}

const CheckSchema& referenceSchema() {
    static const CheckSchema schema(kReferenceSchema);
    return schema;
}

std::string_view kindName(const json::value& value) {
    switch (value.kind()) {
    case json::kind::null:
        return "null";
    case json::kind::bool_:
        return "a truth value";
    case json::kind::string:
        return "a text";
    case json::kind::array:
        return "a list";
    case json::kind::object:
        return "an object";
    default:
        return "a number";
    }
}

} // namespace refdoc

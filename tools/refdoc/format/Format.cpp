#include "refdoc/format/Format.hpp"

#include <stdexcept>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>

#include "refdoc/Schemas.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

std::string textOf(const json::object& schema, std::string_view keyword) {
    const json::value* text = schema.if_contains(keyword);
    return text == nullptr ? std::string() : std::string(text->as_string());
}

ValueKind kindOf(const json::object& schema) {
    const std::string type = textOf(schema, "type");
    if (schema.contains("enum"))
        return ValueKind::Enumeration;
    if (type.empty())
        return ValueKind::Any;
    static const std::map<std::string_view, ValueKind> kinds{
        {"string", ValueKind::Text}, {"array", ValueKind::List}, {"object", ValueKind::Object}};
    return kinds.at(type);
}

SevenBit sevenBitOf(const json::object& schema) {
    static const std::map<std::string_view, SevenBit> values{
        {"", SevenBit::Never}, {"always", SevenBit::Always}, {"unlessApp", SevenBit::UnlessApp}};
    return values.at(textOf(schema, "sevenBit"));
}

} // namespace

const ValueFormat& ValueFormat::forObject(const json::object& object) const {
    if (condition.empty())
        return *this;
    return (object.contains(condition) ? *with : *without).forObject(object);
}

class Format::Reader {
public:
    Reader(Format& format, std::string_view schema)
        : format_(format), document_(json::parse({schema.data(), schema.size()})) {}

    const ValueFormat* readRoot() { return read(document_.as_object()); }

private:
    /// Reads each definition once and shares it among those that refer to it.
    const ValueFormat* read(const json::object& schema) {
        if (const json::value* reference = schema.if_contains("$ref"))
            return read(definition(*reference));
        const auto [known, isNew] = read_.try_emplace(&schema, nullptr);
        if (!isNew && known->second == nullptr)
            throw std::runtime_error("the schema refers to itself");
        if (isNew) {
            ValueFormat& value = format_.values_.emplace_back();
            readInto(value, schema);
            collectNames(value);
            known->second = &value;
        }
        return known->second;
    }

    const json::object& definition(const json::value& reference) const {
        return document_.at_pointer(reference.as_string().subview(1)).as_object();
    }

    void readInto(ValueFormat& value, const json::object& schema) {
        if (const json::value* parts = schema.if_contains("allOf"))
            value = *read(parts->as_array().at(0).as_object());
        if (const ValueKind kind = kindOf(schema); kind != ValueKind::Any)
            value.kind = kind;
        value.sevenBit = sevenBitOf(schema);
        readTexts(value, schema);
        if (const json::value* elements = schema.if_contains("items"))
            value.elements = read(elements->as_object());
        readMembers(value, schema);
        readCondition(value, schema);
    }

    static void collectNames(ValueFormat& value) {
        for (const auto& [name, member] : value.members)
            value.names.insert(fromUtf8(name));
        for (const ValueFormat* branch : {value.with, value.without})
            if (branch != nullptr)
                value.names.insert(branch->names.begin(), branch->names.end());
    }

    static void readTexts(ValueFormat& value, const json::object& schema) {
        if (const json::value* texts = schema.if_contains("enum"))
            for (const json::value& text : texts->as_array())
                value.texts.emplace_back(text.as_string());
    }

    void readMembers(ValueFormat& value, const json::object& schema) {
        if (const json::value* properties = schema.if_contains("properties"))
            for (const json::key_value_pair& property : properties->as_object())
                addMember(value, property.key(), property.value().as_object());
        if (const json::value* required = schema.if_contains("required"))
            for (const json::value& name : required->as_array())
                value.members.at(std::string(name.as_string())).isRequired = true;
    }

    void addMember(ValueFormat& value, std::string_view name, const json::object& schema) {
        format_.names_.emplace(name);
        MemberFormat& member = value.members[std::string(name)];
        member.value = read(schema);
        member.unread = textOf(schema, "unread");
    }

    void readCondition(ValueFormat& value, const json::object& schema) {
        const json::value* condition = schema.if_contains("if");
        if (condition == nullptr)
            return;
        value.condition = condition->at("required").at(0).as_string();
        value.with = read(schema.at("then").as_object());
        value.without = read(schema.at("else").as_object());
    }

    Format& format_;
    json::value document_;
    std::map<const json::object*, const ValueFormat*> read_; ///< null while being read
};

Format::Format(std::string_view schema) : root_(Reader(*this, schema).readRoot()) {}

const Format& lookupFormat() {
    static const Format format(kLookupSchema);
    return format;
}

const Format& referenceFormat() {
    static const Format format(kReferenceSchema);
    return format;
}

} // namespace refdoc

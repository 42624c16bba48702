#include "Readers.hpp"

#include <cstddef>
#include <stdexcept>

#include <boost/json/monotonic_resource.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>

namespace bench {

namespace {

struct BoostJson {
    using Value = const boost::json::value*;
    using Object = const boost::json::object*;

    static Object toObject(Value value) { return &value->as_object(); }

    static std::optional<Value> find(Object object, Member member) {
        const Value value = object->if_contains(nameOf(member));
        return value == nullptr ? std::nullopt : std::optional(value);
    }

    static std::string_view text(Value value) { return value->as_string(); }

    static std::size_t size(Value list) { return list->as_array().size(); }

    template <typename Use>
    static void forEach(Value list, Use use) {
        for (const boost::json::value& element : list->as_array())
            use(&element);
    }
};

/// A tree of nodes of one type, whatever they hold.
template <typename Node>
struct NodeTree {
    using Value = const Node*;
    using Object = Value;

    static Object toObject(Value value) { return value; }
};

struct RapidJson : NodeTree<rapidjson::Value> {

    static std::optional<Value> find(Object object, Member member) {
        const std::string_view name = nameOf(member);
        const auto found = object->FindMember(rapidjson::Value(
            rapidjson::StringRef(name.data(), static_cast<rapidjson::SizeType>(name.size()))));
        return found == object->MemberEnd() ? std::nullopt : std::optional<Value>(&found->value);
    }

    static std::string_view text(Value value) {
        return {value->GetString(), value->GetStringLength()};
    }

    static std::size_t size(Value list) { return list->Size(); }

    template <typename Use>
    static void forEach(Value list, Use use) {
        for (const rapidjson::Value& element : list->GetArray())
            use(&element);
    }
};

struct Nlohmann : NodeTree<nlohmann::json> {

    static std::optional<Value> find(Object object, Member member) {
        const auto found = object->find(nameOf(member));
        return found == object->end() ? std::nullopt : std::optional<Value>(&*found);
    }

    static std::string_view text(Value value) { return value->get_ref<const std::string&>(); }

    static std::size_t size(Value list) { return list->size(); }

    template <typename Use>
    static void forEach(Value list, Use use) {
        for (const nlohmann::json& element : *list)
            use(&element);
    }
};

rapidjson::Document parseInSitu(std::string& text) {
    rapidjson::Document document;
    document.ParseInsitu(text.data());
    if (document.HasParseError())
        throw std::runtime_error("not JSON");
    return document;
}

} // namespace

Lookups readLookupsWithBoostJson(const std::string& text) {
    const boost::json::value root = boost::json::parse(text);
    return RecordReader<BoostJson>::readLookups(&root);
}

RefItems readRefItemsWithBoostJson(const std::string& text) {
    const boost::json::value root = boost::json::parse(text);
    return RecordReader<BoostJson>::readRefItems(&root);
}

Lookups readLookupsWithBoostJsonArena(const std::string& text) {
    boost::json::monotonic_resource arena;
    const boost::json::value root = boost::json::parse(text, &arena);
    return RecordReader<BoostJson>::readLookups(&root);
}

RefItems readRefItemsWithBoostJsonArena(const std::string& text) {
    boost::json::monotonic_resource arena;
    const boost::json::value root = boost::json::parse(text, &arena);
    return RecordReader<BoostJson>::readRefItems(&root);
}

Lookups readLookupsWithRapidJson(std::string& text) {
    const rapidjson::Document root = parseInSitu(text);
    return RecordReader<RapidJson>::readLookups(&root);
}

RefItems readRefItemsWithRapidJson(std::string& text) {
    const rapidjson::Document root = parseInSitu(text);
    return RecordReader<RapidJson>::readRefItems(&root);
}

Lookups readLookupsWithNlohmann(const std::string& text) {
    const nlohmann::json root = nlohmann::json::parse(text);
    return RecordReader<Nlohmann>::readLookups(&root);
}

RefItems readRefItemsWithNlohmann(const std::string& text) {
    const nlohmann::json root = nlohmann::json::parse(text);
    return RecordReader<Nlohmann>::readRefItems(&root);
}

} // namespace bench

#include "Readers.hpp"

#include <optional>
#include <string_view>

#include <simdjson.h>

namespace bench {

namespace {

namespace ondemand = simdjson::ondemand;

/// On demand: a value can be read once, while the parser is just before it.
struct Simdjson {
    using Value = ondemand::value;
    using Object = ondemand::object;

    static Object toObject(Value& value) { return value.get_object(); }

    static std::optional<Value> find(Object& object, Member member) {
        Value value;
        // It ends a document; where it is missing, the document must not be searched a second time.
        auto found = member == Member::SupportPackages
                         ? object.find_field(nameOf(member))
                         : object.find_field_unordered(nameOf(member));
        return found.get(value) == simdjson::SUCCESS ? std::optional(value) : std::nullopt;
    }

    static std::string_view text(Value& value) { return value.get_string(); }

    static std::size_t size(const Value& /*list*/) { return 0; }

    template <typename Use>
    static void forEach(Value& list, Use use) {
        for (ondemand::value element : list.get_array())
            use(element);
    }

    /// Asking for each member by name would go through the whole item again for every missing one.
    static LookupTexts lookupTexts(Object& item) {
        LookupTexts texts{};
        for (auto field : item) {
            const std::string_view name = field.unescaped_key();
            if (name == nameOf(Member::Name))
                texts.name = field.value().get_string();
            else if (name == nameOf(Member::Type))
                texts.type = std::string_view(field.value().get_string());
            else if (name == nameOf(Member::Refpurpose))
                texts.purpose = field.value().get_string();
            else if (name == nameOf(Member::Href))
                texts.href = field.value().get_string();
            else if (name == nameOf(Member::Fcntype))
                texts.functionType = std::string_view(field.value().get_string());
            else if (name == nameOf(Member::Deprecated))
                texts.isDeprecated = true;
        }
        return texts;
    }
};

ondemand::document iterate(std::string& text) {
    static thread_local ondemand::parser parser;
    text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
    return parser.iterate(text);
}

} // namespace

Lookups readLookupsWithSimdjson(std::string& text) {
    ondemand::document root = iterate(text);
    return RecordReader<Simdjson>::readLookups(root.get_value());
}

RefItems readRefItemsWithSimdjson(std::string& text) {
    ondemand::document root = iterate(text);
    return RecordReader<Simdjson>::readRefItems(root.get_value());
}

} // namespace bench

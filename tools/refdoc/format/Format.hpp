#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

namespace refdoc {

/// The values that a place may hold. An `Enumeration` is a text, and any other value counts as the
/// first of its texts.
enum class ValueKind : std::uint8_t { Any, Text, Enumeration, List, Object };

/// Whether a text is read byte by byte, so that only ASCII survives.
enum class SevenBit : std::uint8_t { Never, Always, UnlessApp };

struct ValueFormat;

struct MemberFormat {
    const ValueFormat* value = nullptr;
    bool isRequired = false;
    /// Why the member is not read here; empty if it is.
    std::string unread{};
};

/// What the format says about the values at one place.
struct ValueFormat {
    using Members = std::map<std::string, MemberFormat, std::less<>>;

    ValueKind kind = ValueKind::Any;
    SevenBit sevenBit = SevenBit::Never;
    std::vector<std::string> texts{};      ///< of an enumeration, the default first
    const ValueFormat* elements = nullptr; ///< of a list
    Members members{};                     ///< of an object
    std::set<std::u16string> names{};      ///< of all members, read or not
    /// The format of an object without the condition's member, for objects that depend on one. Such
    /// an object has no `members` of its own.
    std::string condition{};
    const ValueFormat* with = nullptr;
    const ValueFormat* without = nullptr;

    /// The formats of an object with and without the member of the condition.
    const ValueFormat& forObject(const boost::json::object& object) const;
};

/// The format of one kind of resource file, read from its JSON Schema with all references resolved
/// and all parts of an object merged. Immutable, and so safe from any thread.
///
/// Supports the part of JSON Schema that the schemas of resource files use: type, enum, required,
/// properties, items, $ref into the definitions, allOf of one part, and if/then/else on the
/// presence of one member. Two keywords are our own, and validators ignore them: "sevenBit"
/// ("always", or "unlessApp" for a text that is 7-bit unless the item documents an app), and
/// "unread", the reason why a member is not read where it stands.
class Format {
public:
    using Names = std::set<std::string, std::less<>>;

    /// @throws std::exception for a text that is not JSON, lacks what it refers to, or refers to
    /// itself.
    explicit Format(std::string_view schema);

    Format(const Format&) = delete;
    Format& operator=(const Format&) = delete;

    /// The format of the whole document.
    const ValueFormat& root() const { return *root_; }
    /// The names of all members anywhere in the format.
    const Names& names() const { return names_; }

private:
    class Reader;

    std::deque<ValueFormat> values_; ///< they refer to each other
    Names names_;
    const ValueFormat* root_;
};

/// The formats of lookup files and of full reference files.
const Format& lookupFormat();
const Format& referenceFormat();

} // namespace refdoc

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#pragma GCC visibility push(default)

namespace reference::property {

/// A 4-byte enumeration whose values have texts. `Definition` gives the plain enumeration `Value`,
/// counted from 0, and `texts`, the text of each value; value 0 is the default.
template <typename Definition>
class TextEnumeration : public Definition {
public:
    /// The plain enumeration.
    using Value = typename Definition::Value;

    /// A value stands for itself.
    constexpr TextEnumeration(Value value) noexcept : value_(value) {}
    /// The plain value, for comparisons and `switch`.
    constexpr operator Value() const noexcept { return value_; }

    /// The value 0, which stands in where a document names none.
    static constexpr TextEnumeration getDefaultValue() noexcept { return Value{}; }

    /// The value whose text is exactly `text`; throws `std::invalid_argument` when there is none.
    static TextEnumeration stringToEnum(std::string_view text) {
        const auto found = std::find(Definition::texts.begin(), Definition::texts.end(), text);
        if (found == Definition::texts.end())
            throw std::invalid_argument("unknown enumeration text");
        return static_cast<Value>(found - Definition::texts.begin());
    }

    /// The text of the value; a number that is not a value has the text of the default.
    constexpr std::string_view toString() const noexcept {
        const auto index = static_cast<std::size_t>(value_);
        return Definition::texts[index < Definition::texts.size() ? index : 0];
    }

private:
    Value value_;
};

/// What a documented name stands for: values and texts.
struct RefEntityTypeDefinition {
    /// The values, counted from 0.
    enum Value : std::int32_t {
        Unknown,
        Function,
        Method,
        Class,
        Property,
        Event,
        Enumeration,
        Namespace,
        Object,
        Operator,
        Keyword,
        Command,
        App,
        Tool,
        Format,
        Macro,
        Type
    };
    /// The text of each value, as documents write it.
    [[gnu::visibility("hidden")]] static constexpr std::array<std::string_view, 17> texts{
        "unknown",     "function",  "method", "class",    "property", "event",
        "enumeration", "namespace", "object", "operator", "keyword",  "command",
        "app",         "tool",      "format", "macro",    "type"};
};

/// Which kind of function a name stands for: values and texts.
struct FunctionTypeDefinition {
    /// The values, counted from 0.
    enum Value : std::int32_t {
        Unspecified,
        Function,
        Method,
        Constructor,
        Static,
        Script,
        Macro,
        SystemCall
    };
    /// The text of each value, as documents write it.
    [[gnu::visibility("hidden")]] static constexpr std::array<std::string_view, 8> texts{
        "unspecified", "function", "method", "constructor",
        "static",      "script",   "macro",  "systemcall"};
};

/// Whether an item is discouraged, deprecated or removed: values and texts.
struct DeprecationStatusDefinition {
    /// The values, counted from 0.
    enum Value : std::int32_t { None, Discouraged, Deprecated, Removed };
    /// The text of each value, as documents write it.
    [[gnu::visibility("hidden")]] static constexpr std::array<std::string_view, 4> texts{
        "none", "discouraged", "deprecated", "removed"};
};

/// How a call is written: values and texts.
struct SyntaxTypeDefinition {
    /// The values, counted from 0.
    enum Value : std::int32_t { Plain, Function, Command, Creation, NameValue };
    /// The text of each value, as documents write it.
    [[gnu::visibility("hidden")]] static constexpr std::array<std::string_view, 5> texts{
        "plain", "function", "command", "creation", "namevalue"};
};

/// What a documented name stands for.
using RefEntityType = TextEnumeration<RefEntityTypeDefinition>;
/// Which kind of function a name stands for.
using FunctionType = TextEnumeration<FunctionTypeDefinition>;
/// Whether an item is discouraged, deprecated or removed.
using DeprecationStatus = TextEnumeration<DeprecationStatusDefinition>;
/// How a call is written.
using SyntaxType = TextEnumeration<SyntaxTypeDefinition>;

/// What a resource document says about the product that it documents. All texts are UTF-16, as the
/// document has them, and valid as long as the header; any may be empty.
class HeaderInfo {
public:
    /// A header with these texts.
    HeaderInfo(std::u16string productName, std::u16string baseCode, std::u16string helpFolder,
               std::u16string helpLocation) noexcept
        : productName_(std::move(productName)), baseCode_(std::move(baseCode)),
          helpFolder_(std::move(helpFolder)), helpLocation_(std::move(helpLocation)) {}

    /// The product's name, as it is shown to people.
    const std::u16string& getProductName() const noexcept { return productName_; }
    /// The product's code, which is the key of a support package's document.
    const std::u16string& getBaseCode() const noexcept { return baseCode_; }
    /// The folder of the product's help, which is the key of its own document.
    const std::u16string& getHelpFolder() const noexcept { return helpFolder_; }
    /// Where the product's help lies, in the documents' own terms.
    const std::u16string& getHelpLocation() const noexcept { return helpLocation_; }

private:
    std::u16string productName_;
    std::u16string baseCode_;
    std::u16string helpFolder_;
    std::u16string helpLocation_;
};

/// The short record of one documented name. All texts are UTF-16, as the document has them, and
/// valid as long as the record.
class RefItemLookup {
public:
    /// A record with these values.
    RefItemLookup(std::u16string name, RefEntityType entityType, std::u16string purpose,
                  bool deprecated, std::u16string href, FunctionType functionType) noexcept
        : name_(std::move(name)), entityType_(entityType), purpose_(std::move(purpose)),
          deprecated_(deprecated), href_(std::move(href)), functionType_(functionType) {}

    /// The documented name.
    const std::u16string& getName() const noexcept { return name_; }
    /// What the name stands for.
    RefEntityType getEntityType() const noexcept { return entityType_; }
    /// What it is for, in one line.
    const std::u16string& getPurpose() const noexcept { return purpose_; }
    /// Whether the document marks it as deprecated.
    bool isDeprecated() const noexcept { return deprecated_; }
    /// The link to the page that documents the name.
    const std::u16string& getHref() const noexcept { return href_; }
    /// Which kind of function it is; the default for anything else.
    FunctionType getFunctionType() const noexcept { return functionType_; }

private:
    std::u16string name_;
    RefEntityType entityType_;
    std::u16string purpose_;
    bool deprecated_;
    std::u16string href_;
    FunctionType functionType_;
};

} // namespace reference::property

#pragma GCC visibility pop

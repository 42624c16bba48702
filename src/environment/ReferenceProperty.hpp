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
    using Value = typename Definition::Value;

    constexpr TextEnumeration(Value value) noexcept : value_(value) {}
    constexpr operator Value() const noexcept { return value_; }

    static constexpr TextEnumeration getDefaultValue() noexcept { return Value{}; }

    /// The value whose text is exactly `text`; throws `std::invalid_argument` when there is none.
    static TextEnumeration stringToEnum(std::string_view text) {
        const auto found = std::find(Definition::texts.begin(), Definition::texts.end(), text);
        if (found == Definition::texts.end())
            throw std::invalid_argument("unknown enumeration text");
        return static_cast<Value>(found - Definition::texts.begin());
    }

    /// The text of the value; that of the default for a number that is no value.
    constexpr std::string_view toString() const noexcept {
        const auto index = static_cast<std::size_t>(value_);
        return Definition::texts[index < Definition::texts.size() ? index : 0];
    }

private:
    Value value_;
};

struct RefEntityTypeDefinition {
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
    static constexpr std::array<std::string_view, 17> texts{
        "unknown",     "function",  "method", "class",    "property", "event",
        "enumeration", "namespace", "object", "operator", "keyword",  "command",
        "app",         "tool",      "format", "macro",    "type"};
};

struct FunctionTypeDefinition {
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
    static constexpr std::array<std::string_view, 8> texts{"unspecified", "function",  "method",
                                                           "constructor", "static",    "script",
                                                           "macro",       "systemcall"};
};

struct DeprecationStatusDefinition {
    enum Value : std::int32_t { None, Discouraged, Deprecated, Removed };
    static constexpr std::array<std::string_view, 4> texts{"none", "discouraged", "deprecated",
                                                           "removed"};
};

struct SyntaxTypeDefinition {
    enum Value : std::int32_t { Plain, Function, Command, Creation, NameValue };
    static constexpr std::array<std::string_view, 5> texts{"plain", "function", "command",
                                                           "creation", "namevalue"};
};

using RefEntityType = TextEnumeration<RefEntityTypeDefinition>;
using FunctionType = TextEnumeration<FunctionTypeDefinition>;
using DeprecationStatus = TextEnumeration<DeprecationStatusDefinition>;
using SyntaxType = TextEnumeration<SyntaxTypeDefinition>;

/// What a resource document says about the product that it documents.
class HeaderInfo {
public:
    HeaderInfo(std::u16string productName, std::u16string baseCode, std::u16string helpFolder,
               std::u16string helpLocation) noexcept
        : productName_(std::move(productName)), baseCode_(std::move(baseCode)),
          helpFolder_(std::move(helpFolder)), helpLocation_(std::move(helpLocation)) {}

    const std::u16string& getProductName() const noexcept { return productName_; }
    const std::u16string& getBaseCode() const noexcept { return baseCode_; }
    const std::u16string& getHelpFolder() const noexcept { return helpFolder_; }
    const std::u16string& getHelpLocation() const noexcept { return helpLocation_; }

private:
    std::u16string productName_;
    std::u16string baseCode_;
    std::u16string helpFolder_;
    std::u16string helpLocation_;
};

/// The short record of one documented name.
class RefItemLookup {
public:
    RefItemLookup(std::u16string name, RefEntityType entityType, std::u16string purpose,
                  bool deprecated, std::u16string href, FunctionType functionType) noexcept
        : name_(std::move(name)), entityType_(entityType), purpose_(std::move(purpose)),
          deprecated_(deprecated), href_(std::move(href)), functionType_(functionType) {}

    const std::u16string& getName() const noexcept { return name_; }
    RefEntityType getEntityType() const noexcept { return entityType_; }
    const std::u16string& getPurpose() const noexcept { return purpose_; }
    bool isDeprecated() const noexcept { return deprecated_; }
    /// The link to the page that documents the name.
    const std::u16string& getHref() const noexcept { return href_; }
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

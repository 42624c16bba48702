#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace bench {

/// The members of resource documents. A reader asks for them by number, so that one whose text was
/// split beforehand has no names to compare.
enum class Member : std::uint8_t {
    Alt,
    AppThumbnail,
    BaseCode,
    ClassProperty,
    ClassPropertyGroup,
    DefaultValue,
    Deprecated,
    DeprecationStatus,
    Description,
    Examples,
    FcnType,
    FileRef,
    HelpFolder,
    HelpLocation,
    Href,
    HtmlId,
    InputGroup,
    Inputs,
    Introduced,
    Name,
    NameValuePairs,
    OpenCommand,
    Outputs,
    PackageName,
    Parameters,
    ProductName,
    Purpose,
    RefEntity,
    RefItems,
    RefPurpose,
    SeeAlso,
    SupportPackages,
    Syntax,
    SyntaxGroup,
    SyntaxType,
    Title,
    Type,
    Url,
    Value
};

/// In the order of `Member`.
inline constexpr std::array<std::string_view, 39> kMemberNames{"alt",
                                                               "appthumbnail",
                                                               "baseCode",
                                                               "classproperty",
                                                               "classpropertygroup",
                                                               "defaultvalue",
                                                               "deprecated",
                                                               "deprecationstatus",
                                                               "description",
                                                               "examples",
                                                               "fcntype",
                                                               "fileref",
                                                               "helpFolder",
                                                               "helpLocation",
                                                               "href",
                                                               "htmlid",
                                                               "inputgroup",
                                                               "inputs",
                                                               "introduced",
                                                               "name",
                                                               "namevaluepairs",
                                                               "open_command",
                                                               "outputs",
                                                               "packagename",
                                                               "parameters",
                                                               "productName",
                                                               "purpose",
                                                               "refentity",
                                                               "refItems",
                                                               "refpurpose",
                                                               "seealso",
                                                               "supportPackages",
                                                               "syntax",
                                                               "syntaxgroup",
                                                               "syntaxtype",
                                                               "title",
                                                               "type",
                                                               "url",
                                                               "value"};

inline std::string_view nameOf(Member member) {
    return kMemberNames[static_cast<std::size_t>(member)];
}

} // namespace bench

#pragma once

#include <array>
#include <string>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "environment/HostArrays.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/Export.hpp"

namespace reference::docparser {

/// A handle by which a host attaches a value of its own to a record. The library leaves it empty.
using KvArrayHandle = boost::intrusive_ptr<const kvArray_tag>;

/// What arguments and class properties have in common.
struct DOCPARSER_API ArgumentInfo {
    /// Its name, as a call writes it.
    std::u16string name;
    /// What it is for, in one line.
    std::u16string purpose;
    /// The texts that it may take, or words for their kind; empty when the document gives none.
    std::vector<std::u16string> values;
    /// The item's href, "#" and the argument's anchor; for a class property the item's href,
    /// "#prop_" and the property's name.
    std::u16string href;
    /// Filled by the host, if at all.
    KvArrayHandle hostValue{};
};

/// An argument that a call takes.
struct DOCPARSER_API InputArgument {
    /// Name, purpose, values and link.
    ArgumentInfo info;
    /// How a call writes it.
    reference::property::SyntaxType syntaxType;
    /// The value that a call without the argument means; empty when the document gives none.
    std::u16string defaultValue;
    /// Whether a call gives it as a pair of its name and a value, rather than by its position.
    bool isNameValuePair;
    /// Filled by the host, if at all.
    KvArrayHandle hostValue{};
};

/// Input arguments under one title.
struct DOCPARSER_API InputGroup {
    /// The title.
    std::u16string title;
    /// The arguments.
    std::vector<InputArgument> inputs;
    /// Filled by the host, if at all.
    KvArrayHandle hostValue{};
};

/// A value that a call gives back.
struct DOCPARSER_API OutputArgument {
    /// Name, purpose, values and link.
    ArgumentInfo info;
    /// How a call writes it.
    reference::property::SyntaxType syntaxType;
    /// Filled by the host, if at all.
    KvArrayHandle hostValue{};
};

/// A parameter or a class property.
struct DOCPARSER_API ArgumentWithDefault {
    /// Name, purpose, values and link.
    ArgumentInfo info;
    /// The value that it has unless another is set; empty when the document gives none.
    std::u16string defaultValue;
};

/// Properties of a class under one title, which may be empty.
struct DOCPARSER_API ClassPropertyGroup {
    /// The title.
    std::u16string title;
    /// The properties.
    std::vector<ArgumentWithDefault> properties;
    /// Filled by the host, if at all.
    KvArrayHandle hostValue{};
};

/// A name that an item documents.
struct DOCPARSER_API RefEntity {
    /// What the name stands for.
    reference::property::RefEntityType entityType;
    /// The name.
    std::u16string name;
    /// Which kind of function it is; the default for anything else.
    reference::property::FunctionType functionType;
    /// Filled by the host, if at all.
    std::array<KvArrayHandle, 2> hostValues{};
};

/// The picture of an app, and a text in its place.
struct DOCPARSER_API AppThumbnail {
    /// Where the picture lies, in the form of an item's href.
    std::u16string fileRef;
    /// The text in its place.
    std::u16string alt;
};

/// One way to write a call, line by line.
struct DOCPARSER_API SyntaxGroup {
    /// The title.
    std::u16string title;
    /// How the call is written.
    reference::property::SyntaxType syntaxType;
    /// The lines.
    std::vector<std::u16string> syntax;
    /// Filled by the host, if at all.
    std::array<KvArrayHandle, 2> hostValues{};
};

/// A link to a related page, in the form of an item's href, and its text.
struct DOCPARSER_API SeeAlsoLink {
    /// Where the page lies.
    std::u16string url;
    /// The text of the link.
    std::u16string name;
};

/// A link to an example.
struct DOCPARSER_API ExampleLink {
    /// Where the example lies, in the form of an item's href.
    std::u16string url;
    /// The command that opens the example in the environment; empty when there is none.
    std::u16string openCommand;
    /// The text of the link.
    std::u16string title;
};

/// The full reference entry of one documented item. It owns all it holds; lists are in document
/// order, and what the document leaves out is empty or has its enumeration's default.
///
/// Texts are as the documentation's authors wrote them, UTF-16; what an href or url is relative to,
/// and how a description is marked up, is settled between authors and readers, not here.
struct DOCPARSER_API RefItem {
    /// Moves each argument into the field of its name; `hostValues` starts empty.
    RefItem(std::u16string href, std::vector<RefEntity> refEntities, std::u16string packageName,
            std::u16string refPurpose, std::u16string introduced, std::u16string description,
            AppThumbnail appThumbnail, reference::property::DeprecationStatus deprecationStatus,
            std::vector<SyntaxGroup> syntaxGroups, std::vector<InputGroup> inputGroups,
            std::vector<OutputArgument> outputs,
            std::vector<ClassPropertyGroup> classPropertyGroups, std::vector<SeeAlsoLink> seeAlso,
            std::vector<ExampleLink> examples,
            std::vector<ArgumentWithDefault> parameters) noexcept;

    /// The link to the item's page, and its key.
    std::u16string href;
    /// The names that the item documents.
    std::vector<RefEntity> refEntities;
    /// The package that brings it.
    std::u16string packageName;
    /// What the item is for, in one line.
    std::u16string refPurpose;
    /// The version in which the item appeared.
    std::u16string introduced;
    /// The long description.
    std::u16string description;
    /// The picture of an app; empty for other items.
    AppThumbnail appThumbnail;
    /// Whether the item is discouraged, deprecated or removed.
    reference::property::DeprecationStatus deprecationStatus;
    /// The ways to write a call.
    std::vector<SyntaxGroup> syntaxGroups;
    /// The arguments that a call takes, group by group.
    std::vector<InputGroup> inputGroups;
    /// What a call gives back.
    std::vector<OutputArgument> outputs;
    /// The properties of a class, group by group.
    std::vector<ClassPropertyGroup> classPropertyGroups;
    /// Related pages.
    std::vector<SeeAlsoLink> seeAlso;
    /// Examples.
    std::vector<ExampleLink> examples;
    /// The parameters of an item that is not called, such as a file format.
    std::vector<ArgumentWithDefault> parameters;
    /// Filled by the host, if at all.
    std::array<KvArrayHandle, 10> hostValues{};
};

} // namespace reference::docparser

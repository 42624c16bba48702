#pragma once

#include <array>
#include <string>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "environment/HostArrays.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/Export.hpp"

namespace reference::docparser {

/// A place for a value that the host attaches to a record. The library leaves every one empty.
using KvArrayHandle = boost::intrusive_ptr<const kvArray_tag>;

/// What all arguments and class properties have.
struct DOCPARSER_API ArgumentInfo {
    std::u16string name;
    std::u16string purpose;
    std::vector<std::u16string> values;
    /// The item's href, "#" and the argument's anchor; for a class property the item's href,
    /// "#prop_" and the property's name.
    std::u16string href;
    KvArrayHandle hostValue{};
};

/// An argument that a call takes.
struct DOCPARSER_API InputArgument {
    ArgumentInfo info;
    reference::property::SyntaxType syntaxType;
    std::u16string defaultValue;
    /// Whether a call gives it as a pair of its name and a value, rather than by its position.
    bool isNameValuePair;
    KvArrayHandle hostValue{};
};

/// Input arguments under one title.
struct DOCPARSER_API InputGroup {
    std::u16string title;
    std::vector<InputArgument> inputs;
    KvArrayHandle hostValue{};
};

/// A value that a call gives back.
struct DOCPARSER_API OutputArgument {
    ArgumentInfo info;
    reference::property::SyntaxType syntaxType;
    KvArrayHandle hostValue{};
};

/// A parameter or a class property.
struct DOCPARSER_API ArgumentWithDefault {
    ArgumentInfo info;
    std::u16string defaultValue;
};

/// Properties of a class under one title, which may be empty.
struct DOCPARSER_API ClassPropertyGroup {
    std::u16string title;
    std::vector<ArgumentWithDefault> properties;
    KvArrayHandle hostValue{};
};

/// A name that an item documents.
struct DOCPARSER_API RefEntity {
    reference::property::RefEntityType entityType;
    std::u16string name;
    reference::property::FunctionType functionType;
    std::array<KvArrayHandle, 2> hostValues{};
};

/// The picture of an app: where it lies, and a text in its place. Both are empty for other items.
struct DOCPARSER_API AppThumbnail {
    std::u16string fileRef;
    std::u16string alt;
};

/// One way to write a call, line by line.
struct DOCPARSER_API SyntaxGroup {
    std::u16string title;
    reference::property::SyntaxType syntaxType;
    std::vector<std::u16string> syntax;
    std::array<KvArrayHandle, 2> hostValues{};
};

/// A link to a related page, in the form of an item's href, and its text.
struct DOCPARSER_API SeeAlsoLink {
    std::u16string url;
    std::u16string name;
};

/// A link to an example.
struct DOCPARSER_API ExampleLink {
    std::u16string url;
    /// The command that opens the example in the environment; empty when there is none.
    std::u16string openCommand;
    std::u16string title;
};

/// The full reference entry of one documented item. It owns all it holds; lists are in document
/// order, and what the document leaves out is empty or has its enumeration's default.
///
/// Texts are as the documentation's authors wrote them, UTF-16; what an href or url is relative to,
/// and how a description is marked up, is settled between authors and readers, not here.
struct DOCPARSER_API RefItem {
    /// Takes the parts over; the handles start empty.
    RefItem(std::u16string href, std::vector<RefEntity> refEntities, std::u16string packageName,
            std::u16string refPurpose, std::u16string introduced, std::u16string description,
            AppThumbnail appThumbnail, reference::property::DeprecationStatus deprecationStatus,
            std::vector<SyntaxGroup> syntaxGroups, std::vector<InputGroup> inputGroups,
            std::vector<OutputArgument> outputs,
            std::vector<ClassPropertyGroup> classPropertyGroups, std::vector<SeeAlsoLink> seeAlso,
            std::vector<ExampleLink> examples,
            std::vector<ArgumentWithDefault> parameters) noexcept;

    std::u16string href;
    std::vector<RefEntity> refEntities;
    std::u16string packageName;
    /// What the item is for, in one line.
    std::u16string refPurpose;
    /// The version in which the item appeared.
    std::u16string introduced;
    std::u16string description;
    AppThumbnail appThumbnail;
    reference::property::DeprecationStatus deprecationStatus;
    std::vector<SyntaxGroup> syntaxGroups;
    std::vector<InputGroup> inputGroups;
    std::vector<OutputArgument> outputs;
    std::vector<ClassPropertyGroup> classPropertyGroups;
    std::vector<SeeAlsoLink> seeAlso;
    std::vector<ExampleLink> examples;
    std::vector<ArgumentWithDefault> parameters;
    std::array<KvArrayHandle, 10> hostValues{};
};

} // namespace reference::docparser

#include "refdoc/pages/ReferencePage.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include "refdoc/pages/Description.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
using reference::property::DeprecationStatus;
using reference::property::FunctionType;
using reference::property::RefEntityType;

constexpr std::size_t kIndent = Page::kBodyIndent;
constexpr std::size_t kHang = 7;

Span plain(std::u16string_view text) {
    return {std::u16string(text), Style::Plain};
}

Span bold(std::u16string_view text) {
    return {std::u16string(text), Style::Bold};
}

/// Options and the like are typed literally; other arguments are placeholders.
Style argumentStyle(std::u16string_view name) {
    return name.starts_with(u'-') ? Style::Bold : Style::Underline;
}

std::u16string kindOf(const RefEntity& entity) {
    if (entity.functionType != FunctionType::getDefaultValue())
        return fromUtf8(entity.functionType.toString());
    if (entity.entityType != RefEntityType::getDefaultValue())
        return fromUtf8(entity.entityType.toString());
    return {};
}

/// The name of the page in its header: the first name and its kind.
std::u16string headerTitle(const RefItem& item) {
    if (item.refEntities.empty())
        return item.href;
    const RefEntity& entity = item.refEntities.front();
    const std::u16string kind = kindOf(entity);
    return kind.empty() ? entity.name : entity.name + u" (" + kind + u")";
}

void addNames(Page& page, const RefItem& item) {
    page.section(u"NAME");
    std::u16string names;
    for (const RefEntity& entity : item.refEntities)
        names += (names.empty() ? u"" : u", ") + entity.name;
    page.paragraph({bold(names.empty() ? item.href : names), plain(u" - " + item.refPurpose)},
                   kIndent);
}

void addStatus(Page& page, const RefItem& item) {
    const std::u16string_view text = statusText(item.deprecationStatus);
    if (text.empty())
        return;
    page.section(u"STATUS");
    page.paragraph({bold(text)}, kIndent);
}

/// The title of a group in a section; empty if it only repeats the section's name.
void addGroupTitle(Page& page, std::u16string_view sectionTitle, std::u16string_view title) {
    page.separate();
    if (!title.empty() && !equalsIgnoringCase(title, sectionTitle))
        page.subsection(title);
}

void addSyntax(Page& page, const RefItem& item) {
    if (item.syntaxGroups.empty())
        return;
    page.section(u"SYNOPSIS");
    for (const SyntaxGroup& group : item.syntaxGroups) {
        addGroupTitle(page, u"SYNOPSIS", group.title);
        for (const std::u16string& line : group.syntax)
            page.syntaxLine(line, kIndent);
    }
}

void addText(Page& page, std::u16string_view title, std::u16string_view text) {
    if (text.empty())
        return;
    page.section(title);
    addDescription(page, text, kIndent);
}

void addThumbnail(Page& page, const AppThumbnail& thumbnail) {
    if (thumbnail.fileRef.empty() && thumbnail.alt.empty())
        return;
    page.section(u"PICTURE");
    page.tag({plain(thumbnail.alt)}, kIndent, kHang);
    page.paragraph(thumbnail.fileRef, kIndent + kHang);
}

std::u16string joinedValues(const std::vector<std::u16string>& values) {
    std::u16string all;
    for (const std::u16string& value : values)
        all += (all.empty() ? u"" : u", ") + value;
    return all;
}

/// Empty for a type that carries no information.
std::u16string typeText(reference::property::SyntaxType type) {
    return type == reference::property::SyntaxType::getDefaultValue()
               ? std::u16string()
               : fromUtf8(std::string(type.toString()));
}

void addArgumentFact(Page& page, std::u16string_view name, const std::u16string& fact) {
    if (!fact.empty())
        page.paragraph({plain(std::u16string(name) + u": " + fact)}, kIndent + kHang, 4);
}

/// An argument as a tagged paragraph: its purpose, type, values and default.
void addArgument(Page& page, const ArgumentInfo& info, const StyledText& tag,
                 const std::u16string& type, const std::u16string& defaultValue) {
    page.separate();
    page.tag(tag, kIndent, kHang);
    addDescription(page, info.purpose, kIndent + kHang);
    addArgumentFact(page, u"Type", type);
    addArgumentFact(page, u"Values", joinedValues(info.values));
    addArgumentFact(page, u"Default", defaultValue);
}

void addInputs(Page& page, const RefItem& item) {
    if (item.inputGroups.empty())
        return;
    page.section(u"ARGUMENTS");
    for (const InputGroup& group : item.inputGroups) {
        addGroupTitle(page, u"ARGUMENTS", group.title);
        for (const InputArgument& input : group.inputs) {
            StyledText tag{{input.info.name, argumentStyle(input.info.name)}};
            if (input.isNameValuePair)
                tag = {bold(input.info.name), plain(u" (name-value pair)")};
            addArgument(page, input.info, tag, typeText(input.syntaxType), input.defaultValue);
        }
    }
}

void addOutputs(Page& page, const RefItem& item) {
    if (item.outputs.empty())
        return;
    page.section(u"OUTPUTS");
    for (const OutputArgument& output : item.outputs)
        addArgument(page, output.info, {{output.info.name, Style::Underline}},
                    typeText(output.syntaxType), {});
}

void addParameters(Page& page, const RefItem& item) {
    if (item.parameters.empty())
        return;
    page.section(u"PARAMETERS");
    for (const ArgumentWithDefault& parameter : item.parameters)
        addArgument(page, parameter.info, {bold(parameter.info.name)}, {}, parameter.defaultValue);
}

void addProperties(Page& page, const RefItem& item) {
    if (item.classPropertyGroups.empty())
        return;
    page.section(u"PROPERTIES");
    for (const ClassPropertyGroup& group : item.classPropertyGroups) {
        addGroupTitle(page, u"PROPERTIES", group.title);
        for (const ArgumentWithDefault& property : group.properties)
            addArgument(page, property.info, {bold(property.info.name)}, {}, property.defaultValue);
    }
}

void addExamples(Page& page, const RefItem& item) {
    if (item.examples.empty())
        return;
    page.section(u"EXAMPLES");
    for (const ExampleLink& example : item.examples) {
        page.separate();
        page.tag({bold(example.title)}, kIndent, kHang);
        page.paragraph(example.url, kIndent + kHang);
        if (!example.openCommand.empty())
            page.paragraph({plain(u"Open with: " + example.openCommand)}, kIndent + kHang, 4);
    }
}

/// A link to the web is shown; for a link within the documentation its name suffices.
StyledText linkText(const SeeAlsoLink& link) {
    StyledText text{bold(link.name.empty() ? link.url : link.name)};
    if (!link.name.empty() && link.url.find(u"://") != link.url.npos)
        text.push_back(plain(u" <" + link.url + u">"));
    return text;
}

void addSeeAlso(Page& page, const RefItem& item) {
    if (item.seeAlso.empty())
        return;
    page.section(u"SEE ALSO");
    StyledText all;
    for (const SeeAlsoLink& link : item.seeAlso) {
        if (!all.empty())
            all.push_back(plain(u", "));
        const StyledText one = linkText(link);
        all.insert(all.end(), one.begin(), one.end());
    }
    page.paragraph(all, kIndent);
}

void addFooter(Page& page, const RefItem& item) {
    page.separate();
    page.marginLine(item.packageName,
                    item.introduced.empty() ? u"" : u"Introduced: " + item.introduced, item.href);
}

} // namespace

std::u16string_view statusText(DeprecationStatus status) {
    switch (status) {
    case DeprecationStatus::Discouraged:
        return u"discouraged";
    case DeprecationStatus::Deprecated:
        return u"deprecated";
    case DeprecationStatus::Removed:
        return u"removed";
    case DeprecationStatus::None:
        break;
    }
    return {};
}

void addReferencePage(Page& page, const reference::property::HeaderInfo& header,
                      const RefItem& item) {
    const std::u16string title = headerTitle(item);
    page.separate();
    page.marginLine(title, header.getProductName(), title);
    addNames(page, item);
    addStatus(page, item);
    addSyntax(page, item);
    addText(page, u"DESCRIPTION", item.description);
    addThumbnail(page, item.appThumbnail);
    addInputs(page, item);
    addOutputs(page, item);
    addParameters(page, item);
    addProperties(page, item);
    addExamples(page, item);
    addSeeAlso(page, item);
    addFooter(page, item);
}

} // namespace refdoc

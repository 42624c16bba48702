#include "reference/docparser/RefItem.hpp"

#include <utility>

namespace reference::docparser {

RefItem::RefItem(std::u16string itemHref, std::vector<RefEntity> entities, std::u16string package,
                 std::u16string purpose, std::u16string introducedIn, std::u16string text,
                 AppThumbnail thumbnail, reference::property::DeprecationStatus deprecation,
                 std::vector<SyntaxGroup> syntaxForms, std::vector<InputGroup> inputs,
                 std::vector<OutputArgument> outputArguments,
                 std::vector<ClassPropertyGroup> propertyGroups,
                 std::vector<SeeAlsoLink> relatedLinks, std::vector<ExampleLink> exampleLinks,
                 std::vector<ArgumentWithDefault> parameterList) noexcept
    : href(std::move(itemHref)), refEntities(std::move(entities)), packageName(std::move(package)),
      refPurpose(std::move(purpose)), introduced(std::move(introducedIn)),
      description(std::move(text)), appThumbnail(std::move(thumbnail)),
      deprecationStatus(deprecation), syntaxGroups(std::move(syntaxForms)),
      inputGroups(std::move(inputs)), outputs(std::move(outputArguments)),
      classPropertyGroups(std::move(propertyGroups)), seeAlso(std::move(relatedLinks)),
      examples(std::move(exampleLinks)), parameters(std::move(parameterList)) {}

} // namespace reference::docparser

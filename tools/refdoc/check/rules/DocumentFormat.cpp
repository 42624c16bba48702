#include "refdoc/check/rules/DocumentFormat.hpp"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "refdoc/format/FormatWalk.hpp"
#include "refdoc/format/JsonPositions.hpp"
#include "refdoc/format/ResourceDocuments.hpp"
#include "refdoc/text/NearNames.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

std::string_view kindName(const json::value& value) {
    switch (value.kind()) {
    case json::kind::null:
        return "null";
    case json::kind::bool_:
        return "a boolean";
    case json::kind::string:
        return "a string";
    case json::kind::array:
        return "an array";
    case json::kind::object:
        return "an object";
    default:
        return "a number";
    }
}

std::string_view wantedKind(ValueKind kind) {
    return kind == ValueKind::Text   ? "a string"
           : kind == ValueKind::List ? "an array"
                                     : "an object";
}

/// The place that a pointer leads to, as an author would write it: "name", or "list[3]" for an
/// element.
std::string subjectOf(const std::string& pointer) {
    const std::vector<std::string> steps = pointerSteps(pointer);
    if (steps.empty())
        return "the document";
    const bool isElement = steps.back().find_first_not_of("0123456789") == std::string::npos;
    return isElement && steps.size() > 1
               ? fmt::format("{}[{}]", steps[steps.size() - 2], steps.back())
               : steps.back();
}

/// " (did you mean ...?)" if the text resembles one of the known ones.
std::string meantText(std::string_view text, const std::vector<std::string>& texts) {
    std::set<std::u16string> known;
    for (const std::string& each : texts)
        known.insert(fromUtf8(each));
    const auto near = nearNames(fromUtf8(text), known);
    return near.empty() ? "" : fmt::format(" (did you mean \"{}\"?)", toUtf8(near.front()));
}

std::string unknownText(const Deviation& deviation) {
    const std::vector<std::string>& texts = deviation.format->texts;
    const json::string* text = deviation.value->if_string();
    const std::string what = text == nullptr
                                 ? fmt::format("{}, not a string", kindName(*deviation.value))
                                 : fmt::format("{}, which is not one of its values{}",
                                               inQuotes(*text), meantText(*text, texts));
    return fmt::format("{} is {}; it counts as \"{}\"", subjectOf(deviation.pointer), what,
                       texts.front());
}

/// The member that holds the text, directly or in a list.
std::string memberOf(const std::string& pointer) {
    const std::string subject = subjectOf(pointer);
    return subject.substr(0, subject.find('['));
}

std::string messageOf(const Deviation& deviation) {
    switch (deviation.kind) {
    case Deviation::Kind::MissingMember:
        return fmt::format("{} is missing{}", deviation.name,
                           deviation.other.empty()
                               ? ""
                               : fmt::format(" (there is {})", inQuotes(deviation.other)));
    case Deviation::Kind::WrongKind:
        return fmt::format("{} is {}, not {}", subjectOf(deviation.pointer),
                           kindName(*deviation.value), wantedKind(deviation.format->kind));
    case Deviation::Kind::UnknownText:
        return unknownText(deviation);
    case Deviation::Kind::NotSevenBit:
        return fmt::format("{} has characters beyond ASCII and comes out garbled",
                           memberOf(deviation.pointer));
    case Deviation::Kind::UnreadMember:
        return fmt::format("{} is not read: {}", deviation.name, deviation.unread);
    case Deviation::Kind::BesideOther:
        return fmt::format("{} is not read beside {}", deviation.name, deviation.other);
    case Deviation::Kind::MisspeltMember:
        return fmt::format("{} is not read (did you mean \"{}\"?)", inQuotes(deviation.name),
                           deviation.other);
    }
    return {};
}

Fault faultOf(Deviation::Kind kind) {
    switch (kind) {
    case Deviation::Kind::MissingMember:
        return Fault::MissingMember;
    case Deviation::Kind::WrongKind:
        return Fault::WrongKind;
    case Deviation::Kind::UnknownText:
        return Fault::UnknownText;
    case Deviation::Kind::NotSevenBit:
        return Fault::GarbledText;
    default:
        return Fault::UnreadMember;
    }
}

void addDeviations(const json::value& resource, const Format& format, Violations& violations) {
    Violations hints = violations.emptyCopy();
    FormatWalk walk(resource, format);
    while (std::optional<Deviation> deviation = walk.next()) {
        const Fault fault = faultOf(deviation->kind);
        const bool isHint = fault == Fault::GarbledText || fault == Fault::UnreadMember;
        Violations& list = isHint ? hints : violations;
        if (list.hasRoomFor(fault))
            list.add({.fault = fault,
                      .message = messageOf(*deviation),
                      .pointer = std::move(deviation->pointer),
                      .loss = deviation->losesText() ? violations.wholeText() : Loss::Nothing});
        else
            list.addFurther(fault, 1);
    }
    if (!violations.losesText()) // else nobody gets what they are about
        violations.add(std::move(hints));
}

void addRepeatedKeys(const json::value& resource, Violations& violations) {
    std::map<std::string, std::string> pointers;
    for (ResourceDocument& document : allDocumentsOf(resource)) {
        const auto [first, isNew] = pointers.try_emplace(document.key, document.pointer);
        if (!isNew)
            violations.add(
                {.fault = Fault::RepeatedKey,
                 .message = fmt::format("the key {} already belongs to {}", inQuotes(document.key),
                                        first->second.empty() ? "the main document's help folder"
                                                              : first->second),
                 .pointer = std::move(document.pointer),
                 .loss = Loss::Document});
    }
}

void addRepeatedMembers(std::string_view text, Violations& violations) {
    RepeatedMembers members = repeatedMembersIn(text, Violations::kMostOfOneKind);
    for (RepeatedMember& member : members.first)
        violations.add({.fault = Fault::RepeatedMember,
                        .message = fmt::format("{} is there twice: only the last one counts",
                                               inQuotes(pointerSteps(member.pointer).back())),
                        .pointer = std::move(member.pointer),
                        .offset = member.offset});
    violations.addFurther(Fault::RepeatedMember, members.count - members.first.size());
}

} // namespace

void checkFormat(const TextAndTree& text, const Format& format, Violations& violations) {
    addDeviations(*text.tree, format, violations);
    if (!violations.losesText())
        addRepeatedKeys(*text.tree, violations);
    addRepeatedMembers(text.text, violations);
}

bool isReadable(const json::value& resource, const Format& format) {
    FormatWalk walk(resource, format);
    while (const std::optional<Deviation> deviation = walk.next())
        if (deviation->losesText())
            return false;
    return true;
}

} // namespace refdoc

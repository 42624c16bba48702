#include "refdoc/format/FormatWalk.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>

#include <boost/json/array.hpp>
#include <fmt/format.h>

#include "refdoc/format/JsonPositions.hpp"
#include "refdoc/text/NearNames.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
using Kind = Deviation::Kind;

/// The most members an object may have for a missing name to be looked for among them.
constexpr std::size_t kMostMembers = 100;
/// Finding similar names is slow, and hostile files have any number of unknown ones.
constexpr std::size_t kMostUnknownNames = 1000;
constexpr std::size_t kMostMissingNames = 10000;
/// Shorter names may have only one wrong letter, since authors have members of their own.
constexpr std::size_t kShortName = 8;

bool isOfKind(const json::value& value, ValueKind kind) {
    switch (kind) {
    case ValueKind::Text:
        return value.is_string();
    case ValueKind::List:
        return value.is_array();
    case ValueKind::Object:
        return value.is_object();
    default:
        return true;
    }
}

bool isAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char byte) { return (byte & 0x80) != 0; });
}

bool isApp(const json::value& entity) {
    const json::object* object = entity.if_object();
    const json::value* type = object == nullptr ? nullptr : object->if_contains("type");
    return type != nullptr && *type == "app";
}

bool documentsApp(const json::value& entities) {
    const json::array* list = entities.if_array();
    return list != nullptr && std::any_of(list->begin(), list->end(), isApp);
}

/// A member whose name resembles that of the missing one; empty if there is none.
std::string insteadOf(std::string_view missing, const json::object& object) {
    std::set<std::u16string> names;
    if (object.size() <= kMostMembers)
        for (const json::key_value_pair& member : object)
            names.insert(fromUtf8(member.key()));
    const auto near = nearNames(fromUtf8(missing), names);
    return near.empty() ? std::string() : toUtf8(near.front());
}

} // namespace

FormatWalk::FormatWalk(const json::value& document, const Format& format) {
    enter(document, format.root());
}

std::optional<Deviation> FormatWalk::next() {
    while (found_.empty() && !levels_.empty())
        advance();
    if (found_.empty())
        return std::nullopt;
    Deviation deviation = std::move(found_.front());
    found_.pop_front();
    return deviation;
}

/// Moves on to the next member or element, and leaves what has no more of them.
void FormatWalk::advance() {
    Level& level = levels_.back();
    const ValueFormat& format = *level.format;
    pointer_.resize(level.pointerSize);
    const std::size_t at = level.next++;
    if (const json::object* object = level.value->if_object()) {
        if (at < object->size())
            return visitMember(format, *object, object->begin()[static_cast<std::ptrdiff_t>(at)]);
    } else if (const json::array& list = level.value->get_array(); at < list.size()) {
        fmt::format_to(std::back_inserter(pointer_), "/{}", at);
        return enter(list[at], *format.elements);
    }
    levels_.pop_back();
}

void FormatWalk::enter(const json::value& value, const ValueFormat& format) {
    if (!isOfKind(value, format.kind)) {
        found_.push_back(
            {.kind = Kind::WrongKind, .pointer = pointer_, .value = &value, .format = &format});
    } else if (value.is_structured() && (format.elements != nullptr || !format.names.empty())) {
        if (const json::object* object = value.if_object())
            visitItem(*object, format);
        visitMissing(value, format);
        levels_.push_back({&value, &format, pointer_.size()});
    } else {
        visitText(value, format);
    }
}

void FormatWalk::visitItem(const json::object& object, const ValueFormat& format) {
    constexpr std::string_view entities = "refentity";
    if (!format.members.contains(entities))
        return;
    const json::value* own = object.if_contains(entities);
    documentsApp_ = own != nullptr && documentsApp(*own);
}

void FormatWalk::visitMissing(const json::value& value, const ValueFormat& format) {
    const json::object* object = value.if_object();
    if (object == nullptr)
        return;
    for (const auto& [name, member] : format.forObject(*object).members)
        if (member.isRequired && !object->contains(name))
            found_.push_back({.kind = Kind::MissingMember,
                              .pointer = pointer_,
                              .value = &value,
                              .format = &format,
                              .name = name,
                              .other = missing_++ < kMostMissingNames ? insteadOf(name, *object)
                                                                      : std::string()});
}

void FormatWalk::visitMember(const ValueFormat& format, const json::object& object,
                             const json::key_value_pair& member) {
    const std::string_view name = member.key();
    pointer_ += pointerStep(name);
    const ValueFormat::Members& members = format.forObject(object).members;
    const auto known = members.find(name);
    if (known == members.end())
        visitUnknown(format, object, member);
    else if (known->second.unread.empty())
        enter(member.value(), *known->second.value);
    else
        found_.push_back({.kind = Kind::UnreadMember,
                          .pointer = pointer_,
                          .value = &member.value(),
                          .name = known->first,
                          .unread = known->second.unread});
}

void FormatWalk::visitUnknown(const ValueFormat& format, const json::object& object,
                              const json::key_value_pair& member) {
    Deviation deviation{.kind = Kind::BesideOther,
                        .pointer = pointer_,
                        .value = &member.value(),
                        .name = member.key(),
                        .other = format.condition};
    if (format.names.contains(fromUtf8(deviation.name)))
        return found_.push_back(std::move(deviation));
    deviation.kind = Kind::MisspeltMember;
    for (const std::u16string& near : namesNear(deviation.name, format)) {
        deviation.other = toUtf8(near);
        if (!object.contains(deviation.other))
            return found_.push_back(std::move(deviation));
    }
}

void FormatWalk::visitText(const json::value& value, const ValueFormat& format) {
    const json::string* text = value.if_string();
    const bool isUnknown = format.kind == ValueKind::Enumeration &&
                           (text == nullptr || std::find(format.texts.begin(), format.texts.end(),
                                                         *text) == format.texts.end());
    if (!isUnknown && (text == nullptr || !isSevenBit(format.sevenBit) || isAscii(*text)))
        return;
    found_.push_back({.kind = isUnknown ? Kind::UnknownText : Kind::NotSevenBit,
                      .pointer = pointer_,
                      .value = &value,
                      .format = &format});
}

const std::vector<std::u16string>& FormatWalk::namesNear(std::string_view name,
                                                         const ValueFormat& format) {
    static const std::vector<std::u16string> none;
    const std::pair key(&format, std::string(name));
    const auto known = near_.find(key);
    if (known != near_.end())
        return known->second;
    if (near_.size() == kMostUnknownNames)
        return none;
    const std::size_t mostWrong = name.size() < kShortName ? 1 : kMostWrongLetters;
    return near_.emplace(key, nearNames(fromUtf8(name), format.names, mostWrong)).first->second;
}

bool FormatWalk::isSevenBit(SevenBit text) const {
    return text == SevenBit::Always || (text == SevenBit::UnlessApp && !documentsApp_);
}

} // namespace refdoc

#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "refdoc/format/Format.hpp"

namespace refdoc {

/// A place where a document is not as its format says.
struct Deviation {
    enum class Kind {
        MissingMember, ///< the object has no member `name`, which is required
        WrongKind,     ///< the value is not of the kind that `format` says
        UnknownText,   ///< the value is none of the enumeration's texts
        NotSevenBit,   ///< the text is read byte by byte, and not ASCII
        UnreadMember,  ///< the member `name` is not read here, for the reason `unread`
        BesideOther,   ///< the member `name` is not read beside the member `other`
        MisspeltMember ///< the member `name` is not known, and `other` is nearly its name
    };

    Kind kind;
    /// To the value; for a missing member to the object that lacks it.
    std::string pointer;
    const boost::json::value* value = nullptr;
    const ValueFormat* format = nullptr; ///< what the value should be
    std::string name{};
    std::string other{}; ///< for a missing member one of nearly its name, where there is one
    std::string unread{};

    /// Whether the library refuses the whole text because of it.
    bool losesText() const { return kind == Kind::MissingMember || kind == Kind::WrongKind; }
};

/// Goes down a document beside its format, and gives what deviates from it in the order of the
/// document. An author's own members are no deviation, unless they seem to be meant as others.
///
/// It takes time linear in the document, but for near names, which are looked for a few thousand
/// times at most; and memory for the place that it has come to.
class FormatWalk {
public:
    /// Both must outlive the walk.
    FormatWalk(const boost::json::value& document, const Format& format);

    /// Nothing at the end.
    std::optional<Deviation> next();

private:
    /// An object or list that the walk is within.
    struct Level {
        const boost::json::value* value;
        const ValueFormat* format;
        std::size_t pointerSize; ///< of the pointer to it
        std::size_t next = 0;    ///< of its members or elements
    };

    void advance();
    void enter(const boost::json::value& value, const ValueFormat& format);
    void visitItem(const boost::json::object& object, const ValueFormat& format);
    void visitMissing(const boost::json::value& value, const ValueFormat& format);
    void visitMember(const ValueFormat& format, const boost::json::object& object,
                     const boost::json::key_value_pair& member);
    void visitUnknown(const ValueFormat& format, const boost::json::object& object,
                      const boost::json::key_value_pair& member);
    void visitText(const boost::json::value& value, const ValueFormat& format);
    const std::vector<std::u16string>& namesNear(std::string_view name, const ValueFormat& format);
    bool isSevenBit(SevenBit text) const;

    std::string pointer_; ///< to where the walk is
    std::vector<Level> levels_;
    std::deque<Deviation> found_; ///< and not given yet
    bool documentsApp_ = false;   ///< whether the item does that the walk is in
    /// The near names of unknown ones, which are often the same.
    std::map<std::pair<const ValueFormat*, std::string>, std::vector<std::u16string>> near_;
    std::size_t missing_ = 0; ///< members so far
};

} // namespace refdoc

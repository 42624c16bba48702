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

/// A place where a document deviates from its format.
struct Deviation {
    enum class Kind {
        MissingMember, ///< the object has no member `name`, which is required
        WrongKind,     ///< the value is not of the kind in `format`
        UnknownText,   ///< the value is none of the enumeration's texts
        NotSevenBit,   ///< the text is read byte by byte, but is not ASCII
        UnreadMember,  ///< the member `name` is not read here, for the reason `unread`
        BesideOther,   ///< the member `name` is not read beside the member `other`
        MisspeltMember ///< the member `name` is unknown and resembles `other`
    };

    Kind kind;
    /// Leads to the value; for a missing member, to the object that lacks it.
    std::string pointer;
    const boost::json::value* value = nullptr;
    const ValueFormat* format = nullptr; ///< what the value should be
    std::string name{};
    std::string other{}; ///< for a missing member, one with a similar name, if any
    std::string unread{};

    /// Whether the library refuses the whole text because of it.
    bool losesText() const { return kind == Kind::MissingMember || kind == Kind::WrongKind; }
};

/// Walks a document beside its format and gives the deviations in the order of the document.
/// Members of an author's own are not deviations unless they resemble known ones.
///
/// Takes time linear in the document, apart from the comparisons of names, of which there are at
/// most a few thousand, and memory for the current place only.
class FormatWalk {
public:
    /// Both must outlive the walk.
    FormatWalk(const boost::json::value& document, const Format& format);

    /// Returns nothing at the end.
    std::optional<Deviation> next();

private:
    /// An object or list that the walk is inside.
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
    std::deque<Deviation> found_; ///< but not given out yet
    bool documentsApp_ = false;   ///< whether the current item does
    /// The known names that unknown ones resemble, cached because unknown names repeat.
    std::map<std::pair<const ValueFormat*, std::string>, std::vector<std::u16string>> near_;
    std::size_t missing_ = 0; ///< missing members so far
};

} // namespace refdoc

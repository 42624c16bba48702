#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/string.hpp>
#include <boost/json/value.hpp>

namespace refdoc {

/// A JSON string in UTF-8; a lone surrogate becomes U+FFFD.
boost::json::string toJson(const std::u16string& text);

/// A JSON string from UTF-8; malformed input becomes U+FFFD.
boost::json::string toJson(std::string_view text);

/// `value` in UTF-8, indented, with a line end. Characters that are not printable are escaped.
std::string prettyJson(const boost::json::value& value);

/// The same on one line, without a line end.
std::string compactJson(const boost::json::value& value);

/// Prints piece by piece in the form of `prettyJson`, so that a large value need not exist as a
/// whole. Whatever is opened must be closed, and each value in an object follows its key.
class JsonPrinter {
public:
    void open(char bracket);
    void close(char bracket);
    void key(std::string_view name);
    void value(const boost::json::value& value);

    /// Returns what was printed since the last call.
    std::string take();
    /// The number of bytes that `take` would return.
    std::size_t size() const { return text_.size(); }

private:
    void members(const boost::json::object& object);
    void elements(const boost::json::array& array);
    void beginElement();
    void newLine();

    std::string text_;
    std::size_t depth_ = 0;
    bool isFirst_ = true;   ///< whether the innermost open bracket is still empty
    bool afterKey_ = false; ///< whether the next value belongs to the key before it
};

} // namespace refdoc

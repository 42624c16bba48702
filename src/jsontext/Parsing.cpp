#include "jsontext/Parsing.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/error.hpp>
#include <boost/json/value_stack.hpp>
#include <boost/system/system_error.hpp>

namespace jsontext {

namespace {

namespace json = boost::json;

constexpr std::size_t kMaximumDepth = 32;
constexpr std::size_t kValuesOfAnyText = std::size_t{4} << 20;
constexpr std::size_t kBytesPerFurtherValue = 8;

/// Builds the tree out of what the parser finds.
class TreeBuilder {
public:
    static constexpr std::size_t max_object_size = json::object::max_size();
    static constexpr std::size_t max_array_size = json::array::max_size();
    static constexpr std::size_t max_key_size = json::string::max_size();
    static constexpr std::size_t max_string_size = json::string::max_size();

    using Error = json::error_code;
    using Text = json::string_view;

    TreeBuilder(const MemberNames& names, std::size_t mostValues, json::storage_ptr storage,
                unsigned char* buffer, std::size_t bufferSize)
        : names_(names), valuesLeft_(mostValues), stack_(json::storage_ptr(), buffer, bufferSize) {
        stack_.reset(std::move(storage));
    }

    json::value takeTree() { return stack_.release(); }

    bool on_document_begin(Error& /*failure*/) { return true; }
    bool on_document_end(Error& /*failure*/) { return true; }

    bool on_object_begin(Error& failure) {
        if (!beginsKept(failure))
            return !failure;
        memberCounts_[++objectDepth_] = 0;
        return true;
    }
    bool on_object_end(std::size_t /*count*/, Error& /*failure*/) {
        if (endsKept())
            stack_.push_object(memberCounts_[objectDepth_--]);
        return true;
    }
    bool on_array_begin(Error& failure) { return beginsKept(failure) || !failure; }
    bool on_array_end(std::size_t count, Error& /*failure*/) {
        if (endsKept())
            stack_.push_array(count);
        return true;
    }

    bool on_key_part(Text part, std::size_t /*size*/, Error& /*failure*/) {
        if (passedOverDepth_ == 0)
            nameBegin_.append(part.data(), part.size());
        return true;
    }
    bool on_key(Text rest, std::size_t /*size*/, Error& /*failure*/) {
        if (passedOverDepth_ != 0)
            return true;
        if (nameBegin_.empty()) {
            takeName(rest);
            return true;
        }
        nameBegin_.append(rest.data(), rest.size());
        takeName(nameBegin_);
        nameBegin_.clear();
        return true;
    }

    bool on_string_part(Text part, std::size_t /*size*/, Error& /*failure*/) {
        if (!isPassingOver())
            stack_.push_chars(part);
        return true;
    }
    bool on_string(Text rest, std::size_t /*size*/, Error& failure) {
        if (keepsScalar(failure))
            stack_.push_string(rest);
        return !failure;
    }
    bool on_number_part(Text /*part*/, Error& /*failure*/) { return true; }
    bool on_int64(std::int64_t number, Text /*text*/, Error& failure) {
        if (keepsScalar(failure))
            stack_.push_int64(number);
        return !failure;
    }
    bool on_uint64(std::uint64_t number, Text /*text*/, Error& failure) {
        if (keepsScalar(failure))
            stack_.push_uint64(number);
        return !failure;
    }
    bool on_double(double number, Text /*text*/, Error& failure) {
        if (keepsScalar(failure))
            stack_.push_double(number);
        return !failure;
    }
    bool on_bool(bool value, Error& failure) {
        if (keepsScalar(failure))
            stack_.push_bool(value);
        return !failure;
    }
    bool on_null(Error& failure) {
        if (keepsScalar(failure))
            stack_.push_null();
        return !failure;
    }
    bool on_comment_part(Text /*part*/, Error& /*failure*/) { return true; }
    bool on_comment(Text /*rest*/, Error& /*failure*/) { return true; }

private:
    void takeName(Text name) {
        isNextPassedOver_ = !names_.contains({name.data(), name.size()});
        if (isNextPassedOver_)
            return;
        ++memberCounts_[objectDepth_];
        stack_.push_key(name);
    }

    bool isPassingOver() const { return isNextPassedOver_ || passedOverDepth_ != 0; }

    bool countValue(Error& failure) {
        if (valuesLeft_ == 0) {
            failure = make_error_code(boost::system::errc::value_too_large);
            return false;
        }
        --valuesLeft_;
        return true;
    }

    bool keepsScalar(Error& failure) {
        if (!isPassingOver())
            return countValue(failure);
        isNextPassedOver_ = false;
        return false;
    }

    bool beginsKept(Error& failure) {
        if (!isPassingOver())
            return countValue(failure);
        isNextPassedOver_ = false;
        ++passedOverDepth_;
        return false;
    }

    bool endsKept() {
        if (passedOverDepth_ == 0)
            return true;
        --passedOverDepth_;
        return false;
    }

    const MemberNames& names_;
    std::size_t valuesLeft_;
    json::value_stack stack_;
    std::string nameBegin_; // of a name that comes in parts
    bool isNextPassedOver_ = false;
    std::size_t passedOverDepth_ = 0; // of lists and objects that are passed over, now open
    std::size_t objectDepth_ = 0;     // of objects that are kept, now open
    std::array<std::size_t, kMaximumDepth + 1> memberCounts_{};
};

json::parse_options defaultOptions() {
    json::parse_options options;
    options.max_depth = kMaximumDepth;
    return options;
}

} // namespace

json::value parse(std::string_view text, const MemberNames& names, json::storage_ptr storage,
                  boost::system::error_code& failure) {
    std::array<unsigned char, 4096> buffer;
    json::basic_parser<TreeBuilder> parser(defaultOptions(), names,
                                           kValuesOfAnyText + text.size() / kBytesPerFurtherValue,
                                           std::move(storage), buffer.data(), buffer.size());
    const std::size_t size = parser.write_some(false, text.data(), text.size(), failure);
    if (!failure && size < text.size())
        failure = json::error::extra_data;
    return failure ? nullptr : parser.handler().takeTree();
}

json::value parse(std::string_view text, const MemberNames& names, json::storage_ptr storage) {
    boost::system::error_code failure;
    json::value value = parse(text, names, std::move(storage), failure);
    if (failure)
        throw boost::system::system_error(failure);
    return value;
}

} // namespace jsontext

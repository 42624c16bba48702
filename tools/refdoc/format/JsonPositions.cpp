#include "refdoc/format/JsonPositions.hpp"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <utility>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

/// The values to find, and those on the way to them.
struct WantedValue {
    std::size_t offset = 0;
    std::map<std::string, WantedValue, std::less<>> members{};

    WantedValue* find(std::string_view name) {
        const auto found = members.find(name);
        return found == members.end() ? nullptr : &found->second;
    }
};

class JsonScanner {
public:
    JsonScanner(std::string_view text, std::size_t mostRepeated)
        : text_(text), mostRepeated_(mostRepeated) {}

    void scanValue(WantedValue* wanted) {
        skipBlanks();
        if (wanted != nullptr)
            wanted->offset = at_;
        switch (here()) {
        case '{':
            scanObject(wanted);
            break;
        case '[':
            scanArray(wanted);
            break;
        case '"':
            scanString();
            break;
        default:
            at_ = std::min(text_.find_first_of(",]} \t\r\n", at_), text_.size());
        }
    }

    RepeatedMembers takeRepeated() { return std::move(repeated_); }

private:
    char here() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    void skipBlanks() { at_ = std::min(text_.find_first_not_of(" \t\r\n", at_), text_.size()); }

    /// Scans the brackets and commas of a list or object, and calls `scanElement` for the rest.
    template <typename ScanElement>
    void scanElements(char closing, ScanElement scanElement) {
        ++at_;
        skipBlanks();
        if (here() == closing)
            ++at_;
        else
            do {
                skipBlanks();
                scanElement();
                skipBlanks();
            } while (at_ < text_.size() && text_[at_++] == ',');
    }

    void scanObject(WantedValue* wanted) {
        std::set<std::string> names;
        scanElements('}', [&] {
            const std::size_t begin = at_;
            path_.push_back(scanString());
            if (!names.insert(path_.back()).second)
                addRepeated(begin);
            skipBlanks();
            ++at_; // the colon
            scanValue(wanted == nullptr ? nullptr : wanted->find(path_.back()));
            path_.pop_back();
        });
    }

    void scanArray(WantedValue* wanted) {
        std::size_t index = 0;
        scanElements(']', [&] {
            path_.push_back(std::to_string(index++));
            scanValue(wanted == nullptr ? nullptr : wanted->find(path_.back()));
            path_.pop_back();
        });
    }

    /// The text of the string that begins here.
    std::string scanString() {
        const std::size_t begin = at_++;
        bool hasEscapes = false;
        for (at_ = text_.find_first_of("\"\\", at_); here() == '\\';
             at_ = text_.find_first_of("\"\\", at_ + 2))
            hasEscapes = true;
        at_ = std::min(at_, text_.size() - 1) + 1;
        const std::string_view token = text_.substr(begin, at_ - begin);
        if (!hasEscapes)
            return std::string(token.substr(1, token.size() - 2));
        const boost::json::value decoded = boost::json::parse({token.data(), token.size()});
        return std::string(decoded.as_string());
    }

    void addRepeated(std::size_t offset) {
        constexpr std::size_t mostBytes = std::size_t{4} << 20;
        if (++repeated_.count > mostRepeated_ || repeatedBytes_ > mostBytes)
            return;
        std::string pointer;
        for (const std::string& step : path_)
            pointer += pointerStep(step);
        repeatedBytes_ += pointer.size();
        repeated_.first.push_back({std::move(pointer), offset});
    }

    std::string_view text_;
    std::size_t mostRepeated_;
    std::size_t repeatedBytes_ = 0; // of the pointers that are kept
    std::size_t at_ = 0;
    std::vector<std::string> path_;
    RepeatedMembers repeated_;
};

} // namespace

std::vector<std::size_t> findInJson(std::string_view text,
                                    const std::vector<std::string>& pointers) {
    WantedValue root;
    std::vector<const WantedValue*> wanted;
    for (const std::string& pointer : pointers) {
        WantedValue* value = &root;
        for (std::string& step : pointerSteps(pointer))
            value = &value->members[std::move(step)];
        wanted.push_back(value);
    }
    JsonScanner(text, 0).scanValue(&root);
    std::vector<std::size_t> offsets;
    offsets.reserve(wanted.size());
    for (const WantedValue* value : wanted)
        offsets.push_back(value->offset);
    return offsets;
}

RepeatedMembers repeatedMembersIn(std::string_view text, std::size_t most) {
    JsonScanner scanner(text, most);
    scanner.scanValue(nullptr);
    return scanner.takeRepeated();
}

std::vector<TextPosition> positionsOf(std::string_view text,
                                      const std::vector<std::size_t>& offsets) {
    std::vector<std::size_t> order(offsets.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&offsets](std::size_t left, std::size_t right) {
        return offsets[left] < offsets[right];
    });
    std::vector<TextPosition> positions(offsets.size());
    TextPosition position{1, 1};
    std::size_t at = 0;
    for (const std::size_t number : order) {
        for (; at < std::min(offsets[number], text.size()); ++at) {
            if (text[at] == '\n')
                position = {position.line + 1, 1};
            else if (!continuesCharacter(text[at]))
                ++position.column;
        }
        positions[number] = position;
    }
    return positions;
}

std::string pointerStep(std::string_view name) {
    std::string step = "/";
    for (const char character : name) {
        if (character == '~' || character == '/')
            step += character == '~' ? "~0" : "~1";
        else
            step += character;
    }
    return step;
}

std::vector<std::string> pointerSteps(std::string_view pointer) {
    std::vector<std::string> steps;
    for (std::size_t at = 0; at < pointer.size(); ++at) {
        if (pointer[at] == '/')
            steps.emplace_back();
        else if (pointer[at] == '~' && ++at < pointer.size())
            steps.back() += pointer[at] == '0' ? '~' : '/';
        else
            steps.back() += pointer[at];
    }
    return steps;
}

} // namespace refdoc

#include "SplitText.hpp"

#include <algorithm>
#include <fstream>
#include <ios>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

namespace bench {

namespace {

namespace json = boost::json;

class Splitter {
public:
    explicit Splitter(SplitText& result) : result_(result) {}

    SplitText::Node add(const json::value& value) {
        if (const json::object* object = value.if_object())
            return addObject(*object);
        if (const json::array* array = value.if_array())
            return addList(*array);
        const auto begin = static_cast<std::uint32_t>(result_.text.size());
        if (const json::string* text = value.if_string())
            result_.text.append(text->data(), text->size());
        return {begin, static_cast<std::uint32_t>(result_.text.size()) - begin, 0};
    }

private:
    SplitText::Node addObject(const json::object& object) {
        std::vector<SplitText::Node> children;
        std::uint64_t members = 0;
        for (std::size_t number = 0; number < kMemberNames.size(); ++number) {
            if (const json::value* member = object.if_contains(kMemberNames[number])) {
                members |= std::uint64_t{1} << number;
                children.push_back(add(*member));
            }
        }
        return addChildren(children, members);
    }

    SplitText::Node addList(const json::array& array) {
        std::vector<SplitText::Node> children;
        for (const json::value& element : array)
            children.push_back(add(element));
        return addChildren(children, 0);
    }

    SplitText::Node addChildren(const std::vector<SplitText::Node>& children,
                                std::uint64_t members) {
        const auto begin = static_cast<std::uint32_t>(result_.nodes.size());
        result_.nodes.insert(result_.nodes.end(), children.begin(), children.end());
        return {begin, static_cast<std::uint32_t>(children.size()), members};
    }

    SplitText& result_;
};

template <typename Element, typename Container>
void write(std::ostream& file, const Container& container) {
    const std::uint64_t size = container.size();
    file.write(reinterpret_cast<const char*>(&size), sizeof size);
    file.write(reinterpret_cast<const char*>(container.data()),
               static_cast<std::streamsize>(size * sizeof(Element)));
}

template <typename Element, typename Container>
void read(std::istream& file, Container& container) {
    std::uint64_t size = 0;
    file.read(reinterpret_cast<char*>(&size), sizeof size);
    container.resize(size);
    file.read(reinterpret_cast<char*>(container.data()),
              static_cast<std::streamsize>(size * sizeof(Element)));
}

} // namespace

SplitText split(const std::string& json) {
    SplitText result;
    const SplitText::Node root = Splitter(result).add(json::parse(json));
    result.nodes.push_back(root);
    return result;
}

void save(const SplitText& text, const std::filesystem::path& path) {
    const std::filesystem::path unfinished = path.string() + ".new";
    std::ofstream file;
    file.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    file.open(unfinished, std::ios_base::binary);
    write<SplitText::Node>(file, text.nodes);
    write<char>(file, text.text);
    file.close();
    std::filesystem::rename(unfinished, path);
}

SplitText loadSplitText(const std::filesystem::path& path) {
    std::ifstream file;
    file.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    file.open(path, std::ios_base::binary);
    SplitText result;
    read<SplitText::Node>(file, result.nodes);
    read<char>(file, result.text);
    return result;
}

} // namespace bench

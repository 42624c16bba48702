#include "jsontext/MemberNames.hpp"

namespace jsontext {

const std::string& MemberNames::add(std::string_view name) {
    const std::string& kept = names_.emplace_back(name);
    slots_[slotOf(kept)] = kept;
    return kept;
}

} // namespace jsontext

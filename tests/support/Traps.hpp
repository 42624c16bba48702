#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace testsupport {

/// Something in the place of a resource file.
struct Trap {
    std::string what;
    std::function<void(const std::filesystem::path& path)> lay;
    /// Whether it is a file that opens but cannot be sized.
    bool isProblem = false;
};

/// All things that yield no document, as far as this machine has them.
std::vector<Trap> allTraps();

/// Takes privileges from the calling thread: it can touch only what anyone may, as long as this
/// lives.
class WithoutPrivileges {
public:
    WithoutPrivileges();
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
    ~WithoutPrivileges();

private:
    unsigned int formerUser_;
};

} // namespace testsupport

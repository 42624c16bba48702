#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace testsupport {

/// What may lie where a resource file is looked for.
struct Trap {
    std::string what;
    std::function<void(const std::filesystem::path& path)> lay;
    /// Whether it is a file that opens but cannot be sized.
    bool isProblem = false;
};

/// Everything of which no document can come, as far as this machine has it.
std::vector<Trap> allTraps();

/// The calling thread may touch only what anyone may, for as long as this lives.
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

#include "support/Traps.hpp"

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <system_error>

#include <sys/fsuid.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace testsupport {

namespace {

namespace fs = std::filesystem;

Trap linkTo(const std::string& target) {
    return {"link to " + target,
            [target](const fs::path& path) { fs::create_symlink(target, path); }};
}

Trap node(const std::string& what, mode_t kind, dev_t device = 0) {
    return {what, [kind, device](const fs::path& path) {
                // Only a privileged process can make a device.
                if (::mknod(path.c_str(), kind | 0666, device) != 0 && errno != EPERM)
                    throw std::system_error(errno, std::generic_category(), path);
            }};
}

void layLoopOfTwo(const fs::path& path) {
    const fs::path other = path.string() + ".other";
    fs::remove(other);
    fs::create_symlink(other, path);
    fs::create_symlink(path, other);
}

void laySparseFile(const fs::path& path) {
    std::ofstream(path, std::ios_base::binary);
    fs::resize_file(path, std::uintmax_t{256} << 20);
}

} // namespace

std::vector<Trap> allTraps() {
    std::vector<Trap> traps = {
        {"folder", [](const fs::path& path) { fs::create_directory(path); }, true},
        node("pipe", S_IFIFO),
        node("socket", S_IFSOCK),
        node("device", S_IFCHR, makedev(1, 5)),
        linkTo("/dev/zero"),
        linkTo("/dev/full"),
        linkTo("/dev/null"),
        linkTo("/dev/ptmx"),
        linkTo("/nowhere/at all"),
        linkTo(std::string(4000, 'x')),
        {"link to itself", [](const fs::path& path) { fs::create_symlink(path, path); }},
        {"loop of two links", layLoopOfTwo},
        {"sparse file of 256 MiB", laySparseFile, true},
    };
    // The system makes these files as they are read: the sizes that it gives are 0 or too large.
    for (const char* made :
         {"/proc/self/status", "/proc/self/mem", "/sys/devices/system/cpu/online"})
        if (fs::exists(made))
            traps.push_back(linkTo(made));
    return traps;
}

WithoutPrivileges::WithoutPrivileges() {
    constexpr unsigned int kNobody = 65534;
    formerUser_ = static_cast<unsigned int>(::setfsuid(kNobody));
}

WithoutPrivileges::~WithoutPrivileges() {
    ::setfsuid(formerUser_);
}

} // namespace testsupport

#include "environment/local/CodePath.hpp"

#ifndef DOCENVIRONMENT_IN_PROGRAM
#include <dlfcn.h>
#elif defined(__APPLE__)
#include <cstdint>
#include <string>

#include <mach-o/dyld.h>
#endif

namespace environment::local {

#ifndef DOCENVIRONMENT_IN_PROGRAM

std::filesystem::path pathOfCode() {
    Dl_info code{};
    return ::dladdr(reinterpret_cast<const void*>(&pathOfCode), &code) == 0 ? "" : code.dli_fname;
}

// The dynamic linker knows a program only by the name by which it was called, which may have been
// found through PATH.
#elif defined(__APPLE__)

std::filesystem::path pathOfCode() {
    std::uint32_t size = 0;
    ::_NSGetExecutablePath(nullptr, &size);
    std::string path(size, '\0');
    return ::_NSGetExecutablePath(path.data(), &size) == 0 ? path.c_str() : "";
}

#else

std::filesystem::path pathOfCode() {
    return "/proc/self/exe";
}

#endif

} // namespace environment::local

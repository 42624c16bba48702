#pragma once

#include <filesystem>

namespace environment::local {

/// The file that this library's code was loaded from: the shared library or, where the library is
/// linked statically, the running program. It may be a link, or relative to the folder that was the
/// current one while the code was loaded; empty where the system cannot say.
std::filesystem::path pathOfCode();

} // namespace environment::local

#pragma once

#include <string>
#include <system_error>
#include <vector>

namespace environment::local {

/// The kind of a folder's entry, or of what it links to.
enum class EntryKind { File, Folder };

/// Adds the names of the entries of one kind in `folder`, in no order. `folder` and `pattern`, a
/// pattern of the shell, are UTF-8. Skips names that are not UTF-8, and entries
/// whose kind cannot be found out. Returns why the folder could not be read to its end; what was
/// read before is added.
std::error_code addNames(const std::string& folder, const std::string& pattern, EntryKind kind,
                         std::vector<std::u16string>& names);

} // namespace environment::local

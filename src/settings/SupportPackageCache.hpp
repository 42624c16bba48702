#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>

namespace reference::docparser {

/// The names of the installed hardware support packages, a shared immutable set. This class is the
/// only holder of that state: it lists the installation when it is first asked, and again when it
/// is first asked after a `clear`.
class SupportPackageCache {
public:
    using Names = std::shared_ptr<const std::unordered_set<std::u16string>>;

    /// Guards the names, and is held while the installation is listed. `ProcessState.hpp` says
    /// where it stands in the order of locks.
    std::mutex& mutex() noexcept { return mutex_; }

    /// The names, never null; locks. An installation that cannot be listed counts as one without
    /// support packages.
    ///
    /// What the environment throws when it is asked where the installation lies passes through.
    Names get();

    /// Forgets the names, which callers may keep; locks.
    void clear();

    /// Uses `names` instead of the installation's until the next `clear`. The caller holds
    /// `mutex()`.
    void replaceLocked(Names names) noexcept;

private:
    std::mutex mutex_;
    Names names_; // null until the first question
};

/// The only one of the process, made at load time.
extern SupportPackageCache& supportPackageCache;

} // namespace reference::docparser

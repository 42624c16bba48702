#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>

namespace reference::docparser {

/// The names of the installed hardware support packages, an immutable set that is shared. All that
/// the library does with them goes through here: the installation is listed at the first question,
/// and again at the first one after each `clear`.
class SupportPackageCache {
public:
    using Names = std::shared_ptr<const std::unordered_set<std::u16string>>;

    /// Guards the names, and is held while the installation is listed; `ProcessState.hpp` has its
    /// place in the order of locks.
    std::mutex& mutex() noexcept { return mutex_; }

    /// Locks; never null. An installation that cannot be listed counts as one without support
    /// packages.
    ///
    /// @throws anything that the environment throws when it is asked where the installation lies.
    Names get();

    /// Locks. Those who hold the names keep them.
    void clear();

    /// Takes the place of what the installation has, until the next `clear`. The caller holds
    /// `mutex()`.
    void replaceLocked(Names names) noexcept;

private:
    std::mutex mutex_;
    Names names_; // null until the first question
};

/// The one of the process, made at load time.
extern SupportPackageCache& supportPackageCache;

} // namespace reference::docparser

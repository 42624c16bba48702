#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace testsupport {

/// A documentation root of its own: a new empty folder that is removed with the object.
class ScopedRoot {
public:
    ScopedRoot();
    ScopedRoot(const ScopedRoot&) = delete;
    ScopedRoot& operator=(const ScopedRoot&) = delete;
    ~ScopedRoot();

    std::u16string path() const { return folder_.u16string(); }
    /// The UTF-16 path of `relative` under the root, which need not exist.
    std::u16string pathOf(const std::filesystem::path& relative) const {
        return nativePathOf(relative).u16string();
    }
    std::filesystem::path nativePathOf(const std::filesystem::path& relative) const {
        return folder_ / relative;
    }

    /// Makes the folders above the file as well.
    void writeFile(const std::filesystem::path& relative, std::string_view bytes) const;
    void makeFolder(const std::filesystem::path& relative) const;
    void makePipe(const std::filesystem::path& relative) const;
    void remove(const std::filesystem::path& relative) const;

    void lookupFile(const std::filesystem::path& name, std::string_view text) const;
    void referenceFile(const std::filesystem::path& name, std::string_view text) const;
    std::filesystem::path lookupFolder() const;
    std::filesystem::path referenceFolder() const;

private:
    std::filesystem::path folder_;
};

} // namespace testsupport

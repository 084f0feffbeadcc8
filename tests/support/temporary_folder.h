#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace support {

/// A folder of its own for one test, deleted with everything in it when the object goes. Names are
/// relative to it, with "/" between folders; missing folders above a name are made. A call that
/// fails throws std::runtime_error, which fails the test.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// The folder's full path, without a final separator.
    const std::string& path() const { return path_; }
    std::string pathOf(std::string_view name) const;

    std::string makeFile(std::string_view name, std::string_view content = {});
    std::string makeFolder(std::string_view name);
    /// A file of that size that takes no room on the disk.
    std::string makeSparseFile(std::string_view name, std::uint64_t size);
    std::string makeHardLink(std::string_view name, std::string_view existing);

    /// Sets the last-write time, in seconds since 1970-01-01 UTC (may be negative).
    void setModified(std::string_view name, std::int64_t seconds);
    void remove(std::string_view name);

    std::string read(std::string_view name) const;
    bool exists(std::string_view name) const;

    // Only on systems of the POSIX family:

    /// A symbolic link to `target`, which is taken as it is.
    std::string makeLink(std::string_view name, std::string_view target);
    std::string makeFifo(std::string_view name);
    void setPermissions(std::string_view name, unsigned mode);

  private:
    /// A new folder under the system's place for such, by its full path.
    static std::string madeFolder();
    /// Takes a file or a folder with all that is in it away, if it is there.
    static void removeAll(const std::string& path);
    std::string prepared(std::string_view name) const;

    std::string path_;
};

}  // namespace support

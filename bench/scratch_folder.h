#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace bench {

/// A folder that is gone, with all that it holds, at the end of the benchmark.
class ScratchFolder {
  public:
    explicit ScratchFolder(const std::filesystem::path& parent) {
        std::string pattern = (parent / "verdolin-bench-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::filesystem::filesystem_error(
                pattern, std::error_code(errno, std::generic_category()));
        }
        path_ = pattern;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).string(); }
    /// With the final separator.
    std::string folder() const { return path_.string() + "/"; }

  private:
    std::filesystem::path path_;
};

}  // namespace bench

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// Reads and writes files of sections with key and value lines, by the rules of the private-profile
/// service. Section and key names ignore case.
class PrivateProfile {
  public:
    virtual ~PrivateProfile() = default;

    /// The value of `key`, or `defaultValue` where file, section or key is missing. A buffer of
    /// `bufferSize` characters receives it, one of them for the terminator, so at most
    /// bufferSize - 1 characters come back. Surrounding blanks and one pair of quotation marks
    /// around the value are not part of it.
    virtual std::string getString(std::string_view section, std::string_view key,
                                  std::string_view defaultValue, std::size_t bufferSize,
                                  const std::string& filePath) = 0;
    /// Sets `key` to `value`, adding file, section and key as needed; everything else in the file
    /// (other sections, keys, comments, blank lines, order) stays as it is. False when it failed;
    /// the file is then as it was.
    virtual bool writeString(std::string_view section, std::string_view key, std::string_view value,
                             const std::string& filePath) = 0;
};

}  // namespace platform

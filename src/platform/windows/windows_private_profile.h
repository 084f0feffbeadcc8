#pragma once

#include <string>
#include <string_view>

#include "platform/file_private_profile.h"
#include "platform/private_profile.h"

namespace platform::windows {

/// The system's own private-profile service, in its wide form.
///
/// The service knows files in the system's code page and files in UTF-16 with a byte order mark. A
/// new file is one of the first kind; it becomes one of the second when a value comes that the code
/// page does not have, so that no character is lost. Files that are UTF-8, which the service would
/// misread, and paths too long for it are left to the service over ordinary files.
class WindowsPrivateProfile : public PrivateProfile {
  public:
    std::string getString(std::string_view section, std::string_view key,
                          std::string_view defaultValue, std::size_t bufferSize,
                          const std::string& filePath) override;
    bool writeString(std::string_view section, std::string_view key, std::string_view value,
                     const std::string& filePath) override;

  private:
    FilePrivateProfile files_;
};

}  // namespace platform::windows

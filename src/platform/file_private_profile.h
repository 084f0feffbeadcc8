#pragma once

#include <string>
#include <string_view>

#include "platform/private_profile.h"

namespace platform {

/// The private-profile service over ordinary files. Paths are UTF-8 in the machine's own form. A
/// file is written beside its place first and then put there in one step, so that a failure leaves
/// the old one whole; its permissions are kept, and a symbolic link stays one. Folders are never
/// made.
class FilePrivateProfile : public PrivateProfile {
  public:
    std::string getString(std::string_view section, std::string_view key,
                          std::string_view defaultValue, std::size_t bufferSize,
                          const std::string& filePath) override;
    bool writeString(std::string_view section, std::string_view key, std::string_view value,
                     const std::string& filePath) override;
};

}  // namespace platform

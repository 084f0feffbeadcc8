#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/private_profile.h"

namespace support {

/// Settings files in memory: path and text.
class MemoryProfile : public platform::PrivateProfile {
  public:
    std::string getString(std::string_view section, std::string_view key,
                          std::string_view defaultValue, std::size_t bufferSize,
                          const std::string& filePath) override;
    bool writeString(std::string_view section, std::string_view key, std::string_view value,
                     const std::string& filePath) override;

    std::map<std::string, std::string> files;
    /// "section.key=value" of every write that was asked for, also of those that failed.
    std::vector<std::string> writes;
    /// Called before every write with its key. Answering false makes the write fail; it may throw.
    std::function<bool(std::string_view key)> beforeWrite;
};

}  // namespace support

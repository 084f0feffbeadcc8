#include "tests/support/memory_profile.h"

#include "base/text.h"
#include "platform/profile_text.h"

namespace support {

std::string MemoryProfile::getString(std::string_view section, std::string_view key,
                                     std::string_view defaultValue, std::size_t bufferSize,
                                     const std::string& filePath) {
    const auto file = files.find(filePath);
    const auto found =
        file == files.end() ? std::nullopt : platform::profileValue(file->second, section, key);
    const std::string value = found.value_or(std::string(defaultValue));
    return std::string(base::firstUtf16Units(value, bufferSize == 0 ? 0 : bufferSize - 1));
}

bool MemoryProfile::writeString(std::string_view section, std::string_view key,
                                std::string_view value, const std::string& filePath) {
    writes.push_back(std::string(section) + "." + std::string(key) + "=" + std::string(value));
    if (beforeWrite && !beforeWrite(key)) {
        return false;
    }
    auto text = platform::withProfileValue(files[filePath], section, key, value);
    if (!text) {
        return false;
    }
    files[filePath] = std::move(*text);
    return true;
}

}  // namespace support

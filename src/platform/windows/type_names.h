#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/windows/windows_api.h"

namespace platform::windows {

/// Type descriptions as the shell gives them: the whole field of 80 characters, padded with NULs.
/// The shell goes by the extension alone, so answers for files are remembered by it; folders, which
/// may have types of their own, are asked for one by one.
class TypeNames {
  public:
    TypeNames();
    ~TypeNames();
    TypeNames(const TypeNames&) = delete;
    TypeNames& operator=(const TypeNames&) = delete;

    /// `fullPath` is native and need not exist; `attributes` are those it has.
    std::string of(const std::wstring& fullPath, DWORD attributes);

  private:
    bool shellIsReady_;
    std::unordered_map<std::wstring, std::string> byExtension_;
};

}  // namespace platform::windows

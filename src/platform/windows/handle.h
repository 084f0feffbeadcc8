#pragma once

#include <utility>

#include "platform/windows/windows_api.h"

namespace platform::windows {

/// Owns one open file of the system and closes it.
class Handle {
  public:
    Handle() = default;
    explicit Handle(HANDLE handle) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() {
        if (isOpen()) {
            ::CloseHandle(handle_);
        }
    }

    bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

  private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

}  // namespace platform::windows

#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace search {

/// Bytes to which more are appended, up to hundreds of megabytes. Other than a string it grows and
/// shrinks by realloc(), which moves a large block's pages instead of copying them: the window must
/// not wait for a copy.
class TextBlock {
  public:
    std::size_t size() const { return size_; }
    std::size_t capacity() const { return capacity_; }
    std::string_view view() const { return {bytes_.get(), size_}; }

    TextBlock& operator+=(std::string_view text) {
        if (text.empty()) {
            return *this;
        }
        if (text.size() > capacity_ - size_) {
            resizeTo(size_ + text.size() + size_ / 2 + smallest);
        }
        std::memcpy(bytes_.get() + size_, text.data(), text.size());
        size_ += text.size();
        return *this;
    }
    TextBlock& operator+=(char byte) { return *this += std::string_view(&byte, 1); }
    void shrinkToFit() {
        if (size_ > 0) {
            resizeTo(size_);
        }
    }

  private:
    static constexpr std::size_t smallest = 64;
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    void resizeTo(std::size_t capacity) {
        auto* bytes = static_cast<char*>(std::realloc(bytes_.get(), capacity));
        if (bytes == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(bytes_.release());
        bytes_.reset(bytes);
        capacity_ = capacity;
    }

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace search

#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

// The only place of the engine that knows byte order: numbers in a file are little-endian, those in
// index keys big-endian. The plain functions trust their caller about the bounds; ByteReader does
// not.

namespace jet {

using ByteSpan = std::span<const std::uint8_t>;
using MutableByteSpan = std::span<std::uint8_t>;

inline std::uint16_t get16(const std::uint8_t* at) {
    return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}
inline std::uint32_t get24(const std::uint8_t* at) {
    return at[0] | std::uint32_t{at[1]} << 8 | std::uint32_t{at[2]} << 16;
}
inline std::uint32_t get32(const std::uint8_t* at) {
    return get24(at) | std::uint32_t{at[3]} << 24;
}
inline std::uint64_t get64(const std::uint8_t* at) {
    return get32(at) | std::uint64_t{get32(at + 4)} << 32;
}
inline std::uint32_t get24BigEndian(const std::uint8_t* at) {
    return std::uint32_t{at[0]} << 16 | std::uint32_t{at[1]} << 8 | at[2];
}
inline std::uint32_t get32BigEndian(const std::uint8_t* at) {
    return std::uint32_t{at[0]} << 24 | get24BigEndian(at + 1);
}

inline void put16(std::uint8_t* at, std::uint32_t value) {
    at[0] = static_cast<std::uint8_t>(value);
    at[1] = static_cast<std::uint8_t>(value >> 8);
}
inline void put24(std::uint8_t* at, std::uint32_t value) {
    put16(at, value);
    at[2] = static_cast<std::uint8_t>(value >> 16);
}
inline void put32(std::uint8_t* at, std::uint32_t value) {
    put24(at, value);
    at[3] = static_cast<std::uint8_t>(value >> 24);
}
inline void put64(std::uint8_t* at, std::uint64_t value) {
    put32(at, static_cast<std::uint32_t>(value));
    put32(at + 4, static_cast<std::uint32_t>(value >> 32));
}

/// Appends numbers and texts to a byte string.
class ByteWriter {
  public:
    std::string& bytes() { return bytes_; }
    std::size_t size() const { return bytes_.size(); }

    ByteWriter& u8(std::uint32_t value) {
        bytes_.push_back(static_cast<char>(value));
        return *this;
    }
    ByteWriter& u16(std::uint32_t value) { return u8(value).u8(value >> 8); }
    ByteWriter& u24(std::uint32_t value) { return u16(value).u8(value >> 16); }
    ByteWriter& u32(std::uint32_t value) { return u24(value).u8(value >> 24); }
    ByteWriter& u32BigEndian(std::uint32_t value) {
        return u8(value >> 24).u8(value >> 16).u8(value >> 8).u8(value);
    }
    ByteWriter& u24BigEndian(std::uint32_t value) {
        return u8(value >> 16).u8(value >> 8).u8(value);
    }
    ByteWriter& u64(std::uint64_t value) {
        return u32(static_cast<std::uint32_t>(value)).u32(static_cast<std::uint32_t>(value >> 32));
    }
    ByteWriter& raw(std::string_view text) {
        bytes_.append(text);
        return *this;
    }
    ByteWriter& zeros(std::size_t count) {
        bytes_.append(count, '\0');
        return *this;
    }

  private:
    std::string bytes_;
};

/// Takes numbers and slices from the front of a byte string. Reading past the end sets failed() and
/// gives zeros and empty slices, so that a parser may test once at its end.
class ByteReader {
  public:
    explicit ByteReader(ByteSpan bytes) : bytes_(bytes) {}

    bool failed() const { return failed_; }
    std::size_t position() const { return position_; }
    std::size_t remaining() const { return bytes_.size() - position_; }

    ByteSpan take(std::size_t count) {
        if (count > remaining()) {
            failed_ = true;
            position_ = bytes_.size();
            return {};
        }
        const ByteSpan slice = bytes_.subspan(position_, count);
        position_ += count;
        return slice;
    }
    void skip(std::size_t count) { take(count); }
    std::uint8_t u8() {
        const ByteSpan slice = take(1);
        return slice.empty() ? std::uint8_t{0} : slice[0];
    }
    std::uint16_t u16() {
        const ByteSpan slice = take(2);
        return slice.empty() ? std::uint16_t{0} : get16(slice.data());
    }
    std::uint32_t u24() {
        const ByteSpan slice = take(3);
        return slice.empty() ? 0 : get24(slice.data());
    }
    std::uint32_t u32() {
        const ByteSpan slice = take(4);
        return slice.empty() ? 0 : get32(slice.data());
    }

  private:
    ByteSpan bytes_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

inline std::string_view asText(ByteSpan bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}
inline ByteSpan asBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace jet

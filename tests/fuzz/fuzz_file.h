#pragma once

#include <cstdint>
#include <cstring>
#include <string>

#include "base/failure.h"
#include "jet/bytes.h"
#include "tests/support/faulty_files.h"

namespace fuzz {

inline const std::string path = "/archive.mdb";

/// Calls `use` on a file of this content; failures of the engine are what it should end with,
/// anything else ends the fuzzer.
template <typename Use>
void onFile(const std::string& content, Use use) {
    support::FaultyFiles files;
    files.write(path, content);
    try {
        use(files);
    } catch (const base::EngineFailure&) {
    }
}

/// A sound file with changes: each of them 3 bytes of offset (little-endian, past the end: from the
/// start again), one of length (0 to 15) and so many bytes.
inline std::string patched(std::string content, const std::uint8_t* data, std::size_t size) {
    while (size > 4) {
        const std::size_t offset = jet::get24(data) % content.size();
        std::size_t length = data[3] & 15u;
        data += 4;
        size -= 4;
        length = length < size ? length : size;
        length = length < content.size() - offset ? length : content.size() - offset;
        std::memcpy(content.data() + offset, data, length);
        data += length;
        size -= length;
    }
    return content;
}

}  // namespace fuzz

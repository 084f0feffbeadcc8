#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "jet/format.h"

namespace jet {

// Keys of ascending indexes, as far as the engine's own tables need them: whole numbers, and texts
// of the characters U+0001 to U+00FF in the general sort order, which ignores case. Keys compare as
// plain bytes.

/// 7F, then the number big-endian with its top bit flipped.
void appendLongKey(std::int32_t number, std::string& key);

/// 7F, then the sort codes of the text. False when the text holds a character whose code this
/// engine does not know (above U+00FF); the key is unchanged then.
///
/// Jet 4: the codes of all characters, 01, an extra byte for each position with 02 for "none" and
/// the trailing 02s left out, the characters that the order ignores, 00. Jet 3: the codes, 00, and
/// where an accent occurs nibbles that name it, packed into bytes.
bool appendTextKey(const Format& format, std::string_view text, std::string& key);

}  // namespace jet

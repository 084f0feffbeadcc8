#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/media_info.h"
#include "base/message_box.h"
#include "base/scan_entry.h"
#include "explore/explore_controls.h"

// The texts that exploring shows: nodes, columns, rows and messages.

namespace explore {

/// The key of a medium's node: its number and ":".
std::string mediumKey(std::int32_t mediaId);
/// Whether a node's key is that of a medium: its first ":" is its last character.
bool isMediumKey(std::string_view key);
/// The number before the first ":" of a key. InvalidArgumentFailure where that is no number,
/// OverflowFailure where it does not fit 32 bits.
std::int32_t mediaIdOf(std::string_view key);

TreeNode mediumNode(const base::MediaInfo& medium);
/// Its key is the path that the files in the folder have.
TreeNode folderNode(const base::ScanEntry& folder);

struct RecordColumn {
    std::string_view heading;
    int hundredths;  ///< of the list's width
};
/// The columns of the record list, in order.
const std::array<RecordColumn, 10>& recordColumns();
/// The texts of a record in the order of the columns.
ListControl::Row recordRow(const base::ScanEntry& record);

base::Message openArchiveQuestion();
base::Message noDataMessage();
base::Message accessErrorMessage();

}  // namespace explore

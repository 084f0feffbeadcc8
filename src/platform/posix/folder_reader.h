#pragma once

#include <cstddef>
#include <memory>

#include "platform/posix/folder_contents.h"

namespace platform::posix {

/// Reads the names of one open folder, and the status of each, in the system's order.
class FolderReader {
  public:
    /// Takes up an open folder at its first name. The caller keeps it open.
    void start(int descriptor);

    /// Adds names to `contents` until it holds `mostNames` or there are no more; sets
    /// `contents.complete` at the end of the folder. False when the system refused to read on.
    bool fill(FolderContents& contents, std::size_t mostNames);

  private:
    bool refill();
    void addNext(FolderContents& contents);

    static constexpr std::size_t bufferBytes = 64 * 1024;

    int descriptor_ = -1;
    std::unique_ptr<char[]> buffer_;  ///< names as the system hands them out
    std::size_t filled_ = 0;
    std::size_t position_ = 0;
    bool ended_ = false;
};

}  // namespace platform::posix

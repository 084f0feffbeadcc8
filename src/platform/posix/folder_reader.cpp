#include "platform/posix/folder_reader.h"

#include <dirent.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "platform/posix/file_status.h"

namespace platform::posix {

namespace {

EntryKind kindOf(unsigned char type) {
    switch (type) {
        case DT_DIR:
            return EntryKind::Folder;
        case DT_LNK:
            return EntryKind::Link;
        case DT_UNKNOWN:
            return EntryKind::Unknown;
        default:
            return EntryKind::File;
    }
}

}  // namespace

void FolderReader::start(int descriptor) {
    descriptor_ = descriptor;
    filled_ = 0;
    position_ = 0;
    ended_ = false;
}

bool FolderReader::fill(FolderContents& contents, std::size_t mostNames) {
    while (contents.size() < mostNames) {
        if (position_ == filled_ && !refill()) {
            contents.complete = ended_;
            return ended_;
        }
        addNext(contents);
    }
    return true;
}

/// Fetches more names; false at the end of the folder and when the system refused.
bool FolderReader::refill() {
    if (!buffer_) {
        buffer_ = std::make_unique<char[]>(bufferBytes);
    }
    ssize_t got = 0;
    do {
        got = ::getdents64(descriptor_, buffer_.get(), bufferBytes);
    } while (got < 0 && errno == EINTR);
    filled_ = got > 0 ? static_cast<std::size_t>(got) : 0;
    position_ = 0;
    ended_ = got == 0;
    return got > 0;
}

void FolderReader::addNext(FolderContents& contents) {
    const char* const record = buffer_.get() + position_;
    unsigned short length = 0;
    std::memcpy(&length, record + offsetof(dirent64, d_reclen), sizeof length);
    position_ += length;
    const auto type = static_cast<unsigned char>(record[offsetof(dirent64, d_type)]);
    const char* const name = record + offsetof(dirent64, d_name);
    const std::string_view text(name);
    FolderEntry entry;
    entry.kind = kindOf(type);
    if (text == "." || text == "..") {
        entry.kind = EntryKind::Folder;
    } else {
        const FileStatus status = statusOf(descriptor_, name);
        if (status.errorNumber == ENOENT) {
            return;
        }
        if (status.errorNumber == 0) {
            entry = status.entry;
        }
    }
    contents.add(text, entry);
}

}  // namespace platform::posix

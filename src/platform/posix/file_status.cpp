#include "platform/posix/file_status.h"

#include <fcntl.h>
#include <linux/stat.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/posix/local_time.h"

namespace platform::posix {

namespace {

constexpr unsigned wanted = STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_BTIME;

EntryKind kindOf(unsigned mode) {
    if (S_ISDIR(mode)) {
        return EntryKind::Folder;
    }
    return S_ISLNK(mode) ? EntryKind::Link : EntryKind::File;
}

FileTime timeOf(const struct statx_timestamp& stamp) {
    return fileTimeFromUnix(stamp.tv_sec, stamp.tv_nsec);
}

/// Whether a mount begins here. A system that does not tell leaves it to the device number.
bool isMountRoot(const struct statx& facts) {
#ifdef STATX_ATTR_MOUNT_ROOT
    if ((facts.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0) {
        return (facts.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    }
#endif
    return true;
}

FileStatus asked(int descriptor, const char* name, int flags) {
    struct statx facts;
    FileStatus status;
    if (::statx(descriptor, name, flags | AT_NO_AUTOMOUNT, wanted, &facts) != 0) {
        status.errorNumber = errno;
        return status;
    }
    status.entry.kind = kindOf(facts.stx_mode);
    status.entry.size = status.entry.kind == EntryKind::Folder ? 0 : facts.stx_size;
    status.entry.lastWrite = timeOf(facts.stx_mtime);
    const bool born = (facts.stx_mask & STATX_BTIME) != 0 &&
                      (facts.stx_btime.tv_sec != 0 || facts.stx_btime.tv_nsec != 0);
    status.entry.created = born ? timeOf(facts.stx_btime) : status.entry.lastWrite;
    status.device = static_cast<std::uint64_t>(facts.stx_dev_major) << 32 | facts.stx_dev_minor;
    status.mountRoot = isMountRoot(facts);
    return status;
}

}  // namespace

FileStatus statusOf(int folderDescriptor, const char* name) {
    return asked(folderDescriptor, name, AT_SYMLINK_NOFOLLOW);
}

FileStatus statusOf(int descriptor) { return asked(descriptor, "", AT_EMPTY_PATH); }

}  // namespace platform::posix

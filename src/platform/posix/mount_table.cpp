#include "platform/posix/mount_table.h"

#include <blkid/blkid.h>
#include <libmount/libmount.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>

#include "platform/path_rules.h"
#include "platform/posix/system_failure.h"

namespace platform::posix {

namespace {

namespace fs = std::filesystem;

constexpr const char* kernelTable = "/proc/self/mountinfo";

struct ReleaseTable {
    void operator()(libmnt_table* table) const { ::mnt_unref_table(table); }
};
struct ReleaseIterator {
    void operator()(libmnt_iter* iterator) const { ::mnt_free_iter(iterator); }
};
struct ReleaseProbe {
    void operator()(blkid_struct_probe* probe) const { ::blkid_free_probe(probe); }
};

std::string textOf(const char* text) { return text != nullptr ? text : ""; }

bool isOnFile(const std::string& folder) {
    struct stat facts {};
    return ::stat(folder.c_str(), &facts) == 0 && !S_ISDIR(facts.st_mode);
}

std::string numberOf(dev_t device) {
    return std::to_string(major(device)) + ":" + std::to_string(minor(device));
}

Mount mountOf(libmnt_fs* fileSystem) {
    Mount mount;
    mount.folder = textOf(::mnt_fs_get_target(fileSystem));
    mount.fileSystem = textOf(::mnt_fs_get_fstype(fileSystem));
    mount.source = textOf(::mnt_fs_get_source(fileSystem));
    mount.root = textOf(::mnt_fs_get_root(fileSystem));
    mount.device = numberOf(::mnt_fs_get_devno(fileSystem));
    // A share whose server is away would make the question wait; shares are mounted on folders.
    mount.onFile = !isNetworkMount(mount) && isOnFile(mount.folder);
    return mount;
}

std::string firstLineOf(const fs::path& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

/// The number of the device that a mount lies on. Some file systems give their mounts a number of
/// their own, which no device has; their source names the device.
std::string deviceNumberOf(const Mount& mount) {
    struct stat facts {};
    const bool isDevice = mount.source.starts_with('/') &&
                          ::stat(mount.source.c_str(), &facts) == 0 && S_ISBLK(facts.st_mode);
    return isDevice ? numberOf(facts.st_rdev) : mount.device;
}

/// The kernel's folder about the disk of a device: that of a partition's disk, and of what lies
/// below an encrypted or composed volume. Empty for what is no device.
fs::path diskFolderOf(const std::string& device) {
    std::error_code error;
    fs::path folder = fs::canonical("/sys/dev/block/" + device, error);
    if (error) {
        return {};
    }
    for (fs::directory_iterator below(folder / "slaves", error);
         !error && below != fs::directory_iterator();
         below = fs::directory_iterator(folder / "slaves", error)) {
        folder = fs::canonical(below->path(), error);
    }
    return fs::exists(folder / "partition", error) ? folder.parent_path() : folder;
}

bool isRemovable(const fs::path& disk) {
    const bool cardInReader = firstLineOf(disk / "device" / "type") == "SD";
    return cardInReader || firstLineOf(disk / "removable") == "1" ||
           disk.string().find("/usb") != std::string::npos;
}

/// The label by the system's folder of links from labels to devices, which every user may read.
std::string labelByLinks(const fs::path& source) {
    std::error_code error;
    const fs::path device = fs::canonical(source, error);
    if (error) {
        return {};
    }
    for (const auto& link : fs::directory_iterator("/dev/disk/by-label", error)) {
        if (fs::canonical(link.path(), error) == device) {
            return withoutEscapes(link.path().filename().string());
        }
    }
    return {};
}

/// The label as it stands on the device, which only some users may read.
std::string labelOnDevice(const std::string& source) {
    const std::unique_ptr<blkid_struct_probe, ReleaseProbe> probe(
        ::blkid_new_probe_from_filename(source.c_str()));
    if (!probe) {
        return {};
    }
    ::blkid_probe_enable_superblocks(probe.get(), 1);
    ::blkid_probe_set_superblocks_flags(probe.get(), BLKID_SUBLKS_LABEL);
    const char* label = nullptr;
    if (::blkid_do_safeprobe(probe.get()) != 0 ||
        ::blkid_probe_lookup_value(probe.get(), "LABEL", &label, nullptr) != 0) {
        return {};
    }
    return label;
}

std::string labelOf(const Mount& mount) {
    std::error_code error;
    if (!fs::is_block_file(mount.source, error)) {
        return {};
    }
    std::string label = labelByLinks(mount.source);
    if (label.empty()) {
        label = labelOnDevice(mount.source);
    }
    return shownName(label);
}

}  // namespace

std::vector<Mount> readMountTable() {
    const std::unique_ptr<libmnt_table, ReleaseTable> table(::mnt_new_table());
    const std::unique_ptr<libmnt_iter, ReleaseIterator> iterator(::mnt_new_iter(MNT_ITER_FORWARD));
    const int result = table && iterator ? ::mnt_table_parse_file(table.get(), kernelTable) : -1;
    if (result != 0) {
        failWith(kernelTable, result < 0 ? -result : EIO);
    }
    std::vector<Mount> mounts;
    libmnt_fs* fileSystem = nullptr;
    while (::mnt_table_next_fs(table.get(), iterator.get(), &fileSystem) == 0) {
        mounts.push_back(mountOf(fileSystem));
    }
    return mounts;
}

DeviceFacts deviceFactsOf(const Mount& mount) {
    DeviceFacts facts;
    const fs::path disk = diskFolderOf(deviceNumberOf(mount));
    if (!disk.empty()) {
        facts.removable = isRemovable(disk);
        facts.optical = disk.filename().string().starts_with("sr");
    }
    facts.label = labelOf(mount);
    return facts;
}

}  // namespace platform::posix

#include "platform/mount_rules.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform {

namespace {

using Names = std::initializer_list<std::string_view>;

bool isOneOf(std::string_view name, Names names) {
    return std::ranges::find(names, name) != names.end();
}

/// True when `folder` is `ancestor` or lies below it.
bool liesIn(std::string_view folder, std::string_view ancestor) {
    if (!folder.starts_with(ancestor)) {
        return false;
    }
    return ancestor.ends_with('/') || folder.size() == ancestor.size() ||
           folder[ancestor.size()] == '/';
}

bool liesInOneOf(std::string_view folder, Names ancestors) {
    return std::ranges::any_of(ancestors, [&](auto ancestor) { return liesIn(folder, ancestor); });
}

bool isMemoryFileSystem(const Mount& mount) {
    return isOneOf(mount.fileSystem, {"tmpfs", "ramfs"});
}

/// File systems that hold no one's files: the kernel's own windows and what is made of other
/// mounts.
bool isPseudo(const Mount& mount) {
    return isOneOf(mount.fileSystem, {"autofs",        "bdev",
                                      "binder",        "binfmt_misc",
                                      "bpf",           "cgroup",
                                      "cgroup2",       "configfs",
                                      "cpuset",        "debugfs",
                                      "devfs",         "devpts",
                                      "devtmpfs",      "dlm",
                                      "ecryptfs",      "efivarfs",
                                      "functionfs",    "fuse.gvfsd-fuse",
                                      "fuse.lxcfs",    "fuse.portal",
                                      "fuse.snapfuse", "fuse.xdg-document-portal",
                                      "fusectl",       "hugetlbfs",
                                      "inotifyfs",     "linprocfs",
                                      "linsysfs",      "mqueue",
                                      "nfsd",          "none",
                                      "nsfs",          "pipefs",
                                      "proc",          "pstore",
                                      "resctrl",       "rootfs",
                                      "rpc_pipefs",    "securityfs",
                                      "selinuxfs",     "smackfs",
                                      "sockfs",        "sysfs",
                                      "tracefs",       "usbfs",
                                      "virtfs"});
}

/// Folders in which the system and its container and package tools mount for themselves.
bool isSystemPlace(const std::string& folder) {
    return liesInOneOf(folder, {"/proc", "/sys", "/dev", "/snap", "/var/snap", "/var/lib/snapd",
                                "/var/lib/docker", "/var/lib/containers", "/var/lib/containerd",
                                "/var/lib/kubelet", "/var/lib/lxc", "/var/lib/lxd",
                                "/var/lib/machines", "/var/lib/flatpak"}) ||
           (liesIn(folder, "/run") && !liesIn(folder, "/run/media"));
}

/// A memory file system that belongs to the system. What a person mounted lies elsewhere.
bool isSystemMemory(const Mount& mount) {
    return isMemoryFileSystem(mount) &&
           liesInOneOf(mount.folder, {"/tmp", "/var", "/etc", "/usr", "/lib"});
}

bool isMedium(const Mount& mount) {
    if (mount.onFile || mount.folder.empty()) {
        return false;
    }
    if (mount.folder == "/") {
        return true;
    }
    return !isPseudo(mount) && !isSystemPlace(mount.folder) && !isSystemMemory(mount) &&
           !isOneOf(mount.fileSystem, {"overlay", "aufs"}) &&
           !mount.folder.starts_with("/tmp/.mount_");  // programs that carry their own file system
}

/// True when `other` shows all that `mount` shows, so that `mount` is a second view of the same
/// files.
bool shows(const Mount& other, const Mount& mount) {
    return !mount.device.empty() && other.device == mount.device && liesIn(mount.root, other.root);
}

/// Without those that a later mount on the same folder hides.
std::vector<Mount> visibleAmong(const std::vector<Mount>& mounts) {
    std::vector<Mount> visible;
    for (const Mount& mount : mounts) {
        std::erase_if(visible, [&](const Mount& old) { return old.folder == mount.folder; });
        visible.push_back(mount);
    }
    return visible;
}

/// The order in which one of two views of the same files is preferred: the wider one, then the root
/// file system, then the first folder.
bool preferred(const Mount& left, const Mount& right) {
    if (left.root.size() != right.root.size()) {
        return left.root.size() < right.root.size();
    }
    return left.folder < right.folder;
}

std::vector<Mount> withoutSecondViews(std::vector<Mount> mounts) {
    std::ranges::sort(mounts, preferred);
    std::vector<Mount> kept;
    for (const Mount& mount : mounts) {
        const bool seen = mount.folder != "/" && std::ranges::any_of(kept, [&](const Mount& other) {
                              return shows(other, mount);
                          });
        if (!seen) {
            kept.push_back(mount);
        }
    }
    return kept;
}

}  // namespace

std::vector<Mount> mediaAmong(const std::vector<Mount>& mounts) {
    std::vector<Mount> media = visibleAmong(mounts);
    std::erase_if(media, [](const Mount& mount) { return !isMedium(mount); });
    media = withoutSecondViews(std::move(media));
    std::ranges::sort(media, {}, &Mount::folder);
    return media;
}

const Mount* mountHolding(const std::vector<Mount>& mounts, const std::string& folder) {
    const Mount* best = nullptr;
    for (const Mount& mount : mounts) {
        if (liesIn(folder, mount.folder) &&
            (best == nullptr || mount.folder.size() >= best->folder.size())) {
            best = &mount;
        }
    }
    return best;
}

bool isNetworkMount(const Mount& mount) {
    return isOneOf(mount.fileSystem, {"9p",
                                      "afs",
                                      "acfs",
                                      "beegfs",
                                      "ceph",
                                      "cifs",
                                      "coda",
                                      "davfs",
                                      "fuse.afpfs",
                                      "fuse.ceph",
                                      "fuse.curlftpfs",
                                      "fuse.davfs",
                                      "fuse.glusterfs",
                                      "fuse.rclone",
                                      "fuse.s3fs",
                                      "fuse.sshfs",
                                      "gfs",
                                      "gfs2",
                                      "gpfs",
                                      "lustre",
                                      "ncp",
                                      "ncpfs",
                                      "nfs",
                                      "nfs4",
                                      "ocfs2",
                                      "orangefs",
                                      "smb3",
                                      "smbfs",
                                      "virtiofs"});
}

DriveType driveTypeOf(const Mount& mount, const DeviceFacts& facts) {
    if (isNetworkMount(mount)) {
        return DriveType::Remote;
    }
    if (isMemoryFileSystem(mount)) {
        return DriveType::RamDisk;
    }
    if (facts.optical || isOneOf(mount.fileSystem, {"iso9660", "udf"})) {
        return DriveType::CdRom;
    }
    return facts.removable ? DriveType::Removable : DriveType::Fixed;
}

std::string driveLabelOf(const Mount& mount, const DeviceFacts& facts) {
    return isNetworkMount(mount) ? mount.source : facts.label;
}

std::vector<DriveListEntry> withLetters(std::vector<DriveListEntry> drives) {
    std::vector<DriveListEntry> lettered;
    char next = 'd';
    for (DriveListEntry& drive : drives) {
        if (drive.folder == "/") {
            drive.letter = 'c';
        } else if (next <= 'z') {
            drive.letter = next++;
        } else {
            continue;
        }
        lettered.push_back(std::move(drive));
    }
    return lettered;
}

std::vector<DriveListEntry> withFolderDrives(std::vector<DriveListEntry> drives,
                                             const std::map<char, DriveListEntry>& folderDrives) {
    std::erase_if(drives, [&](const auto& drive) { return folderDrives.contains(drive.letter); });
    for (const auto& [letter, drive] : folderDrives) {
        drives.push_back(drive);
        drives.back().letter = letter;
    }
    std::ranges::sort(drives, {}, &DriveListEntry::letter);
    return drives;
}

char freeLetter(const std::vector<DriveListEntry>& drives) {
    for (char letter = 'z'; letter >= 'a'; --letter) {
        if (std::ranges::find(drives, letter, &DriveListEntry::letter) == drives.end()) {
            return letter;
        }
    }
    return 0;
}

std::string folderName(const std::string& folder) {
    const std::size_t end = folder.find_last_not_of('/');
    if (end == std::string::npos) {
        return {};
    }
    const std::size_t separator = folder.find_last_of('/', end);
    const std::size_t start = separator == std::string::npos ? 0 : separator + 1;
    return folder.substr(start, end - start + 1);
}

}  // namespace platform

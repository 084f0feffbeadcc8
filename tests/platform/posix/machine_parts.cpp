#include "tests/platform/machine_parts.h"

#include "platform/file_private_profile.h"
#include "platform/posix/posix_directory_lister.h"
#include "platform/posix/posix_drives.h"
#include "platform/posix/type_names.h"

namespace platform {

namespace {

ListerForm listerKeeping(const char* name, std::size_t keptNames) {
    const auto typeNames = std::make_shared<posix::TypeNames>();
    return {name, [typeNames, keptNames](RootOf rootOf) {
                return std::make_unique<posix::PosixDirectoryLister>(std::move(rootOf), *typeNames,
                                                                     keptNames);
            }};
}

}  // namespace

std::vector<ListerForm> machineListers() {
    return {listerKeeping("Posix", posix::PosixDirectoryLister::mostKept),
            listerKeeping("PosixInParts", 2)};
}

std::unique_ptr<Drives> machineDrives(PrivateProfile& profile,
                                      const std::string& settingsFilePath) {
    return std::make_unique<posix::PosixDrives>(profile, settingsFilePath);
}

std::unique_ptr<PrivateProfile> machineProfile() { return std::make_unique<FilePrivateProfile>(); }

}  // namespace platform

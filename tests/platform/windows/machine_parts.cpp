#include "tests/platform/machine_parts.h"

#include "platform/windows/windows_directory_lister.h"
#include "platform/windows/windows_drives.h"
#include "platform/windows/windows_private_profile.h"

namespace platform {

std::vector<ListerForm> machineListers() {
    return {{"Windows", [](RootOf rootOf) {
                 return std::make_unique<windows::WindowsDirectoryLister>(std::move(rootOf));
             }}};
}

std::unique_ptr<Drives> machineDrives(PrivateProfile& profile,
                                      const std::string& settingsFilePath) {
    return std::make_unique<windows::WindowsDrives>(profile, settingsFilePath);
}

std::unique_ptr<PrivateProfile> machineProfile() {
    return std::make_unique<windows::WindowsPrivateProfile>();
}

}  // namespace platform
